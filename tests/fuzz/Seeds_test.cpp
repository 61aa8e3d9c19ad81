// The seeds of the fuzzing targets, run as tests: as they stand, cut short and with a byte changed.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "fuzz/Targets.h"

namespace vk32 {
namespace {

TEST(FuzzTargets, TheirSeedsComeToAnEnd) {
  for (const FuzzTarget& target : FuzzTargets()) {
    int seeds = 0;
    for (const auto& entry : std::filesystem::directory_iterator(VK32_SEEDS "/" + std::string(target.name))) {
      std::ifstream file(entry.path(), std::ios::binary);
      std::string seed{std::istreambuf_iterator<char>(file), {}};
      target.run(seed);
      target.run(seed.substr(0, seed.size() / 2));
      if (!seed.empty()) seed[seed.size() / 3] = static_cast<char>(seed[seed.size() / 3] ^ 0x5A);
      target.run(seed);
      ++seeds;
    }
    EXPECT_GT(seeds, 0) << target.name;
  }
}

}  // namespace
}  // namespace vk32
