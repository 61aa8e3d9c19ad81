// The waits, checksums and probes of the device link.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "core/Globals.h"
#include "forms/Form.h"

namespace vk32 {

struct App;

/// The byte that makes the first `count` bytes of `text` sum to 0 modulo 256, as a one-byte string.
Bytes Checksum8(const Bytes& text, int count);
/// The plain sum of the first `count` bytes, low byte first. A sum above 32767 faults 6: a limit of the image message.
Bytes Checksum16(const Bytes& text, int count);

/// "baud=19200 parity=N data=8 stop=1", with the rate of the product.
std::string LinkSettings(const Globals& globals);
/// CommOpen of the chosen port with these settings. Returns its status.
std::int32_t OpenLink(App& app);

// The form that talks to a device has a timer TimeOutTmr, whose tick sets TimeOutFlag. Its Interval bounds each wait.

/// That tick. The timers of other forms run as well, and must not end a wait that is not theirs.
void SetTimeOutFlag(Globals& globals, const Timer& timer);

/// Begins a wait that the timer's tick ends: clears the flag. The wait lasts as long as this lives.
class Wait {
 public:
  Wait(Globals& globals, const Timer& timer);
  ~Wait() { globals_.WaitingTimer = outer_; }
  Wait(const Wait&) = delete;
  Wait& operator=(const Wait&) = delete;

 private:
  Globals& globals_;
  const Timer* outer_;  // of the wait in whose middle this one began
};

/// One pass of a wait: takes up to `maximum` bytes that have come and lets events run; if none had come it then sleeps
/// until something happens, unless the wait is over by then. Returns CommRead's status.
std::int32_t PollPort(App& app, Bytes& chunk, std::int32_t maximum, const std::function<bool()>& over);
/// Drops all that comes until ACK. 0 if it came, 65535 on time-out. The timer is disabled on return.
Flag WaitForAck(App& app, Form& form);
/// Appends up to `count` bytes to `buffer`. Returns the number of bytes read, -1 on time-out; what did arrive stays in
/// the buffer. The timer is disabled on return.
std::int32_t ReadBytes(App& app, Bytes& buffer, std::int32_t count, Form& form);
/// Lets events run until the timer's tick. The timer is left enabled.
void WaitForTimeOut(App& app, Form& form);
/// Sets the time allowed for the waits to come; the timer stays off until a wait starts it. Milliseconds.
void SetTimeOut(Form& form, int milliseconds);
/// CommWrite to the chosen port. False if there is none: the exchange takes it for a device that does not answer.
bool Send(App& app, const Bytes& message);
/// CommWrite to the chosen port. False if not all of it left.
bool SendWhole(App& app, const Bytes& piece);
/// Send, and WaitForAck. False if no ACK came.
bool SendAndWaitForAck(App& app, const Bytes& message, Form& form);
/// The one word to the user when an exchange has failed.
void TellTimeOut(App& app);
/// Takes the line through flow control on and off, as it must go before the first message of an exchange.
void SetDeviceLink(App& app);
/// Opens the chosen port and closes it again. On failure tells the user why and sets the product menu's choice to
/// "None".
void CheckComPort(App& app);
/// True if the device sits in its recovery mode: its banner of 340 bytes came in full within a second. The port stays
/// open on return.
bool DetectOfflineManager(App& app, Timer& timer);

}  // namespace vk32
