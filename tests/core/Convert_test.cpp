// The conversions between texts, numbers and bytes, and the registers as a byte string.
#include "core/Convert.h"

#include <cmath>
#include <sstream>

#include "core/Globals.h"
#include "core/NumberRef.h"
#include "support/Harness.h"

namespace vk32 {
namespace {

/// What a conversion gives, or "!6" for its fault.
template <class Convert>
std::string Outcome(const Convert& convert) {
  std::ostringstream outcome;
  if (const int fault = FaultOf([&] { outcome << convert(); })) outcome << "!" << fault;
  return outcome.str();
}

TEST(Convert, TextsBecomeNumbers) {
  const std::pair<const char*, std::vector<std::string>> rows[] = {
      {"12", {"12", "+12", " \t12.\r\n", "1.2e1", "120E-1"}},
      {"-0.5", {"-.5", "-5e-1"}},
      {"0", {"1e-999", "1E-999", "0e9"}},
      {"!6", {"1e999", "-1E+999"}},
      // What follows isn't a part of the number, for one that takes the number at the start alone.
      {"1/!13", {"1 2", "1 apple", "1e", "1e+", "1,5", "1.0.3", std::string("1\0002", 3)}},
      {"0/!13", {"", "  ", ".", "-", "+-5", "nan", "0x10", "&H10"}}};
  for (const auto& [numbers, texts] : rows) {
    const std::string both = numbers;
    for (const std::string& text : texts) {
      EXPECT_EQ(Outcome([&] { return Val(text); }), both.substr(0, both.find('/'))) << text;
      EXPECT_EQ(Outcome([&] { return CDbl(text); }), both.substr(both.find('/') + 1)) << text;
    }
  }
}

TEST(Convert, NumbersAreRoundedHalvesToEvenAndNeverWrap) {
  const auto all = [](auto to) {
    std::string outcomes;
    for (const double value : {0.5, 1.5, 2.5, -0.5, -0.6, 254.5, 255.5, 32767.4, 32767.5, -32768.5, -32769.0,
                               2147483647.4, 2147483647.5, -2147483648.5, -2147483649.0, std::nan(""), HUGE_VAL}) {
      outcomes += Outcome([&] { return std::int32_t{to(value)}; }) + " ";
    }
    return outcomes;
  };
  EXPECT_EQ(all(CByte), "0 2 2 0 !6 254 !6 !6 !6 !6 !6 !6 !6 !6 !6 !6 !6 ");
  EXPECT_EQ(all(CInt), "0 2 2 0 -1 254 256 32767 !6 -32768 !6 !6 !6 !6 !6 !6 !6 ");
  EXPECT_EQ(all(CLng), "0 2 2 0 -1 254 256 32767 32768 -32768 -32769 2147483647 !6 -2147483648 !6 !6 !6 ");
}

TEST(Convert, BytesAndWordsFaultBeyondTheirEnds) {
  const Bytes text("a\0\xFF", 3);
  const auto outcomes = [](const auto& convert, std::initializer_list<int> values) {
    std::string all;
    for (const int value : values) all += Outcome([&] { return convert(value); }) + " ";
    return all;
  };
  EXPECT_EQ(outcomes([&](int at) { return Asc(text, at); }, {0, 1, 2, 3, 4}), "!5 97 0 255 !5 ");
  EXPECT_EQ(outcomes([&](int at) { return ToHex(Mid(text, at)); }, {0, 1, 3, 4}), "!5 61 00 FF FF  ");
  EXPECT_EQ(outcomes([&](int length) { return ToHex(Mid(text, 2, length)); }, {-1, 0, 1, 99}), "!5  00 00 FF ");
  EXPECT_EQ(outcomes([](int value) { return int{Asc(Bytes(1, Chr(value)), 1)}; }, {-1, 0, 255, 256}), "!6 0 255 !6 ");
  EXPECT_EQ(outcomes([](int high) { return JoinWord(255, high); }, {8388607, 8388608}), "2147483647 !6 ");
  std::uint8_t narrow = 7;
  const auto narrowed = [&](int value) { return NumberRef(narrow).Set(value), NumberRef(narrow).Get(); };
  EXPECT_EQ(outcomes(narrowed, {-1, 255, 256}), "!6 255 !6 ");
}

TEST(Registers, TravelAsHighByteThenLowByte) {
  Globals globals;
  globals.LoadRegisters("\1\2\3\4x", 255);  // an odd byte is dropped
  EXPECT_EQ(ToHex(globals.RegistersToString(254, 3)), "00 00 01 02 03 04");
  globals.RegisterLow[3] = 256;
  EXPECT_EQ(FaultOf([&] { globals.RegistersToString(0, 20); }), 6);
  EXPECT_EQ(FaultOf([&] { globals.RegistersToString(256, 2); }), 9);
  EXPECT_EQ(FaultOf([&] { globals.LoadRegisters("abcd", 256); }), 9);
}

}  // namespace
}  // namespace vk32
