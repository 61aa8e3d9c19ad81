// Configuration files, field by field.
#include "core/RecordFile.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <filesystem>

#include "forms/FaultOf.h"
#include "support/Harness.h"

namespace vk32 {
namespace {

/// A line of a text and two 32-bit numbers, and a line of a 16-bit number and a byte.
struct Fields {
  std::string text;
  std::int32_t first = 0, second = 0;
  std::int16_t third = 0;
  std::int32_t fourth = 0;

  void Go(RecordFile& file) {
    file.Text(text);
    file.Long(first);
    file.Long(second);
    file.EndLine();
    file.Integer(third);
    file.Byte(fourth);
    file.EndLine();
  }
  /// The number of the fault that reading them ends with.
  int FaultOfReading(const std::string& path) {
    return FaultOf([&] {
      RecordFile file = RecordFile::ForReading(path);
      Go(file);
    });
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
  for (const auto& [fields, content] : rows) {
    const TemporaryFile file("test.cfg");
    RecordFile record = RecordFile::ForWriting(file.Path());
    Fields(fields).Go(record);
    EXPECT_EQ(file.Content(), "");  // only a complete one appears
    record.Commit();
    EXPECT_EQ(file.Content(), Quoted(content));
    Fields read;
    EXPECT_EQ(read.FaultOfReading(file.Path()), 0);
    EXPECT_EQ(read, fields);
  }
  for (Fields bad :
       {Fields{"a\"b"}, Fields{"a\rb"}, Fields{"a\nb"}, Fields{"", 0, 0, 0, 256}, Fields{"", 0, 0, 0, -1}}) {
    const TemporaryFile file("test.cfg");
    RecordFile record = RecordFile::ForWriting(file.Path());
    EXPECT_NE(FaultOf([&] { bad.Go(record); }), 0) << bad.text << bad.fourth;  // it could not be read again
  }
}

TEST(RecordFile, ReadsFieldsHoweverTheyAreParted) {
  for (const char* content : {"'a,b',1,-2\r\n3,4\r\n", "'a,b',1,-2\n3,4", "'a,b'\r1\r-2\r3\r4\r", "'a,b',1,-2,3,4",
                              " \t'a,b' , 1\t, -2 \r\n\r\n  3 ,4  ", "'a,b'\r\n1e0\r\n-2.0\r\n+3\r\n4\r\nmore"}) {
    const TemporaryFile file("test.cfg");
    file.Fill(Quoted(content));
    Fields read;
    EXPECT_EQ(read.FaultOfReading(file.Path()), 0) << content;
    EXPECT_EQ(read, (Fields{"a,b", 1, -2, 3, 4})) << content;
  }
}

TEST(RecordFile, FaultsOnWhatIsNoRecord) {
  const std::string longText(1 << 20, 'a'), longNumber(1 << 20, '1');  // no field is that long
  const std::pair<int, std::vector<std::string>> rows[] = {
      {62, {"", " \r\n\t", "'a", "'a'", "'a',1,2\r\n", "'a',1,2\r\n3"}},
      {13,
       {"a,1,2\r\n3,4", "'a'x,1,2\r\n3,4", "'a',x,2\r\n3,4", "'a','1',2\r\n3,4", "'a',,2\r\n3,4", "'a',1 2,2\r\n3,4",
        "'a',1.5,2\r\n3,4", std::string(9, '\0'), "'" + longText + "',1,2\r\n3,4", "'a'," + longNumber + ",2\r\n3,4"}},
      {6,
       {"'a',2147483648,2\r\n3,4", "'a',1,2\r\n32768,4", "'a',1,2\r\n3,256", "'a',1,2\r\n3,-1", "'a',1e999,2\r\n3,4"}}};
  for (const auto& [number, contents] : rows) {
    for (const std::string& content : contents) {
      const TemporaryFile file("test.cfg");
      file.Fill(Quoted(content));
      EXPECT_EQ(Fields().FaultOfReading(file.Path()), number) << content.substr(0, 40);
    }
  }
}

TEST(RecordFile, OpensRegularFilesAlone) {
  const TemporaryFile file("test.cfg");
  const std::string folder = std::filesystem::path(file.Path()).parent_path();
  EXPECT_EQ(Fields().FaultOfReading(file.Path()), 53);
  ASSERT_EQ(mkfifo(file.Path().c_str(), 0600), 0);
  for (const std::string& path : {file.Path(), folder}) {
    EXPECT_EQ(Fields().FaultOfReading(path), 75);
    EXPECT_EQ(FaultOf([&, &at = path] { RecordFile::ForWriting(at); }), 75);
  }
}

}  // namespace
}  // namespace vk32
