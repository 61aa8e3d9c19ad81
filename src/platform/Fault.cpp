// The classic words of the run-time faults.
#include "platform/Fault.h"

namespace vk32 {

const char* RuntimeFault::Words(Number number) {
  switch (number) {
    case InvalidCall: return "Invalid procedure call or argument";
    case Overflow: return "Overflow";
    case OutOfMemory: return "Out of memory";
    case SubscriptOutOfRange: return "Subscript out of range";
    case TypeMismatch: return "Type mismatch";
    case FileNotFound: return "File not found";
    case DeviceIOError: return "Device I/O error";
    case InputPastEndOfFile: return "Input past end of file";
    case PathFileAccessError: return "Path/File access error";
  }
  return "Application-defined or object-defined error";
}

}  // namespace vk32
