// Firmware files: opaque bytes, sent as they stand.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "link/Conversation.h"

namespace vk32 {

/// There is a file at that path.
bool FirmwareFileExists(const std::string& path);
/// Bytes in the file; 0 if it can't be opened.
std::uint64_t FirmwareFileLength(const std::string& path);
/// The file can be read, is not empty, and its first character is ":". One meaning for every model.
bool IsFirmwareFile(const std::string& path);

// The bar of a transfer has so many steps.
constexpr int FullBar = 1000;
int BarValue(std::uint64_t done, std::uint64_t total);

/// Bytes that have been sent, and bytes in the file.
using PieceSent = std::function<void(std::uint64_t sent, std::uint64_t total)>;

/// Sends the file in pieces, one CommWrite each, so that it is never held whole; tells `pieceSent` and lets events run
/// behind each. Ends early when the conversation is over or a piece did not leave whole. False if the file could not be
/// opened, or has shrunk since.
bool StreamFile(Conversation& conversation, const std::string& path, std::size_t pieceLength,
                const PieceSent& pieceSent, std::uint64_t atLeast = 0);

/// The open dialog's filter for the product's firmware files.
std::string FirmwareFilter(const std::string& product);

}  // namespace vk32
