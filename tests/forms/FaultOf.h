// Which fault an act ends with.
#pragma once

#include "platform/Fault.h"

namespace vk32 {

/// The number of the fault; 0 if the act ends well.
template <class Act>
int FaultOf(const Act& act) {
  try {
    act();
    return 0;
  } catch (const RuntimeFault& fault) {
    return fault.Code();
  }
}

}  // namespace vk32
