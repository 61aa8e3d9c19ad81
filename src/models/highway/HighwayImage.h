// The parameter image of the VK5300 and the RBCard, as the devices define it: 20 registers of two bytes.
#pragma once

#include "models/registers/RegisterList.h"

namespace vk32 {

/// What stands in no row keeps the value that it has: 0, or whatever a device or an earlier wizard gave it.
namespace HighwayImage {

constexpr int Registers = 20;

// clang-format off
constexpr RegisterByte
    NetworkType {6, Half::Low},   // 0 DH+, 1 DH-485
    Node        {7, Half::High},
    Speed       {8, Half::High},
    Df1Speed    {9, Half::High},  LineFlags {9, Half::Low},  // of the RBCard
                                  Df1Flags {12, Half::Low};  // of the RBCard
// clang-format on

/// The octal forms of 0 to 63.
ChoiceTable DhPlusNodes();
/// kBaud
inline ChoiceTable DhPlusSpeeds() { return {Code("57.6", 8), Code("115.2", 9), Code("230.4", 10)}; }
inline ChoiceTable Dh485Nodes() { return Numbers(0, 31); }

}  // namespace HighwayImage

}  // namespace vk32
