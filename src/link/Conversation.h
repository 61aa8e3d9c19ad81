// What passes between the program and one device, from its beginning to its end.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "forms/Form.h"
#include "link/Exchange.h"
#include "platform/SerialDriver.h"

namespace vk32 {

struct App;

/// What a conversation is for, in the words of the box that refuses another one.
struct Purpose {
  const char* doing;     // "Reading the configuration"
  const char* howToEnd;  // a sentence
};

/// Begun for the port, the rate, the product and the model that are chosen then, it keeps them, whatever becomes of the
/// choice. It owns the port until it goes; all bytes go through it. There is at most one in an App.
///
/// The user ends it by closing its form. From then on it is over: nothing is sent any more, and its waits end at once.
class Conversation {
 public:
  /// nullptr while another one is under way: the user has been told so. With the choice "None" it has port 0, on which
  /// every operation fails. `observer`: hears of its exchanges, and lives as long as the form.
  static std::shared_ptr<Conversation> Begin(App& app, Form& form, const Purpose& purpose,
                                             ExchangeObserver* observer = nullptr);
  /// Closes the port.
  ~Conversation();
  Conversation(const Conversation&) = delete;
  Conversation& operator=(const Conversation&) = delete;

  bool IsOver() const { return ended_ || !form.IsLoaded(); }
  /// Ends it while its form stays.
  void End() { ended_ = true; }

  // The operations of modCOMM, on its port and with its rate.

  /// Opens nothing once it is over.
  std::int32_t CommOpen();
  std::int32_t CommSet();
  std::int32_t CommSetNOXON();
  std::int32_t CommFlush();
  std::int32_t CommClose();
  std::int32_t CommRead(Bytes& data, std::int32_t maximum);
  /// If an earlier conversation on this port has ended without its last answer, first drops what comes until nothing
  /// has come for 500 ms, 3 s at the most. Writes nothing once it is over, and takes back what has not left by then.
  /// Faults 9 without a port.
  std::int32_t CommWrite(const Bytes& data);
  /// The same, for the one message that is sent although the conversation is over.
  std::int32_t CommWriteLast(const Bytes& data);
  /// The message of the last CommWrite.
  const Bytes& SentLast() const { return sentLast_; }

  bool IsOpen() const;
  /// The port is open and its device is not there any more: the port is of use only once it has been opened anew.
  bool HasGone() const { return IsOpen() && WaitHandle() < 0; }
  /// A descriptor that becomes readable when bytes come; -1: there is none.
  int WaitHandle() const;
  /// The clock of its waits.
  Timer& TimeOutTmr() const { return form.Get<Timer>("TimeOutTmr"); }

  /// A wait has ended, with its answer or without, or what came was none. What did not come may still come late.
  void Answered(bool answered) { owed_ = !answered; }

  /// "Reading the configuration of the RB2000 on COM3 is under way.", and how to end it.
  std::string Words() const;

  App& app;
  Form& form;
  const std::int32_t port;  // 1 to 32; 0: none
  const std::string product;
  const std::vector<std::int16_t> blockList;  // of the product and its model
  Exchange exchange;                          // what passes, for the user's eyes

 private:
  Conversation(App& app, Form& form, const Purpose& purpose, ExchangeObserver* observer);
  void DropLateAnswer();

  const Purpose purpose_;
  const std::string settings_;
  bool ended_ = false;
  bool owed_ = false;
  Bytes sentLast_;
};

/// True while a conversation is under way: the user has been told what goes on and how to end it. For whatever would
/// begin another one, or take the ground away from it.
bool RefusedByConversation(App& app);

}  // namespace vk32
