// What ConfigMod asks of the message that shows while an image travels.
#pragma once

#include "forms/Controls.h"

namespace vk32 {

class DownloadProgress {
 public:
  /// The form that offers it.
  static constexpr const char* FormName = "DownloadingMsg";

  virtual ~DownloadProgress() = default;
  /// Shows the message. `timer`: the caller's time-out timer; `total`: the time allowed, in ms.
  virtual void StartDownloadTimer(Timer& timer, int total) = 0;
  /// Takes it away.
  virtual void StopDownloadTimer() = 0;
};

}  // namespace vk32
