// Files on the disk, by system calls: only these tell a full disk from a file in its place.
#include "platform/Files.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <map>
#include <random>
#include <set>
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

constexpr std::string_view TemporaryStart = "/.vk32-", TemporaryEnd = ".tmp";

/// Creates a file of a name that is not taken, and locks it for as long as it is open; -1: error. `mode`: less umask.
int CreateBeside(const std::string& folder, mode_t mode, std::string& path) {
  std::random_device random;
  for (int attempt = 0; attempt < 100; ++attempt) {
    char number[9];
    std::snprintf(number, sizeof number, "%08x", random());
    path = folder;
    path.append(TemporaryStart).append(number).append(TemporaryEnd);
    const int fd = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
    if (fd < 0 && errno == EEXIST) continue;
    struct stat created {};
    // Another save may have taken it for a leftover before it was locked.
    const bool taken = fd >= 0 && ((flock(fd, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) ||
                                   (fstat(fd, &created) == 0 && created.st_nlink == 0));
    if (!taken) return fd;
    close(fd);
  }
  return -1;
}

/// Removes what saves of this user's that were killed have left in a folder. A file whose save goes on is locked.
void ClearLeftovers(const std::string& folder) {
  std::error_code fault;
  for (fs::directory_iterator entry(folder, fault), end; !fault && entry != end; entry.increment(fault)) {
    const std::string path = entry->path();
    const std::string name = "/" + entry->path().filename().string();
    if (name.size() != TemporaryStart.size() + 8 + TemporaryEnd.size() || !name.starts_with(TemporaryStart) ||
        !name.ends_with(TemporaryEnd)) {
      continue;
    }
    const int fd = open(path.c_str(), O_WRONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    struct stat found {};
    const bool own = fd >= 0 && fstat(fd, &found) == 0 && S_ISREG(found.st_mode) && found.st_uid == geteuid();
    if (own && flock(fd, LOCK_EX | LOCK_NB) == 0) unlink(path.c_str());
    if (fd >= 0) close(fd);
  }
}

/// Gives a new file the owner, the group and the mode of the one that it replaces, as far as that is possible: only the
/// superuser can keep another's file another's, and some file systems know neither. Who may not read the old file may
/// not read the new one.
void CopyRights(int fd, const struct stat& old) {
  const bool ownerKept = fchown(fd, old.st_uid, old.st_gid) == 0;
  const bool groupKept = ownerKept || fchown(fd, static_cast<uid_t>(-1), old.st_gid) == 0;
  mode_t mode = old.st_mode & (ownerKept ? 07777 : 0777);
  // Members of either group may be among the others of the other one.
  const mode_t both = (mode >> 3) & mode & 07;
  if (!groupKept) mode = (mode & 0700) | (both << 3) | both;
  fchmod(fd, mode);
}

/// What `fsync` or `syncfs` gave. File systems that have no such step leave it out.
bool Synced(int result) { return result == 0 || errno == EINVAL || errno == ENOSYS || errno == ENOTSUP; }

/// Files have got their places in the folder. What its disk has to say about it is no failure of theirs.
void FinishFolder(const std::string& folder, Lasting lasting) {
  ClearLeftovers(folder);
  const int fd = lasting == Lasting::ForGood ? open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC) : -1;
  if (fd < 0) return;
  fsync(fd);
  close(fd);
}

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

OutputFile::OutputFile(const std::string& path, Lasting lasting) : target_(Target(path)), lasting_(lasting) {
  if (const std::string why = WhyNotWritable(path); !why.empty()) {
    throw RuntimeFault(RuntimeFault::PathFileAccessError, why);
  }
  struct stat old {};
  const bool replaces = stat(target_.c_str(), &old) == 0;
  fd_ = CreateBeside(Folder(target_), replaces ? old.st_mode & 0600 : 0666, temporary_);
  if (fd_ < 0) throw NotWritten(RuntimeFault::PathFileAccessError, target_, errno);
  if (replaces) CopyRights(fd_, old);
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
  if (lasting_ == Lasting::ForGood && !Synced(fsync(fd_))) {
    throw NotWritten(RuntimeFault::DeviceIOError, target_, errno);
  }
  TakePlace();
  FinishFolder(Folder(target_), lasting_);
}

void OutputFile::CommitAll(std::list<OutputFile>& files) {
  std::map<dev_t, const OutputFile*> disks;  // one of the files on each
  for (OutputFile& file : files) {
    file.Flush();
    struct stat found {};
    if (file.lasting_ == Lasting::ForGood && fstat(file.fd_, &found) == 0) disks.emplace(found.st_dev, &file);
  }
  for (const auto& [disk, file] : disks) {
    if (!Synced(syncfs(file->fd_))) throw NotWritten(RuntimeFault::DeviceIOError, file->target_, errno);
  }
  std::set<std::pair<std::string, Lasting>> folders;
  for (OutputFile& file : files) {
    file.TakePlace();
    folders.emplace(Folder(file.target_), file.lasting_);
  }
  for (const auto& [folder, lasting] : folders) FinishFolder(folder, lasting);
}

void OutputFile::TakePlace() {
  // The last errors of some file systems come with a close; the lock stays with the other descriptor.
  const int locked = fcntl(fd_, F_DUPFD_CLOEXEC, 0);
  const bool closed = close(std::exchange(fd_, locked)) == 0;
  if (!closed) throw NotWritten(RuntimeFault::DeviceIOError, target_, errno);
  if (rename(temporary_.c_str(), target_.c_str()) != 0) {
    throw NotWritten(RuntimeFault::PathFileAccessError, target_, errno);
  }
  temporary_.clear();
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
