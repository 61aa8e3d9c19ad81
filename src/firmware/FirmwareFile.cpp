// Firmware files.
#include "firmware/FirmwareFile.h"

#include <algorithm>
#include <filesystem>

#include "app/App.h"
#include "link/VKComSubs.h"
#include "platform/Fault.h"
#include "platform/Files.h"
#include "platform/Paths.h"

namespace vk32 {

bool FirmwareFileExists(const std::string& path) {
  std::error_code ignored;
  return std::filesystem::is_regular_file(PathOf(path), ignored);
}

bool IsFirmwareFile(const std::string& path) {
  try {
    InputFile file(path);
    return file.Get() == ':';
  } catch (const RuntimeFault&) {
    return false;
  }
}

std::uint64_t FirmwareFileLength(const std::string& path) {
  try {
    return InputFile(path).Size();
  } catch (const RuntimeFault&) {
    return 0;
  }
}

int BarValue(std::uint64_t done, std::uint64_t total) {
  return static_cast<int>(static_cast<double>(done) / static_cast<double>(total) * FullBar);
}

bool StreamFile(Conversation& conversation, const std::string& path, std::size_t pieceLength,
                const PieceSent& pieceSent, std::uint64_t atLeast) {
  try {
    InputFile file(path);
    const std::uint64_t total = file.Size();
    if (total < atLeast) return false;
    for (std::uint64_t sent = 0; sent < total && !conversation.IsOver();) {
      const auto length = static_cast<std::size_t>(std::min<std::uint64_t>(total - sent, pieceLength));
      const Bytes piece = file.Read(length);
      if (piece.size() < length) return false;
      // None can follow a piece that did not leave whole: the device would take a file with a gap.
      if (!SendWhole(conversation, piece)) return true;
      sent += length;
      pieceSent(sent, total);
      conversation.app.forms.dispatcher.DoEvents();
    }
    return true;
  } catch (const RuntimeFault&) {
    return false;
  }
}

std::string FirmwareFilter(const std::string& product) {
  return product + " Firmware Files (*.rom)|*.rom|All Files (*.*)|*.*";
}

}  // namespace vk32
