// The message that shows while a configuration image travels.
#include "firmware/DownloadingMsg.h"

#include "shell/modCloseBtn.h"

namespace vk32 {

void DownloadingMsg::Form_Load() { EnableCloseButton(*this, false); }

void DownloadingMsg::StartDownloadTimer(Timer&, int total) {
  Visible = true;
  Progress.Max = total;
  DownloadTmr.Enabled = true;
}

void DownloadingMsg::StopDownloadTimer() {
  DownloadTmr.Enabled = false;
  UnloadMe();
}

void DownloadingMsg::DownloadTmr_Timer() {
  const int interval = DownloadTmr.Interval;
  if (Progress.Max >= Progress.Value + interval) Progress.Value = Progress.Value + interval;
}

}  // namespace vk32
