// The message that shows while a configuration image travels.
#pragma once

#include "app/App.h"
#include "core/DownloadProgress.h"

namespace vk32 {

/// The bar measures no bytes: it counts the time that has passed against the time allowed.
class DownloadingMsg : public Form, public DownloadProgress {
 public:
  static constexpr const char* FormName = DownloadProgress::FormName;

  explicit DownloadingMsg(App& app) : Form(app.forms, FormName, "Downloading...", 5400, 1680, FormStyle::Dialog) {}

  void StartDownloadTimer(Timer& timer, int total) override;
  void StopDownloadTimer() override;

 private:
  void Form_Load() override;
  void DownloadTmr_Timer();

  // clang-format off
  Label       Label1      {*this, "Label1",      {240, 360, 4920, 315}, "Downloading Configuration..."};
  ProgressBar Progress {*this, "ProgressBar", {240, 840, 4920, 315}};
  Timer       DownloadTmr  {*this, "DownloadTmr", 1000, true, &DownloadingMsg::DownloadTmr_Timer};
  // clang-format on
};

}  // namespace vk32
