// The parameter image of a wizard, and its way to and from the device.
#include "models/registers/ImageWizard.h"

#include "core/ConfigMod.h"
#include "shell/Subs.h"

namespace vk32 {

void ImageWizard::BuildParameterImage() {
  for (const FixedByte& fixed : FixedBytes()) Register(fixed.byte) = fixed.value;
  app.globals.ConfigImage = app.globals.RegistersToString(0, RegisterCount());
}

void ImageWizard::UploadCmd_Click() {
  ShowConfigureReminder(app);
  UploadImage(app, *this);
}

bool ImageWizard::Download() { return DownloadImage(app, *this); }

}  // namespace vk32
