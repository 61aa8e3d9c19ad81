// The moving of a whole parameter set between the shared variables and a device.
#pragma once

#include <array>

#include "core/ConfigurationForm.h"

namespace vk32 {

class Conversation;

/// What an upload has given the parameters.
enum class Taken { Nothing, Part, All };

/// What a download sends, of both styles: the product has one of them, or both.
struct SentParameters {
  Bytes image;                    // ConfigImage
  std::array<Bytes, 256> blocks;  // BlockTable
};

// Every operation opens the port at its start and closes it at its end. A failure is told to the user by one error box;
// nothing is tried again. Once the conversation is over nothing more is sent, told or taken over.

/// Sends ConfigImage. True if the device has acknowledged it.
bool DownloadImage(Conversation& conversation);
/// Sends the blocks of BlockList from BlockTable. True if the device has acknowledged each, and the end of exchange,
/// with which it stores them, has left.
bool DownloadBlocks(Conversation& conversation);
/// Fills the registers from the device and calls Parameter_Setup_RB. A device that does not answer ends it silently.
Taken UploadImage(Conversation& conversation, ConfigurationForm& form);
/// Reads the blocks of BlockList, decodes each by RemoveData, calls Parameter_Setup_VK. CommFailed tells how it went.
Taken UploadBlocks(Conversation& conversation, ConfigurationForm& form);
/// Restarts the device. No reply is awaited. False if the message did not leave; nobody has been told.
bool SendReboot(Conversation& conversation);

}  // namespace vk32
