// The line that tells what goes on with the device, how far it is and how it ended.
#pragma once

#include <optional>
#include <string>

#include "forms/Controls.h"
#include "link/Exchange.h"

namespace vk32 {

/// StatusLbl, behind StatusMark after a failure, and StatusBar while an exchange goes on.
class StatusLine : public ExchangeObserver {
 public:
  /// Without a place for it there is no bar.
  StatusLine(Form& form, Place line, std::optional<Place> bar = {});

  /// What is.
  void Tell(const std::string& words);
  void TellFailure(const std::string& words);

  void ExchangeGoesOn(const std::string& words, int done, int total) override;
  void ExchangeEnded(const std::string& words, bool good) override;

 private:
  void Show(const std::string& words, Color color);

  Form& form_;
  const Place line_;

 public:
  Image StatusMark;
  Label StatusLbl;
  std::optional<ProgressBar> StatusBar;
};

}  // namespace vk32
