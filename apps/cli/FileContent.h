// Whole files, and a folder for those that are on their way.
#pragma once

#include <list>
#include <string>

#include "cli/World.h"
#include "platform/Files.h"

namespace vk32 {

// Each is a Failure with words for the user if it can't be done.

std::string ContentOf(const std::string& path);
/// The place holds the old file or the new one, never a part.
void Store(const std::string& path, const std::string& content);
/// Many files, which are on their way together.
class FileGroup {
 public:
  explicit FileGroup(Lasting lasting) : lasting_(lasting) {}

  /// May store those that have come so far.
  void Add(const std::string& path, const std::string& content);
  /// All get their places.
  void Store();

 private:
  Lasting lasting_;
  std::list<OutputFile> files_;
  std::string first_, last_;  // their paths
};
void MakeFolder(const std::string& path);

/// Goes with all that is in it.
struct TemporaryFolder {
  TemporaryFolder();
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  std::string path;
};

}  // namespace vk32
