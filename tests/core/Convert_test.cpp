// The conversions between texts, numbers and bytes, and the registers as a byte string.
#include "core/Convert.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <sstream>

#include "core/Globals.h"
#include "core/NumberRef.h"
#include "forms/FaultOf.h"

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

TEST(Convert, BytesWordsAndBits) {
  const Bytes text("a\0\xFF", 3);
  EXPECT_EQ(Bytes({Chr(97), Chr(0), Chr(255)}), text);
  EXPECT_EQ(Str(Asc(text, 1)) + Str(Asc(text, 2)) + Str(Asc(text, 3)), "970255");
  EXPECT_EQ(Mid(text, 2) + Mid(text, 3, 99) + Mid(text, 1, 1) + Mid(text, 3, 0) + Mid(text, 4),
            Bytes("\0\xFF\xFF\x61", 4));
  EXPECT_EQ(Str(SetBits(9, 3)) + Str(ClearBits(11, 6)) + Str(JoinWord(255, 8388607)), "1192147483647");
  EXPECT_EQ(Str(-12) + " " + Oct(63) + " " + Str(2.5) + " " + Str(1e21), "-12 77 2.5 1000000000000000000000");
  std::uint8_t narrow = 7;
  NumberRef(narrow).Set(255);
  EXPECT_EQ(NumberRef(narrow).Get(), 255);
  const std::pair<int, std::vector<std::function<void()>>> faults[] = {
      {6,
       {[] { Chr(-1); }, [] { Chr(256); }, [] { JoinWord(0, 8388608); }, [&] { NumberRef(narrow).Set(256); },
        [&] { NumberRef(narrow).Set(-1); }}},
      {5, {[&] { Asc(text, 0); }, [&] { Asc(text, 4); }, [&] { Mid(text, 0); }, [&] { Mid(text, 1, -1); }}}};
  for (const auto& [fault, calls] : faults) {
    for (const auto& call : calls) EXPECT_EQ(FaultOf(call), fault) << &call - &calls[0];
  }
  for (const std::int32_t value : {0, 255, 258, 65535, 65536, 8388607}) {
    std::int32_t low = -1, high = -1;
    SplitWord(value, low, high);
    EXPECT_EQ(low + 256 * high, value);
    EXPECT_LE(low, 255);
    EXPECT_EQ(JoinWord(low, high), value);
  }
}

TEST(Registers, TravelAsHighByteThenLowByte) {
  Globals globals;
  const auto read = [&](int first, int count) {
    return Outcome([&] { return globals.RegistersToString(first, count); });
  };
  globals.LoadRegisters("\1\2\3\4x", 0);  // an odd byte is dropped
  globals.LoadRegisters("\xFF\7", 256);
  EXPECT_EQ(read(0, 3) + read(256, 1) + read(0, 0) + read(5, -1), Bytes("\1\2\3\4\0\0\xFF\7", 8));
  EXPECT_EQ(read(256, 2) + read(-1, 1), "!9!9");
  EXPECT_EQ(FaultOf([&] { globals.LoadRegisters("abcd", 256); }), 9);
  globals.ClearRegisters();
  EXPECT_EQ(read(0, 257), Bytes(514, '\0'));
  globals.RegisterLow[3] = 256;
  EXPECT_EQ(read(0, 20), "!6");
}

}  // namespace
}  // namespace vk32
