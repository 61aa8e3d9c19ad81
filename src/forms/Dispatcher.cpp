// The door for acts and ticks.
#include "forms/Dispatcher.h"

#include <new>
#include <utility>

#include "platform/Fault.h"

namespace vk32 {

void Dispatcher::Dispatch(const std::function<void()>& act) {
  if (Ended()) return;
  ++depth_;
  try {
    act();
    if (behind_) behind_(depth_ == 1);
  } catch (const ProgramEnd&) {
    // The way out of the program: everything between here and there has been unwound.
  } catch (const RuntimeFault& fault) {
    Fault(fault.Code(), fault.Description());
  } catch (const std::bad_alloc&) {
    const RuntimeFault fault(RuntimeFault::OutOfMemory);
    Fault(fault.Code(), fault.Description());
  } catch (const std::exception& error) {
    Fault(RuntimeFault::InvalidCall, error.what());
  }
  if (--depth_ == 0) {
    // Moved out first: a form that goes may let others go.
    const auto gone = std::exchange(kept_, {});
  }
}

void Dispatcher::DoEvents(int passes) {
  loop_.RunPasses(passes);
  LeaveIfEnded();
}

void Dispatcher::Idle(const WaitFor& what) {
  LeaveIfEnded();
  loop_.Wait(what);
}

void Dispatcher::End() {
  Close();
  throw ProgramEnd{};
}

void Dispatcher::LeaveIfEnded() const {
  if (Ended() && depth_ > 0) throw ProgramEnd{};
}

void Dispatcher::KeepWhileActing(std::shared_ptr<void> object) {
  if (depth_ > 0) kept_.push_back(std::move(object));
}

void Dispatcher::Fault(int number, const std::string& description) {
  if (ended_) return;
  ended_ = true;  // before the box: nothing else may start behind it
  if (atEnd_) atEnd_();
  screen_.ProgramFaulted(number, description);
  screen_.ProgramEnded();
}

void Dispatcher::Close() {
  if (ended_) return;
  ended_ = true;
  if (atEnd_) atEnd_();
  screen_.ProgramEnded();
}

}  // namespace vk32
