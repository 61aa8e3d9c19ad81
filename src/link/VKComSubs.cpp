// The waits, checksums and probes of the device link.
#include "link/VKComSubs.h"

#include <algorithm>
#include <limits>
#include <utility>
#include <vector>

#include "app/App.h"
#include "core/Convert.h"
#include "link/Conversation.h"
#include "link/Frames.h"

namespace vk32 {
namespace {

constexpr int ProbeInterval = 1000;  // ms
constexpr int BannerLength = 340;    // bytes
constexpr Time SettlingTime = std::chrono::milliseconds(50);
constexpr const char* BannerName = "offline manager";
constexpr Purpose TestingPort{"The test of the port", "Wait until it has ended."};

/// Lets the clock of the form run, and `pass` again and again, until `done` or the end of the time, which is there as
/// well once the device has gone: it answers no more. Clears the flag first. The timer is disabled on return. `bytes`:
/// how many it waits for; 0: for an ACK.
void WaitUntil(Conversation& conversation, int bytes, const std::function<bool()>& done,
               const std::function<void()>& pass) {
  Globals& globals = conversation.app.globals;
  Timer& timer = conversation.TimeOutTmr();
  const auto ended = [&] { return globals.TimeOutFlag == FlagTrue || conversation.IsOver() || conversation.HasGone(); };
  globals.TimeOutFlag = FlagFalse;
  timer.Enabled = true;
  conversation.exchange.WaitBegins(bytes);
  while (!done() && !ended()) pass();
  conversation.exchange.WaitEnds();
  timer.Enabled = false;
  if (!done() || conversation.IsOver()) globals.TimeOutFlag = FlagTrue;
  conversation.Answered(globals.TimeOutFlag == FlagFalse);
}

/// Appends up to `count` bytes to the buffer. Returns the count of what CommRead has told.
std::int32_t ReadUntilTimeOut(Conversation& conversation, Bytes& buffer, std::int32_t count) {
  std::int32_t received = 0;
  WaitUntil(
      conversation, count, [&] { return received >= count; },
      [&] {
        Bytes chunk;
        received += PollPort(conversation, chunk, count - received);
        buffer += chunk;
      });
  return received;
}

/// Tells answers from a message that is repeated: a device in its recovery menu repeats what it is sent as keys, with
/// texts of the menu between, and an adapter on two wires hears itself. The image or a count may hold a byte 6.
class Echo {
 public:
  explicit Echo(Bytes message) : message_(std::move(message)) {}

  /// Takes the next byte that has come. Once three have repeated the message, answers come behind all of it.
  bool IsAnswer(char byte) {
    const bool wasWhole = whole_;
    Follow(byte);
    if (run_ >= LeastRun && varied_) {
      echoes_ = true;
      whole_ = whole_ || std::find(places_.begin(), places_.end(), message_.size()) != places_.end();
    }
    return wasWhole || !echoes_;
  }

 private:
  static constexpr int LeastRun = 3;  // not all the same, which noise may be

  void Follow(char byte) {
    std::vector<std::size_t> next;
    for (const std::size_t place : places_) {
      if (place < message_.size() && message_[place] == byte) next.push_back(place + 1);
    }
    ++run_;
    varied_ = varied_ || byte != last_;
    if (next.empty()) {
      run_ = 1;
      varied_ = false;
      for (std::size_t at = 0; (at = message_.find(byte, at)) != Bytes::npos;) next.push_back(++at);
    }
    last_ = byte;
    places_ = std::move(next);
  }

  const Bytes message_;
  std::vector<std::size_t> places_;  // of the message, behind the bytes of the run
  int run_ = 0;                      // how many bytes in a row stand in the message like that
  bool varied_ = false;              // they are not all the same
  char last_ = 0;
  bool echoes_ = false, whole_ = false;  // the message is being repeated; its end has come
};

}  // namespace

void SetTimeOutFlag(App& app, const Form& form) {
  const bool others = app.conversation != nullptr && &app.conversation->form != &form;
  if (!others && !app.forms.IsAsking()) app.globals.TimeOutFlag = FlagTrue;
  // A wait starts the timer anew; until then its ticks would only wake the processor.
  if (app.conversation == nullptr) form.Get<Timer>("TimeOutTmr").SleepUntilReadable(-1);
}

Bytes Checksum8(const Bytes& text, int count) {
  std::int32_t sum = 0;
  for (int i = 1; i <= count; ++i) sum = (sum + Asc(text, i)) & 255;
  return Bytes(1, Chr((256 - sum) & 255));
}

Bytes Checksum16(const Bytes& text, int count) {
  std::int32_t sum = 0;
  for (int i = 1; i <= count; ++i) {
    sum += Asc(text, i);
    if (sum > std::numeric_limits<std::int16_t>::max()) throw RuntimeFault(RuntimeFault::Overflow);
  }
  std::int32_t low = 0, high = 0;
  SplitWord(sum, low, high);
  return Bytes{Chr(low), Chr(high)};
}

std::int32_t PollPort(Conversation& conversation, Bytes& chunk, std::int32_t maximum) {
  Dispatcher& dispatcher = conversation.app.forms.dispatcher;
  // An answer is never there already: to look for it before the sleep would be in vain.
  dispatcher.Idle(conversation.WaitHandle());
  const std::int32_t status = conversation.CommRead(chunk, maximum);
  dispatcher.DoEvents();
  return status;
}

Flag WaitForAck(Conversation& conversation) {
  Echo echo(conversation.SentLast());
  bool acknowledged = false;
  WaitUntil(
      conversation, 0, [&] { return acknowledged; },
      [&] {
        Bytes reply;
        PollPort(conversation, reply, 1);
        acknowledged = !reply.empty() && echo.IsAnswer(reply[0]) && reply[0] == Ack;
      });
  return conversation.app.globals.TimeOutFlag;
}

std::int32_t ReadBytes(Conversation& conversation, Bytes& buffer, std::int32_t count) {
  const std::int32_t received = ReadUntilTimeOut(conversation, buffer, count);
  return conversation.app.globals.TimeOutFlag < FlagTrue ? received : -1;
}

void WaitForTimeOut(Conversation& conversation) {
  Dispatcher& dispatcher = conversation.app.forms.dispatcher;
  conversation.app.globals.TimeOutFlag = FlagFalse;
  conversation.TimeOutTmr().Enabled = true;
  while (conversation.app.globals.TimeOutFlag != FlagTrue && !conversation.IsOver()) {
    dispatcher.Idle(-1);
    dispatcher.DoEvents();
  }
}

void SetTimeOut(Conversation& conversation, int milliseconds) {
  Timer& timer = conversation.TimeOutTmr();
  timer.Interval = milliseconds;
  timer.Enabled = false;
}

bool Send(Conversation& conversation, const Bytes& message) {
  try {
    conversation.CommWrite(message);
    return true;
  } catch (const RuntimeFault&) {
    return false;
  }
}

bool SendWhole(Conversation& conversation, const Bytes& message) {
  try {
    return conversation.CommWrite(message) == static_cast<std::int32_t>(message.size());
  } catch (const RuntimeFault&) {
    return false;
  }
}

bool SendLast(Conversation& conversation, const Bytes& message) {
  if (!SendWhole(conversation, message)) return false;
  bool passed = false;
  const Alarm alarm(conversation.app.forms.dispatcher.Loop(), SettlingTime, [&] { passed = true; });
  const auto over = [&] { return passed || conversation.IsOver(); };
  Bytes unread;
  while (!over()) {
    if (PollPort(conversation, unread, 1) < 0) return false;
  }
  return true;
}

bool SendAndWaitForAck(Conversation& conversation, const Bytes& message) {
  return Send(conversation, message) && WaitForAck(conversation) != FlagTrue;
}

void TellTimeOut(Conversation& conversation) {
  conversation.Answered(false);
  conversation.exchange.End(false);
  if (conversation.IsOver()) return;
  conversation.app.forms.MsgBox("A timeout or error has occured while communicating to the " + conversation.product,
                                MessageIcon::Critical, "Error!", conversation.exchange.Details());
}

void SetDeviceLink(Conversation& conversation) {
  conversation.CommSet();
  conversation.CommFlush();
  conversation.app.forms.dispatcher.DoEvents();
  conversation.CommSetNOXON();
}

void CheckComPort(App& app, Form& menu) {
  const auto conversation = Conversation::Begin(app, menu, TestingPort);
  if (!conversation) return;
  if (conversation->CommOpen() != 0) {
    std::string error;
    app.comm.CommGetError(error);
    app.forms.MsgBox("UNABLE TO OPEN COM PORT,  Error: " + error, MessageIcon::Information,
                     "INVALID COM PORT!!! Please Select Again.", conversation->exchange.Details());
    menu.Get<ComboBox>("COMCbo").Show("None");
    app.globals.ComPortText = "None";
  }
  conversation->CommClose();
}

bool DetectOfflineManager(Conversation& conversation) {
  Timer& timer = conversation.TimeOutTmr();
  const int interval = timer.Interval;
  timer.Interval = ProbeInterval;
  conversation.app.globals.TimeOutFlag = FlagFalse;
  conversation.exchange.Begin(Exchange::Kind::Reading);
  conversation.CommOpen();  // "Port in use." after an earlier try: the probe goes on with the open port
  Bytes text;
  bool found = false;
  conversation.exchange.Next("the question for the Offline Manager");
  if (Send(conversation, RecoveryProbe)) {
    ReadUntilTimeOut(conversation, text, BannerLength);
    std::transform(text.begin(), text.end(), text.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
    found = text.find(BannerName) != Bytes::npos && conversation.app.globals.TimeOutFlag == FlagFalse;
  }
  if (!found && text.size() == BannerLength) {
    conversation.exchange.Refuse("what came is not from the Offline Manager");
  }
  timer.Interval = interval;
  conversation.Answered(found);
  conversation.CommFlush();
  return found;
}

}  // namespace vk32
