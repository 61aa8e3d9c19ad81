// Configuration files, field by field.
#include "core/RecordFile.h"

#include <algorithm>

#include "support/Harness.h"

namespace vk32 {
namespace {

/// A line of a text and two 32-bit numbers, and a line of a 16-bit number and a byte.
struct Fields {
  std::string text;
  std::int32_t first = 0, second = 0;
  std::int16_t third = 0;
  std::int32_t fourth = 0;

  void Go(RecordFile record) {
    record.Text(text), record.Long(first), record.Long(second), record.EndLine();
    record.Integer(third), record.Byte(fourth), record.EndLine();
    if (!record.Reads()) record.Commit();
  }
  bool operator==(const Fields&) const = default;
};

/// The content with its double quotes, which stand here as single ones.
std::string Quoted(std::string content) {
  std::replace(content.begin(), content.end(), '\'', '"');
  return content;
}

TEST(RecordFile, WhatIsWrittenIsReadAgain) {
  const std::pair<Fields, const char*> rows[] = {
      {{"", 0, -1, 0, 0}, "'',0,-1\r\n0,0\r\n"},
      {{"a, b", 2147483647, INT32_MIN, -32768, 255}, "'a, b',2147483647,-2147483648\r\n-32768,255\r\n"},
      {{" \xFF\t", 1, 2, 32767, 4}, "' \xFF\t',1,2\r\n32767,4\r\n"}};
  const TemporaryFile file("test.cfg");
  for (const auto& [fields, content] : rows) {
    Fields written(fields), read;
    written.Go(RecordFile::ForWriting(file.Path()));
    EXPECT_EQ(file.Content(), Quoted(content));
    read.Go(RecordFile::ForReading(file.Path()));
    EXPECT_EQ(read, fields);
  }
  // What could not be read again is not written.
  for (Fields bad : {Fields{"a\"b"}, {"a\rb"}, {"a\nb"}, {"", 0, 0, 0, 256}, {"", 0, 0, 0, -1}}) {
    EXPECT_NE(FaultOf([&] { bad.Go(RecordFile::ForWriting(file.Path())); }), 0) << bad.text << bad.fourth;
  }
}

TEST(RecordFile, ReadsFieldsHoweverTheyArePartedAndNothingElse) {
  const std::string longText(1 << 20, 'a'), longNumber(1 << 20, '1');  // no field is that long
  const std::pair<int, std::vector<std::string>> rows[] = {
      {0,
       {"'a,b',1,-2\r\n3,4\r\n", "'a,b',1,-2\n3,4", "'a,b'\r1\r-2\r3\r4\r", "'a,b',1,-2,3,4",
        " \t'a,b' , 1\t, -2 \r\n\r\n  3 ,4  ", "'a,b'\r\n1e0\r\n-2.0\r\n+3\r\n4\r\nmore"}},
      {62, {" \r\n\t", "'a", "'a'", "'a',1,2\r\n3"}},
      {13,
       {"a,1,2\r\n3,4", "'a'x,1,2\r\n3,4", "'a',x,2\r\n3,4", "'a','1',2\r\n3,4", "'a',,2\r\n3,4", "'a',1 2,2\r\n3,4",
        "'a',1.5,2\r\n3,4", std::string(9, '\0'), "'" + longText + "',1,2\r\n3,4", "'a'," + longNumber + ",2\r\n3,4"}},
      {6, {"'a',2147483648,2\r\n3,4", "'a',1,2\r\n32768,4", "'a',1,2\r\n3,256", "'a',1e999,2\r\n3,4"}}};
  const TemporaryFile file("test.cfg");
  for (const auto& [fault, contents] : rows) {
    for (const std::string& content : contents) {
      file.Fill(Quoted(content));
      Fields read;
      EXPECT_EQ(FaultOf([&] { read.Go(RecordFile::ForReading(file.Path())); }), fault) << content.substr(0, 40);
      EXPECT_TRUE(fault || read == (Fields{"a,b", 1, -2, 3, 4})) << content;
    }
  }
}

}  // namespace
}  // namespace vk32
