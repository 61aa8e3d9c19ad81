// A pseudo-terminal that stands as a serial port under a port name.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace vk32::sim {

class PseudoTerminal {
 public:
  /// Throws std::system_error if the system gives none.
  PseudoTerminal();
  ~PseudoTerminal();
  PseudoTerminal(const PseudoTerminal&) = delete;
  PseudoTerminal& operator=(const PseudoTerminal&) = delete;

  /// Makes it known as COMn by a link in the user's runtime folder; the link goes with this object. Throws
  /// std::runtime_error, with words for the user, if the name is taken or the folder is not the user's own.
  void RegisterAs(const std::string& portName);

  int Fd() const { return master_; }
  const std::string& Path() const { return path_; }
  /// What the other side has written, up to `most` bytes; empty if nothing waits.
  std::string Read(std::size_t most = SIZE_MAX);
  /// What can't be taken at once is dropped, as by a line with nobody at its end.
  void Write(std::string_view bytes);

 private:
  int master_ = -1;
  int slave_ = -1;  // held open, so that the terminal outlives the programs that use it
  std::string path_;
  std::string link_;
};

}  // namespace vk32::sim
