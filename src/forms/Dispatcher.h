// The door through which every act of the user and every tick enters, and the waits of those who are inside.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "forms/Screen.h"
#include "platform/EventLoop.h"

namespace vk32 {

class Dispatcher {
 public:
  Dispatcher(EventLoop& loop, Screen& screen) : loop_(loop), screen_(screen) {}

  /// Runs an act. Nothing that it throws gets out: a fault that nobody caught is told to the user and ends the program.
  void Dispatch(const std::function<void()>& act);

  /// Lets pending events run, from inside an act, in so many passes.
  void DoEvents(int passes = 1);
  /// Sleeps until what is waited for has come or an event is due. The only sleep of the program's waits.
  void Idle(const WaitFor& what);

  /// Ends the program at once, from inside an act: no question, no form is told.
  [[noreturn]] void End();
  bool Ended() const { return ended_ || (front_ != nullptr && front_->Ended()); }
  /// It has ended as soon as the other has: one that acts inside an act of the other.
  void EndWith(const Dispatcher& front) { front_ = &front; }
  /// Unwinds the act that is under way, if the program has ended while it let events run.
  void LeaveIfEnded() const;
  /// Runs when the program ends, by a fault or by End.
  void AtEnd(std::function<void()> closePorts) { atEnd_ = std::move(closePorts); }

  /// Runs at the end of each act, as a part of it; an act that runs inside of another is not the outermost.
  void BehindEachAct(std::function<void(bool outermost)> behind) { behind_ = std::move(behind); }

  /// Keeps an object alive until no act is under way.
  void KeepWhileActing(std::shared_ptr<void> object);

  EventLoop& Loop() const { return loop_; }

 private:
  /// Not a std::exception, so that no trap for faults holds it up.
  struct ProgramEnd {};

  void Fault(int number, const std::string& description);
  void Close();

  EventLoop& loop_;
  Screen& screen_;
  const Dispatcher* front_ = nullptr;
  std::function<void()> atEnd_;
  std::function<void(bool)> behind_;
  std::vector<std::shared_ptr<void>> kept_;
  int depth_ = 0;
  bool ended_ = false;
};

}  // namespace vk32
