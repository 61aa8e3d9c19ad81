// Files on the disk, by system calls: only these tell a full disk from a file in its place.
#include "platform/Files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <random>
#include <utility>

#include "platform/Fault.h"

namespace vk32 {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t BufferSize = 65536;

RuntimeFault NotWritten(RuntimeFault::Number number, const std::string& path, int code) {
  return RuntimeFault(number, "\"" + path + "\" could not be written: " + strerrordesc_np(code) + ".");
}

/// The place where a file really lies; links that lead to a file that does not exist yet are followed too. Empty if the
/// links go round in a circle.
std::string Target(const std::string& path) {
  fs::path target = path;
  for (int links = 0; links < 40; ++links) {
    std::error_code fault;
    const fs::path next = fs::read_symlink(target, fault);
    if (fault) return target;
    target = target.parent_path() / next;
  }
  return "";
}

std::string Folder(const std::string& target) {
  const std::string folder = fs::path(target).parent_path();
  return folder.empty() ? "." : folder;
}

bool Allowed(const std::string& path, int access) { return faccessat(AT_FDCWD, path.c_str(), access, AT_EACCESS) == 0; }

/// Creates a file of a name that is not taken, with the mode that any new file of this program gets; -1: error.
int CreateBeside(const std::string& folder, std::string& path) {
  std::random_device random;
  for (int attempt = 0; attempt < 100; ++attempt) {
    char name[32];
    std::snprintf(name, sizeof name, "/.vk32-%08x.tmp", random());
    path = folder + name;
    const int fd = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (fd >= 0 || errno != EEXIST) return fd;
  }
  return -1;
}

/// File systems that have no such step leave it out.
bool Sync(int fd) { return fsync(fd) == 0 || errno == EINVAL || errno == ENOSYS || errno == ENOTSUP; }

constexpr unsigned long SmallFile = 16 * 1024;  // more than any configuration

std::string WhyNotInFolder(const std::string& folder) {
  struct stat found {};
  if (stat(folder.c_str(), &found) != 0) {
    if (errno == ENOENT) return "The folder \"" + folder + "\" does not exist: choose another one or create it first.";
    return "The folder \"" + folder + "\" can't be reached (" + strerrordesc_np(errno) + "): choose another one.";
  }
  if (!S_ISDIR(found.st_mode)) return "\"" + folder + "\" is not a folder: choose another place.";
  if (!Allowed(folder, W_OK | X_OK)) {
    if (errno == EROFS) return "The disk of the folder \"" + folder + "\" is read-only: choose another folder.";
    return "You may not save files in the folder \"" + folder + "\": choose another one.";
  }
  struct statvfs disk {};
  const bool full =
      statvfs(folder.c_str(), &disk) == 0 && disk.f_blocks > 0 && disk.f_bavail * disk.f_frsize < SmallFile;
  return full ? "The disk of the folder \"" + folder + "\" is full: choose another folder or make room." : "";
}

std::string WhyNotReplaced(const std::string& target) {
  struct stat found {};
  if (lstat(target.c_str(), &found) != 0) return "";
  if (S_ISDIR(found.st_mode)) return "\"" + target + "\" is a folder: choose another name.";
  if (!S_ISREG(found.st_mode)) return "\"" + target + "\" is a device and not a file: choose another name.";
  const std::string advice = ": choose another name or have it made writable.";
  if (!Allowed(target, W_OK)) return "The file \"" + target + "\" is read-only" + advice;
  // In a folder like /tmp, only its owner may replace a file, whoever may write to it.
  struct stat folder {};
  const uid_t user = geteuid();
  const bool sticky = stat(Folder(target).c_str(), &folder) == 0 && (folder.st_mode & S_ISVTX) != 0;
  if (sticky && user != 0 && user != found.st_uid && user != folder.st_uid) {
    return "The file \"" + target + "\" belongs to another user: choose another name.";
  }
  return "";
}

}  // namespace

InputFile::InputFile(const std::string& path) : fd_(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC)) {
  if (fd_ < 0) {
    throw RuntimeFault(errno == ENOENT ? RuntimeFault::FileNotFound : RuntimeFault::PathFileAccessError);
  }
  struct stat found {};
  if (fstat(fd_, &found) != 0 || !S_ISREG(found.st_mode)) {
    close(fd_);
    throw RuntimeFault(RuntimeFault::PathFileAccessError);
  }
  size_ = static_cast<std::uint64_t>(found.st_size);
}

InputFile::~InputFile() { close(fd_); }

bool InputFile::Fill() {
  ssize_t taken = 0;
  do {
    taken = read(fd_, buffer_.data(), buffer_.size());
  } while (taken < 0 && errno == EINTR);
  if (taken < 0) throw RuntimeFault(RuntimeFault::DeviceIOError);
  next_ = 0;
  filled_ = static_cast<std::size_t>(taken);
  return taken > 0;
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

OutputFile::OutputFile(const std::string& path) : target_(Target(path)) {
  if (const std::string why = WhyNotWritable(path); !why.empty()) {
    throw RuntimeFault(RuntimeFault::PathFileAccessError, why);
  }
  fd_ = CreateBeside(Folder(target_), temporary_);
  if (fd_ < 0) throw NotWritten(RuntimeFault::PathFileAccessError, target_, errno);
  struct stat old {};
  if (stat(target_.c_str(), &old) != 0) return;
  // Only the superuser can keep another's file another's, and some file systems know neither owner nor mode: both are
  // kept where that is possible.
  const bool kept = fchown(fd_, old.st_uid, old.st_gid) == 0;
  fchmod(fd_, old.st_mode & (kept ? 07777 : 0777));
}

OutputFile::~OutputFile() {
  if (fd_ >= 0) close(fd_);
  if (!temporary_.empty()) unlink(temporary_.c_str());
}

void OutputFile::Write(std::string_view bytes) {
  buffer_ += bytes;
  if (buffer_.size() >= BufferSize) Flush();
}

void OutputFile::Flush() {
  for (std::size_t done = 0; done < buffer_.size();) {
    const ssize_t taken = write(fd_, buffer_.data() + done, buffer_.size() - done);
    if (taken >= 0) {
      done += static_cast<std::size_t>(taken);
    } else if (errno != EINTR) {
      throw NotWritten(RuntimeFault::DeviceIOError, target_, errno);
    }
  }
  buffer_.clear();
}

void OutputFile::Commit() {
  Flush();
  if (!Sync(fd_)) throw NotWritten(RuntimeFault::DeviceIOError, target_, errno);
  const int closing = std::exchange(fd_, -1);
  if (close(closing) != 0) throw NotWritten(RuntimeFault::DeviceIOError, target_, errno);
  if (rename(temporary_.c_str(), target_.c_str()) != 0) {
    throw NotWritten(RuntimeFault::PathFileAccessError, target_, errno);
  }
  temporary_.clear();
  SyncFolder();
}

void OutputFile::SyncFolder() const {
  // A folder that may be written but not read can't be opened; the file is in its place all the same.
  const int folder = open(Folder(target_).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (folder < 0) return;
  const int code = Sync(folder) ? 0 : errno;
  close(folder);
  if (code != 0) throw NotWritten(RuntimeFault::DeviceIOError, target_, code);
}

std::string WhyNotWritable(const std::string& path) {
  const std::string target = Target(path);
  if (target.empty()) {
    return path.empty() ? "The file has no name: type one."
                        : "The link \"" + path + "\" leads back to itself: choose another name.";
  }
  const std::string name = fs::path(target).filename();
  if (name.empty()) return "\"" + path + "\" names a folder and no file: add a name.";
  if (name.size() > NAME_MAX) return "The name \"" + name + "\" is too long: choose a shorter one.";
  const std::string why = WhyNotReplaced(target);
  return why.empty() ? WhyNotInFolder(Folder(target)) : why;
}

}  // namespace vk32
