// Whole files, and a folder for those that are on their way.
#include "cli/FileContent.h"

#include <stdlib.h>

#include <filesystem>

#include "platform/Fault.h"
#include "platform/Files.h"

namespace vk32 {

namespace fs = std::filesystem;

std::string ContentOf(const std::string& path) {
  try {
    InputFile file(path);
    return file.Read(file.Size());
  } catch (const RuntimeFault& fault) {
    throw Failure(ExitStatus::FileRefused, path + " can't be read: " + fault.Description() + ".");
  }
}

void Store(const std::string& path, const std::string& content) {
  try {
    OutputFile file(path);
    file.Write(content);
    file.Commit();
  } catch (const RuntimeFault& fault) {
    throw Failure(ExitStatus::FileRefused, path + " can't be written: " + fault.Description());
  }
}

void MakeFolder(const std::string& path) {
  std::error_code error;
  fs::create_directories(path, error);
  if (error) throw Failure(ExitStatus::FileRefused, "The folder " + path + " can't be made: " + error.message() + ".");
}

TemporaryFolder::TemporaryFolder() : path((fs::temp_directory_path() / "vk32-cli-XXXXXX").string()) {
  if (mkdtemp(path.data()) == nullptr)
    throw Failure(ExitStatus::FileRefused, "No folder can be made like " + path + ".");
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  fs::remove_all(path, ignored);
}

}  // namespace vk32
