// What the wizards share whose product keeps its configuration in one parameter image.
#pragma once

#include <span>

#include "models/registers/RegisterList.h"
#include "models/wizard/WizardForm.h"

namespace vk32 {

/// A byte that the image holds whatever the user sets; written when the image is built.
struct FixedByte {
  RegisterByte byte;
  int value;
};

class ImageWizard : public WizardForm {
 public:
  /// Writes the fixed bytes and makes ConfigImage, two bytes a register. Faults 6 if a register holds no byte.
  void BuildParameterImage();
  void TakeSent(const SentParameters& sent) override;

 protected:
  using WizardForm::WizardForm;

  virtual std::span<const FixedByte> FixedBytes() const = 0;
  /// Of the image, from register 0 on.
  virtual int RegisterCount() const = 0;

  Taken Upload(Conversation& conversation) override;
  void BuildParameters(bool) override { BuildParameterImage(); }
  bool Download(Conversation& conversation) override;

  std::int32_t& Register(RegisterByte byte) { return byte.In(app.globals); }
};

}  // namespace vk32
