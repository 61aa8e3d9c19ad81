// The fields of a parameter block, as rows that are walked to make the block and to take it apart.
#pragma once

#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "core/DoesNotFit.h"
#include "core/NumberRef.h"
#include "platform/SerialDriver.h"

namespace vk32 {

/// How a field stands in a block. A code is the byte of a list's entry. Words are 16-bit, in two's complement; only a
/// signed one is sent below 0. A reversed address has its last part first.
enum class Format {
  Byte,
  Code,
  WordLowFirst,
  WordHighFirst,
  SignedLowFirst,
  ThreeBytesLowFirst,
  AddressReversed,
  AddressForward
};

/// What goes out whatever the parameters are, and is not read back.
struct Constant {
  int value;
};

struct BlockField {
  int offset;
  Format format;
  std::variant<NumberRef, std::string*, Constant> value;  // the text is an address
  FieldPlace place;                                       // for the user who entered a value that doesn't fit
};
using BlockFields = std::vector<BlockField>;

/// Puts the fields into the block, whose other bytes stay. Offsets count from `start`. DoesNotFit if a value has no
/// form in its bytes.
void WriteFields(const BlockFields& fields, Bytes& block, int start = 0);
/// A block of `size` bytes with these fields; the others are 0.
Bytes MakeBlock(int size, const BlockFields& fields);
/// Takes the fields out of the data. A field beyond their end keeps its value.
void ReadFields(const BlockFields& fields, const Bytes& data, int start = 0);

/// The 16-bit number that `convert` finds in the text. DoesNotFit, with the field and the advice, if it finds none.
std::int16_t TextNumber(const std::string& text, double (*convert)(std::string_view), const FieldPlace& field,
                        const std::string& advice);

}  // namespace vk32
