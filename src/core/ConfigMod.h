// The moving of a whole parameter set between the shared variables and a device.
#pragma once

#include "core/ConfigurationForm.h"

namespace vk32 {

struct App;

// Every operation opens the port at its start and closes it at its end. A failure is told to the user by one error box;
// nothing is tried again. The form gives the timer of the waits.

/// Sends ConfigImage. True if the device has acknowledged it.
bool DownloadImage(App& app, ConfigurationForm& form);
/// Sends the blocks of BlockList from BlockTable. True if the device has acknowledged each.
bool DownloadBlocks(App& app, ConfigurationForm& form);
/// Fills the registers from the device and calls Parameter_Setup_RB. A device that does not answer ends it silently.
void UploadImage(App& app, ConfigurationForm& form);
/// Reads the blocks of BlockList, decodes each by RemoveData, calls Parameter_Setup_VK. CommFailed tells how it went.
void UploadBlocks(App& app, ConfigurationForm& form);
/// Restarts the device. No reply is awaited.
void SendReboot(App& app);

}  // namespace vk32
