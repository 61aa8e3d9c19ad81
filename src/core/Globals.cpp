// The registers as one byte string, and back.
#include "core/Globals.h"

#include "core/Convert.h"
#include "platform/Fault.h"

namespace vk32 {
namespace {

std::size_t RegisterIndex(int index) {
  if (index < 0 || index > 256) throw RuntimeFault(RuntimeFault::SubscriptOutOfRange);
  return static_cast<std::size_t>(index);
}

}  // namespace

void Globals::ClearRegisters() {
  RegisterHigh.fill(0);
  RegisterLow.fill(0);
}

Bytes Globals::RegistersToString(int first, int count) const {
  Bytes text;
  for (int i = first; i < first + count; ++i) {
    text += Chr(RegisterHigh[RegisterIndex(i)]);
    text += Chr(RegisterLow[RegisterIndex(i)]);
  }
  return text;
}

void Globals::LoadRegisters(const Bytes& text, int first) {
  const int count = static_cast<int>(text.size() / 2);
  for (int k = 0; k < count; ++k) {
    const std::size_t i = RegisterIndex(first + k);
    RegisterHigh[i] = Asc(text, 2 * k + 1);
    RegisterLow[i] = Asc(text, 2 * k + 2);
  }
}

}  // namespace vk32
