// What a program without a window does last.
#include "platform/ProgramStart.h"

#include <iostream>

namespace vk32 {

bool FinishOutput() {
  if (std::cout.flush()) return true;
  std::cerr
      << "The standard output can't be written: its reader has ended or its disk is full. Give it another place.\n";
  return false;
}

}  // namespace vk32
