// The waits, checksums and probes of the device link.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "core/Globals.h"
#include "forms/Form.h"

namespace vk32 {

struct App;
class Conversation;

/// The byte that makes the first `count` bytes of `text` sum to 0 modulo 256, as a one-byte string.
Bytes Checksum8(const Bytes& text, int count);
/// The plain sum of the first `count` bytes, low byte first. A sum above 32767 faults 6: a limit of the image message.
Bytes Checksum16(const Bytes& text, int count);

// The form that talks to a device has a timer TimeOutTmr, whose tick sets TimeOutFlag. Its Interval bounds each wait.
// A wait also ends when its conversation is over or its device has gone; to its caller that is a time-out.

/// That tick. The timers of other forms run as well, and must not end a wait that is not theirs; nor does a wait end
/// while a box waits for the user, since nobody reads the port then: it ends by a later tick.
void SetTimeOutFlag(App& app, const Form& form);

/// One pass of a wait that is not over: sleeps until something happens, then takes up to `maximum` bytes that have come
/// and lets events run. Returns CommRead's status.
std::int32_t PollPort(Conversation& conversation, Bytes& chunk, std::int32_t maximum);
/// Drops all that comes until ACK. 0 if it came, 65535 on time-out. The timer is disabled on return.
Flag WaitForAck(Conversation& conversation);
/// Appends up to `count` bytes to `buffer`. Returns the number of bytes read, -1 on time-out; what did arrive stays in
/// the buffer. The timer is disabled on return.
std::int32_t ReadBytes(Conversation& conversation, Bytes& buffer, std::int32_t count);
/// Lets events run until the timer's tick. The timer is left enabled.
void WaitForTimeOut(Conversation& conversation);
/// Sets the time allowed for the waits to come; the timer stays off until a wait starts it. Milliseconds.
void SetTimeOut(Conversation& conversation, int milliseconds);
/// CommWrite. False if there is no port: the exchange takes it for a device that does not answer.
bool Send(Conversation& conversation, const Bytes& message);
/// CommWrite. False if not all of it left.
bool SendWhole(Conversation& conversation, const Bytes& message);
/// SendWhole of a message that nothing answers. False also if the device goes within 50 ms: it may not have got it.
bool SendLast(Conversation& conversation, const Bytes& message);
/// Send, and WaitForAck. False if no ACK came.
bool SendAndWaitForAck(Conversation& conversation, const Bytes& message);
/// The one word to the user when an exchange has failed; none if he has ended it himself.
void TellTimeOut(Conversation& conversation);
/// Takes the line through flow control on and off, as it must go before the first message of an exchange.
void SetDeviceLink(Conversation& conversation);
/// Opens the chosen port and closes it again. On failure tells the user why and sets the menu's COMCbo to "None".
void CheckComPort(App& app, Form& menu);
/// True if the device sits in its recovery mode: its banner of 340 bytes came in full within a second. The port stays
/// open on return.
bool DetectOfflineManager(Conversation& conversation);

}  // namespace vk32
