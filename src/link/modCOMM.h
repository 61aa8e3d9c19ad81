// The only place in the system that touches a serial port: eight operations on ports 1 to 32, and the last error.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>

#include "forms/Dispatcher.h"
#include "platform/SerialDriver.h"

namespace vk32 {

/// All operations take the port number, 1 to 32, first and return a signed 32-bit status: 0 on success and the error
/// code otherwise, but for CommRead and CommWrite. Failures are recorded and not shown. A port number outside 1 to 32
/// gives the number of the fault as status; CommWrite alone lets the fault out.
class modCOMM {
 public:
  modCOMM(SerialDriver& driver, Dispatcher& dispatcher) : driver_(driver), dispatcher_(dispatcher) {}

  /// `name`: such as "COM3". -1 if the record says that the port is open already. A step that fails after the port was
  /// opened leaves it open: CommClose cleans up.
  std::int32_t CommOpen(std::int32_t port, const std::string& name, const std::string& settings);
  /// XON/XOFF output flow control on.
  std::int32_t CommSet(std::int32_t port, const std::string& settings);
  /// XON/XOFF output flow control off.
  std::int32_t CommSetNOXON(std::int32_t port, const std::string& settings);
  std::int32_t CommClose(std::int32_t port);
  std::int32_t CommFlush(std::int32_t port);
  /// Takes up to `maximum` bytes that wait already, at most 1024. Returns their number, 0 if none waits, -1 on failure.
  std::int32_t CommRead(std::int32_t port, Bytes& data, std::int32_t maximum);
  /// Returns the number of bytes written, -1 on failure. Faults 9 on a bad port number. Events run until the bytes have
  /// left; once `stop` says so, what has not left yet is taken back.
  std::int32_t CommWrite(
      std::int32_t port, const Bytes& data, const std::function<bool()>& stop = [] { return false; });
  /// `text`: "Error (2): CommOpen (CreateFile) - " and the system's words. Returns the code.
  std::int32_t CommGetError(std::string& text) const;
  /// The system's words for the last failure, with what to do about it where that is known.
  const std::string& LastMessage() const { return CommLastMessage; }

  /// From a successful CommOpen until CommClose.
  bool IsOpen(std::int32_t port) const;
  /// How often a port has been opened.
  int Opens() const { return opens_; }
  /// A descriptor that becomes readable when bytes come on the port; -1: there is none.
  int WaitHandle(std::int32_t port);
  /// For the end of the program.
  void CloseAll();

 private:
  struct CommPort {
    SerialDriver::Handle Handle = 0;
    bool Open = false;  // from a successful open until a successful close
    DeviceControlBlock DCB;
  };

  bool IsPort(std::int32_t port) const;
  CommPort& Port(std::int32_t port);
  std::int32_t SetFlow(std::int32_t port, const std::string& settings, bool outX, const std::string& procedure);
  std::int32_t Trap(const char* procedure, const std::function<std::int32_t()>& body);
  std::int32_t CommSetLastError(const std::string& source);
  std::int32_t Record(std::int32_t code, const std::string& source);
  std::int32_t CommSetLastErrorFlags(std::int32_t code, const std::string& source, SerialDriver::Handle handle);
  std::string CommGetErrorText(std::int32_t code) const;

  SerialDriver& driver_;
  Dispatcher& dispatcher_;
  std::array<CommPort, 32> CommPorts;
  int opens_ = 0;
  std::int32_t CommLastError = 0;
  std::string CommLastSource;
  std::string CommLastMessage;
};

}  // namespace vk32
