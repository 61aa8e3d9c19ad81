// The conversions between texts, numbers and bytes, and the registers as a byte string.
#include "core/Convert.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <sstream>

#include "core/Globals.h"
#include "forms/FaultOf.h"

namespace vk32 {
namespace {

using Pairs = std::vector<std::pair<std::string, std::string>>;

/// What a conversion gives: the number, or "fault 6".
template <class Convert>
std::string Outcome(const Convert& convert) {
  std::ostringstream outcome;
  if (const int fault = FaultOf([&] { outcome << +convert(); })) outcome << "fault " << fault;
  return outcome.str();
}

TEST(Convert, TextsBecomeNumbers) {
  const Pairs numbers{{"12", "12"},   {" \t-7.5 \r\n", "-7.5"}, {"+3", "3"},     {".5", "0.5"},       {"5.", "5"},
                      {"1e2", "100"}, {"1E-2", "0.01"},         {"1e-999", "0"}, {"1e999", "fault 6"}};
  for (const auto& [text, number] : numbers) {
    EXPECT_EQ(Outcome([&, &from = text] { return Val(from); }), number) << text;
    EXPECT_EQ(Outcome([&, &from = text] { return CDbl(from); }), number) << text;
  }
  const Pairs lenient{{"1 2", "1"},     {"12 apples", "12"},
                      {"1e", "1"},      {"1,5", "1"},
                      {"1.2.3", "1.2"}, {"", "0"},
                      {"  ", "0"},      {".", "0"},
                      {"-", "0"},       {"+-5", "0"},
                      {"nan", "0"},     {"0x10", "0"},
                      {"&H10", "0"},    {std::string("1\0002", 3), "1"}};
  for (const auto& [text, number] : lenient) {
    EXPECT_EQ(Outcome([&, &from = text] { return Val(from); }), number) << text;
    EXPECT_EQ(Outcome([&, &from = text] { return CDbl(from); }), "fault 13") << text;
  }
}

TEST(Convert, NumbersAreRoundedHalvesToEvenAndNeverWrap) {
  const char* const no = "fault 6";
  const struct {
    double value;
    const char *toByte, *toInt, *toLong;
  } rows[] = {{0.5, "0", "0", "0"},       {1.5, "2", "2", "2"},
              {2.5, "2", "2", "2"},       {-0.5, "0", "0", "0"},
              {-0.6, no, "-1", "-1"},     {254.5, "254", "254", "254"},
              {255.5, no, "256", "256"},  {32767.4, no, "32767", "32767"},
              {32767.5, no, no, "32768"}, {-32768.5, no, "-32768", "-32768"},
              {-32769, no, no, "-32769"}, {2147483647.4, no, no, "2147483647"},
              {2147483647.5, no, no, no}, {-2147483648.5, no, no, "-2147483648"},
              {std::nan(""), no, no, no}, {HUGE_VAL, no, no, no}};
  for (const auto& row : rows) {
    EXPECT_EQ(Outcome([&] { return CByte(row.value); }), row.toByte) << row.value;
    EXPECT_EQ(Outcome([&] { return CInt(row.value); }), row.toInt) << row.value;
    EXPECT_EQ(Outcome([&] { return CLng(row.value); }), row.toLong) << row.value;
  }
}

TEST(Convert, BytesWordsAndBits) {
  const Bytes text("a\0\xFF", 3);
  EXPECT_EQ(Bytes({Chr(97), Chr(0), Chr(255)}), text);
  EXPECT_EQ(Asc(text, 2), 0);
  EXPECT_EQ(Asc(text, 3), 255);
  EXPECT_EQ(Mid(text, 2), Bytes("\0\xFF", 2));
  EXPECT_EQ(Mid(text, 3, 99), "\xFF");
  EXPECT_EQ(Mid(text, 1, 1) + Mid(text, 3, 0) + Mid(text, 4) + Mid(text, 9, 1), "a");
  for (const std::int32_t value : {0, 255, 258, 65535, 65536, 8388607}) {
    std::int32_t low = -1, high = -1;
    SplitWord(value, low, high);
    EXPECT_EQ(low + 256 * high, value);
    EXPECT_LE(low, 255);
    EXPECT_EQ(JoinWord(low, high), value);
  }
  EXPECT_EQ(JoinWord(255, 8388607), 2147483647);
  EXPECT_EQ(SetBits(0b1001, 0b0011), 0b1011);
  EXPECT_EQ(ClearBits(0b1011, 0b0110), 0b1001);
  EXPECT_EQ(Str(-12) + " " + Oct(63), "-12 77");

  const std::pair<std::function<void()>, int> faults[] = {{[] { Chr(-1); }, 6},
                                                          {[] { Chr(256); }, 6},
                                                          {[&] { Asc(text, 0); }, 5},
                                                          {[&] { Asc(text, 4); }, 5},
                                                          {[&] { Mid(text, 0); }, 5},
                                                          {[&] { Mid(text, 1, -1); }, 5},
                                                          {[] { JoinWord(0, 8388608); }, 6}};
  for (const auto& fault : faults) EXPECT_EQ(FaultOf(fault.first), fault.second) << &fault - faults;
}

TEST(Registers, TravelAsHighByteThenLowByte) {
  Globals globals;
  globals.RegisterHigh[0] = 1;
  globals.RegisterLow[0] = 2;
  globals.RegisterHigh[256] = 255;
  EXPECT_EQ(globals.RegistersToString(0, 1) + globals.RegistersToString(256, 1), Bytes("\x01\x02\xFF\0", 4));
  EXPECT_EQ(globals.RegistersToString(0, 0) + globals.RegistersToString(5, -1), "");
  const Bytes image = globals.RegistersToString(0, 257);
  globals.ClearRegisters();
  EXPECT_EQ(globals.RegistersToString(0, 257), Bytes(514, '\0'));
  globals.LoadRegisters(image + "x", 0);  // an odd byte is dropped
  EXPECT_EQ(globals.RegistersToString(0, 257), image);
  globals.LoadRegisters("\x07\x08", 9);
  EXPECT_EQ(globals.RegistersToString(9, 1), "\x07\x08");

  EXPECT_EQ(FaultOf([&] { globals.RegistersToString(256, 2); }), 9);
  EXPECT_EQ(FaultOf([&] { globals.RegistersToString(-1, 1); }), 9);
  EXPECT_EQ(FaultOf([&] { globals.LoadRegisters("abcd", 256); }), 9);
  globals.RegisterLow[3] = 256;
  EXPECT_EQ(FaultOf([&] { globals.RegistersToString(0, 20); }), 6);
}

}  // namespace
}  // namespace vk32
