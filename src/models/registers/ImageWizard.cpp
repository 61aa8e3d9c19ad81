// The parameter image of a wizard, and its way to and from the device.
#include "models/registers/ImageWizard.h"

namespace vk32 {

void ImageWizard::BuildParameterImage() {
  for (const FixedByte& fixed : FixedBytes()) Register(fixed.byte) = fixed.value;
  app.globals.ConfigImage = app.globals.RegistersToString(0, RegisterCount());
}

void ImageWizard::TakeSent(const SentParameters& sent) {
  app.globals.LoadRegisters(sent.image, 0);
  Parameter_Setup_RB();
}

Taken ImageWizard::Upload(Conversation& conversation) { return UploadImage(conversation, *this); }

bool ImageWizard::Download(Conversation& conversation) { return DownloadImage(conversation); }

}  // namespace vk32
