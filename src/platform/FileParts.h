// What each system does in its own way for a file that is saved.
#pragma once

#include <cstdint>
#include <string>

#include "platform/Fault.h"

namespace vk32 {

/// What stands in the way of a save.
enum class Obstacle {
  NoFolder,
  IsNoFolder,
  FolderForbidden,
  DiskReadOnly,
  DiskFull,
  IsFolder,
  IsDevice,
  FileReadOnly,
  NameTooLong,
  NameForbidden,
};
/// A sentence for the user, with what to do. `place`: the folder, the file or the name that it is about.
std::string WordsFor(Obstacle obstacle, const std::string& place);
/// The same for a folder that the system does not give, with its words for `code`.
std::string NotReached(const std::string& folder, std::int32_t code);

/// "." of a name alone.
std::string FolderOf(const std::string& target);
/// With the system's words for `code`.
RuntimeFault NotWritten(RuntimeFault::Number number, const std::string& path, std::int32_t code);
/// Eight hexadecimal digits, by chance.
std::string FreshDigits();
/// A name in the folder for a file that is on its way; by chance a fresh one.
std::string TemporaryName(const std::string& folder);

/// A disk with less room is full: more than any configuration takes.
constexpr unsigned long SmallFile = 16 * 1024;

/// The place where a file really lies; links that lead to a file that does not exist yet are followed too, but for
/// those of Windows. Empty if the links go round in a circle.
std::string RealPlace(const std::string& path);
/// Removes what a killed save has left, unless it is another user's or its save still goes on.
void RemoveLeftover(const std::string& path);

/// Has the disk keep what stands where in the folder. What it says about that is no failure of the files.
void StoreFolder(const std::string& folder);

// Each in words as those for an obstacle; empty if nothing stands in the way.
std::string WhyNotNamed(const std::string& name);
std::string WhyNotReplaced(const std::string& target);
std::string WhyNotInFolder(const std::string& folder);

}  // namespace vk32
