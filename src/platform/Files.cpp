// What files have in common on all systems: the buffers, and the road of a save.
#include "platform/Files.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <random>
#include <set>
#include <utility>

#include "platform/FileParts.h"
#include "platform/Paths.h"
#include "platform/SystemName.h"

namespace vk32 {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t BufferSize = 65536;
constexpr std::string_view TemporaryStart = ".vk32-", TemporaryEnd = ".tmp";

/// Removes what saves of this user's that were killed have left in a folder.
void ClearLeftovers(const std::string& folder) {
  std::error_code fault;
  for (fs::directory_iterator entry(PathOf(folder), fault), end; !fault && entry != end; entry.increment(fault)) {
    const std::string name = TextOf(entry->path().filename());
    if (name.size() == TemporaryStart.size() + 8 + TemporaryEnd.size() && name.starts_with(TemporaryStart) &&
        name.ends_with(TemporaryEnd)) {
      RemoveLeftover(TextOf(entry->path()));
    }
  }
}

/// Files have got their places in the folder.
void FinishFolder(const std::string& folder, Lasting lasting) {
  ClearLeftovers(folder);
  if (lasting == Lasting::ForGood) StoreFolder(folder);
}

}  // namespace

std::string WordsFor(Obstacle obstacle, const std::string& place) {
  const std::string quoted = "\"" + place + "\"";
  switch (obstacle) {
    case Obstacle::NoFolder: return "The folder " + quoted + " does not exist: choose another one or create it first.";
    case Obstacle::IsNoFolder: return quoted + " is not a folder: choose another place.";
    case Obstacle::FolderForbidden: return "You may not save files in the folder " + quoted + ": choose another one.";
    case Obstacle::DiskReadOnly: return "The disk of the folder " + quoted + " is read-only: choose another folder.";
    case Obstacle::DiskFull:
      return "The disk of the folder " + quoted + " is full: choose another folder or make room.";
    case Obstacle::IsFolder: return quoted + " is a folder: choose another name.";
    case Obstacle::IsDevice: return quoted + " is a device and not a file: choose another name.";
    case Obstacle::FileReadOnly:
      return "The file " + quoted + " is read-only: choose another name or have it made writable.";
    case Obstacle::NameForbidden:
      return "The name " + quoted + " has a character that no file can have here (< > : \" | ? *): choose another one.";
    case Obstacle::NameTooLong: return "The name " + quoted + " is too long: choose a shorter one.";
  }
  return "";
}

std::string NotReached(const std::string& folder, std::int32_t code) {
  return "The folder \"" + folder + "\" can't be reached (" + SystemWords(code) + "): choose another one.";
}

std::string FolderOf(const std::string& target) {
  const std::string folder = TextOf(PathOf(target).parent_path());
  return folder.empty() ? "." : folder;
}

RuntimeFault NotWritten(RuntimeFault::Number number, const std::string& path, std::int32_t code) {
  return RuntimeFault(number, "\"" + path + "\" could not be written: " + SystemWords(code) + ".");
}

std::string FreshDigits() {
  std::random_device random;
  char digits[9];
  std::snprintf(digits, sizeof digits, "%08x", random());
  return digits;
}

std::string TemporaryName(const std::string& folder) {
  return TextOf(PathOf(folder) / std::string(TemporaryStart).append(FreshDigits()).append(TemporaryEnd));
}

std::string InputFile::Read(std::size_t count) {
  std::string bytes;
  while (bytes.size() < count && (next_ < filled_ || Fill())) {
    const std::size_t some = std::min(count - bytes.size(), filled_ - next_);
    bytes.append(buffer_.data() + next_, some);
    next_ += some;
  }
  return bytes;
}

bool InputFile::Fill() {
  const std::size_t taken = ReadSome();
  next_ = 0;
  filled_ = taken;
  return taken > 0;
}

OutputFile::OutputFile(const std::string& path, Lasting lasting) : target_(RealPlace(path)), lasting_(lasting) {
  if (const std::string why = WhyNotWritable(path); !why.empty()) {
    throw RuntimeFault(RuntimeFault::PathFileAccessError, why);
  }
  Create();
}

void OutputFile::Write(std::string_view bytes) {
  buffer_ += bytes;
  if (buffer_.size() >= BufferSize) Flush();
}

void OutputFile::Flush() {
  for (std::string_view left = buffer_; !left.empty();) left.remove_prefix(WriteSome(left));
  buffer_.clear();
}

void OutputFile::Commit() {
  Flush();
  if (lasting_ == Lasting::ForGood) StoreBytes();
  TakePlace();
  FinishFolder(FolderOf(target_), lasting_);
}

void OutputFile::CommitAll(std::list<OutputFile>& files) {
  std::list<OutputFile*> stored;
  for (OutputFile& file : files) {
    file.Flush();
    if (file.lasting_ == Lasting::ForGood) stored.push_back(&file);
  }
  StoreBytesOfAll(stored);
  std::set<std::pair<std::string, Lasting>> folders;
  for (OutputFile& file : files) {
    file.TakePlace();
    folders.emplace(FolderOf(file.target_), file.lasting_);
  }
  for (const auto& [folder, lasting] : folders) FinishFolder(folder, lasting);
}

std::string WhyNotWritable(const std::string& path) {
  const std::string target = RealPlace(path);
  if (target.empty()) {
    return path.empty() ? "The file has no name: type one."
                        : "The link \"" + path + "\" leads back to itself: choose another name.";
  }
  const std::string name = FileNameOf(target);
  if (name.empty()) return "\"" + path + "\" names a folder and no file: add a name.";
  std::string why = WhyNotNamed(name);
  if (why.empty()) why = WhyNotReplaced(target);
  return why.empty() ? WhyNotInFolder(FolderOf(target)) : why;
}

}  // namespace vk32
