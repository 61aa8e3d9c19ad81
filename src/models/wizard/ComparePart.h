// The part of a wizard's apply page that lays what the pages show beside what a device or a file holds.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "forms/Controls.h"
#include "link/Conversation.h"
#include "listing/Elsewhere.h"

namespace vk32 {

class WizardForm;

class ComparePart {
 public:
  ComparePart(WizardForm& wizard, App& app, Frame& applyFrame);

  /// Without a port no device can be asked.
  void AdaptToPort(bool port) { CompareDeviceCmd.Enabled = port; }
  /// Reads back what the device has acknowledged, and compares it with what was sent. False if it differs, could not be
  /// read, or the wizard has gone: the user has been told, and sees both where they differ.
  bool Verify(const Conversation& conversation, const SentParameters& sent);
  /// The wizard goes: ends a reading that is under way.
  void Stop();

 private:
  void CompareDeviceCmd_Click();
  void CompareFileCmd_Click();
  /// Asks for a press of the Configure button, and reads. Nothing if that failed, or the wizard has gone: the user has
  /// been told, in the words for a failure.
  std::optional<Listing> ReadDevice(const Conversation& conversation, const std::string& failure);
  WizardKind Kind() const;

  WizardForm& wizard_;
  App& app_;
  Frame& page_;
  std::weak_ptr<Elsewhere> reading_;  // the one that is under way

 public:
  // clang-format off
  CommandButton CompareDeviceCmd {page_, "CompareDeviceCmd", { 360, 7080, 3000, 390}, "Compare with Device...", [this] { CompareDeviceCmd_Click(); }};
  CommandButton CompareFileCmd   {page_, "CompareFileCmd",   {3480, 7080, 2760, 390}, "Compare with File...", [this] { CompareFileCmd_Click(); }};
  FileDialog    CompareDialog;
  // clang-format on
};

}  // namespace vk32
