// The walks over the fields of a parameter block.
#include "models/blocks/BlockFields.h"

#include <algorithm>

#include "core/Convert.h"
#include "core/RecordFile.h"

namespace vk32 {
namespace {

int SizeOf(Format format) {
  switch (format) {
    case Format::Byte:
    case Format::Code: return 1;
    case Format::WordLowFirst:
    case Format::WordHighFirst:
    case Format::SignedLowFirst: return 2;
    case Format::ThreeBytesLowFirst: return 3;
    case Format::AddressReversed:
    case Format::AddressForward: return 4;
  }
  return 0;
}

bool IsWord(Format format) { return SizeOf(format) == 2; }
bool LastByteFirst(Format format) { return format == Format::WordHighFirst || format == Format::AddressReversed; }

/// In the order low byte first.
Bytes NumberBytes(std::int32_t value, const BlockField& field) {
  const bool isByte = value >= 0 && value <= 255;
  if (field.format == Format::Byte && !isByte) throw DoesNotFit(field.place, EnterByte);
  if (IsWord(field.format) && field.format != Format::SignedLowFirst && value < 0) {
    throw DoesNotFit(field.place, EnterWord);
  }
  if ((field.format == Format::Code && !isByte) || (field.format == Format::ThreeBytesLowFirst && value < 0)) {
    throw DoesNotFit(field.place, "Choose an entry of the list.");
  }
  Bytes bytes;
  for (int i = 0; i < SizeOf(field.format); ++i) bytes += static_cast<char>(value >> 8 * i & 255);
  return bytes;
}

std::int32_t ToNumber(const Bytes& lowFirst, Format format) {
  std::int32_t value = 0;
  for (int i = 0; i < static_cast<int>(lowFirst.size()); ++i) value += Asc(lowFirst, i + 1) << 8 * i;
  return IsWord(format) ? static_cast<std::int16_t>(value) : value;
}

/// In the order of the text.
Bytes AddressBytes(const std::string& address, const BlockField& field) {
  try {
    const auto parts = SplitAddress(address);
    if (parts.size() < 4 || !RecordFile::CanHold(address)) throw RuntimeFault(RuntimeFault::SubscriptOutOfRange);
    Bytes bytes;
    for (const std::string& part : parts) bytes += Chr(CByte(Val(part)));
    return bytes;
  } catch (const RuntimeFault&) {
    throw DoesNotFit(field.place, "Enter four numbers from 0 to 255, parted by points.");
  }
}

std::string ToAddress(const Bytes& bytes) {
  std::string address;
  for (int i = 1; i <= 4; ++i) address += (i == 1 ? "" : ".") + Str(Asc(bytes, i));
  return address;
}

Bytes FieldBytes(const BlockField& field) {
  Bytes bytes;
  if (const auto* number = std::get_if<NumberRef>(&field.value)) bytes = NumberBytes(number->Get(), field);
  if (const auto* constant = std::get_if<Constant>(&field.value)) bytes = NumberBytes(constant->value, field);
  if (auto* const* address = std::get_if<std::string*>(&field.value)) bytes = AddressBytes(**address, field);
  if (LastByteFirst(field.format)) std::reverse(bytes.begin(), bytes.end());
  return bytes;
}

}  // namespace

void WriteFields(const BlockFields& fields, Bytes& block, int start) {
  for (const BlockField& field : fields) {
    const Bytes bytes = FieldBytes(field);
    block.replace(static_cast<std::size_t>(start + field.offset), bytes.size(), bytes);
  }
}

Bytes MakeBlock(int size, const BlockFields& fields) {
  Bytes block(static_cast<std::size_t>(size), '\0');
  WriteFields(fields, block);
  return block;
}

void ReadFields(const BlockFields& fields, const Bytes& data, int start) {
  for (const BlockField& field : fields) {
    Bytes bytes = Mid(data, start + field.offset + 1, SizeOf(field.format));
    if (static_cast<int>(bytes.size()) < SizeOf(field.format)) continue;
    if (LastByteFirst(field.format)) std::reverse(bytes.begin(), bytes.end());
    if (const auto* number = std::get_if<NumberRef>(&field.value)) number->Set(ToNumber(bytes, field.format));
    if (auto* const* address = std::get_if<std::string*>(&field.value)) **address = ToAddress(bytes);
  }
}

std::int16_t TextNumber(const std::string& text, double (*convert)(std::string_view), const FieldPlace& field,
                        const std::string& advice) {
  try {
    return CInt(convert(text));
  } catch (const RuntimeFault&) {
    throw DoesNotFit(field, advice);
  }
}

}  // namespace vk32
