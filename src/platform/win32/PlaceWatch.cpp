// The watch on the system's list of its serial ports.
#include "platform/PlaceWatch.h"

#include "platform/win32/Win32.h"

namespace vk32 {

struct PlaceWatch::State {
  HKEY list = nullptr;
  OwnedHandle changed = MakeEvent();
  bool armed = false;

  void Arm() {
    ResetEvent(changed.get());
    armed = RegNotifyChangeKeyValue(list, TRUE, REG_NOTIFY_CHANGE_NAME | REG_NOTIFY_CHANGE_LAST_SET, changed.get(),
                                    TRUE) == ERROR_SUCCESS;
  }
};

PlaceWatch::PlaceWatch() : state_(std::make_unique<State>()) {
  // One above the list, which is not there before the first port has come.
  if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, LR"(HARDWARE\DEVICEMAP)", 0, KEY_NOTIFY, &state_->list) == ERROR_SUCCESS) {
    state_->Arm();
  }
}

PlaceWatch::~PlaceWatch() {
  if (state_->list != nullptr) RegCloseKey(state_->list);
}

int PlaceWatch::Handle() const { return state_->armed ? NumberOf(state_->changed.get()) : -1; }

void PlaceWatch::Watch(const std::vector<std::string>&, const std::vector<std::string>&, const std::string&) {}

bool PlaceWatch::TakeChange() {
  if (!state_->armed || !IsSignalled(state_->changed.get())) return false;
  state_->Arm();
  return true;
}

}  // namespace vk32
