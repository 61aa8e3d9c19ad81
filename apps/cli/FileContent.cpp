// Whole files, and a folder for those that are on their way.
#include "cli/FileContent.h"

#include <system_error>
#include <utility>

#include "platform/Fault.h"
#include "platform/Paths.h"

namespace vk32 {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t LargestGroup = 200;  // each file is open: systems allow 256 at least

Failure NotWritten(const std::string& what, const RuntimeFault& fault) {
  return Failure(ExitStatus::FileRefused, what + " can't be written: " + fault.Description());
}

}  // namespace

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
    throw NotWritten(path, fault);
  }
}

void FileGroup::Add(const std::string& path, const std::string& content) {
  try {
    files_.emplace_back(path, lasting_).Write(content);
  } catch (const RuntimeFault& fault) {
    throw NotWritten(path, fault);
  }
  if (files_.size() == 1) first_ = path;
  last_ = path;
  if (files_.size() == LargestGroup) Store();
}

void FileGroup::Store() {
  std::list<OutputFile> files = std::exchange(files_, {});
  try {
    OutputFile::CommitAll(files);
  } catch (const RuntimeFault& fault) {
    throw NotWritten(first_ == last_ ? first_ : "The files " + first_ + " to " + last_, fault);
  }
}

void MakeFolder(const std::string& path) {
  std::error_code error;
  fs::create_directories(PathOf(path), error);
  if (error) throw Failure(ExitStatus::FileRefused, "The folder " + path + " can't be made: " + error.message() + ".");
}

TemporaryFolder::TemporaryFolder() {
  try {
    path = MakeTemporaryFolder("vk32-cli");
  } catch (const std::system_error& error) {
    throw Failure(ExitStatus::FileRefused, std::string("No temporary folder can be made: ") + error.what() + ".");
  }
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  fs::remove_all(PathOf(path), ignored);
}

}  // namespace vk32
