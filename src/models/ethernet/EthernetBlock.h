// Block 3 of the VK-RTX and the VK5300: the Ethernet port, as the devices define it.
#pragma once

#include "core/Parameters.h"
#include "models/blocks/BlockFields.h"

namespace vk32 {

constexpr int EthernetBlockNumber = 3;
constexpr const char* EthernetPageTitle = "Ethernet Communication Settings";

/// What it says; 21 bytes, of which 15 to 19 are 0.
BlockFields EthernetFields(Parameters& parameters);
/// The block as it is sent: without address and mask under DHCP, and with the gateway as typed in any case. DoesNotFit
/// if a value has no form in its bytes.
Bytes MakeEthernetBlock(Parameters parameters);

}  // namespace vk32
