// A pseudo-terminal that stands as a serial port under a port name.
#pragma once

#include <string>
#include <string_view>

#include "sim/HostPort.h"

namespace vk32::sim {

class PseudoTerminal : public HostPort {
 public:
  /// Throws std::system_error if the system gives none.
  PseudoTerminal();
  ~PseudoTerminal() override;
  PseudoTerminal(const PseudoTerminal&) = delete;
  PseudoTerminal& operator=(const PseudoTerminal&) = delete;

  /// Makes it known as COMn by a link in the user's runtime folder; the link goes with this object,
  /// and the folder with its last link. Throws
  /// std::runtime_error, with words for the user, if the name is taken or the folder is not the user's own.
  void RegisterAs(const std::string& portName);

  std::string Title() const override { return portName_.empty() ? path_ : portName_ + ", " + path_; }
  const std::string& Path() const { return path_; }
  int Fd() const override { return master_; }
  Bytes Read(std::size_t most = SIZE_MAX) override;
  /// What can't be taken at once is dropped, as by a line with nobody at its end.
  void Write(std::string_view bytes) override;
  /// By itself the kernel takes some 20 KB, as if they had left; they would be far ahead of a paced line.
  void HoldHost(bool held) override;
  WaitFor Sending() const override;

 private:
  void HoldOrLetGo();

  int master_ = -1;
  int slave_ = -1;  // held open, so that the terminal outlives the programs that use it
  bool wantsHold_ = false, held_ = false;
  bool heldByDevice_ = false;  // by the last XOFF or XON that was written
  std::string path_, portName_;
  std::string link_;
};

}  // namespace vk32::sim
