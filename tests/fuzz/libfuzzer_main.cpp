// The entry of libFuzzer: one program for all targets, told by VK32_FUZZ_TARGET which one it is.
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "fuzz/Targets.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const char* const name = std::getenv("VK32_FUZZ_TARGET");
  for (const vk32::FuzzTarget& target : vk32::FuzzTargets()) {
    if (name && target.name == name) return target.run({reinterpret_cast<const char*>(data), size}), 0;
  }
  std::fputs("Set VK32_FUZZ_TARGET to the name of a folder in tests/fuzz/seeds\n", stderr);
  std::exit(2);
}
