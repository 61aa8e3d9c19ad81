// Files on the disk, by system calls: only these tell a full disk from a file in its place.
#include "platform/Files.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <filesystem>
#include <map>
#include <utility>

#include "platform/Fault.h"
#include "platform/FileParts.h"
#include "platform/SystemName.h"

namespace vk32 {
namespace {

namespace fs = std::filesystem;

bool Allowed(const std::string& path, int access) { return faccessat(AT_FDCWD, path.c_str(), access, AT_EACCESS) == 0; }

/// Creates a file of a name that is not taken, and locks it for as long as it is open; -1: error. `mode`: less umask.
int CreateBeside(const std::string& folder, mode_t mode, std::string& path) {
  for (int attempt = 0; attempt < 100; ++attempt) {
    path = TemporaryName(folder);
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

}  // namespace

std::string RealPlace(const std::string& path) {
  fs::path target = path;
  for (int links = 0; links < 40; ++links) {
    std::error_code fault;
    const fs::path next = fs::read_symlink(target, fault);
    if (fault) return target;
    target = target.parent_path() / next;
  }
  return "";
}

void StoreFolder(const std::string& folder) {
  const int fd = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (fd < 0) return;
  fsync(fd);
  close(fd);
}

void RemoveLeftover(const std::string& path) {
  const int fd = open(path.c_str(), O_WRONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
  struct stat found {};
  const bool own = fd >= 0 && fstat(fd, &found) == 0 && S_ISREG(found.st_mode) && found.st_uid == geteuid();
  // A file whose save goes on is locked.
  if (own && flock(fd, LOCK_EX | LOCK_NB) == 0) unlink(path.c_str());
  if (fd >= 0) close(fd);
}

std::string WhyNotNamed(const std::string& name) {
  return name.size() > NAME_MAX ? WordsFor(Obstacle::NameTooLong, name) : "";
}

std::string WhyNotInFolder(const std::string& folder) {
  struct stat found {};
  if (stat(folder.c_str(), &found) != 0) {
    return errno == ENOENT ? WordsFor(Obstacle::NoFolder, folder) : NotReached(folder, errno);
  }
  if (!S_ISDIR(found.st_mode)) return WordsFor(Obstacle::IsNoFolder, folder);
  if (!Allowed(folder, W_OK | X_OK)) {
    return WordsFor(errno == EROFS ? Obstacle::DiskReadOnly : Obstacle::FolderForbidden, folder);
  }
  struct statvfs disk {};
  const bool full =
      statvfs(folder.c_str(), &disk) == 0 && disk.f_blocks > 0 && disk.f_bavail * disk.f_frsize < SmallFile;
  return full ? WordsFor(Obstacle::DiskFull, folder) : "";
}

std::string WhyNotReplaced(const std::string& target) {
  struct stat found {};
  if (lstat(target.c_str(), &found) != 0) return "";
  if (S_ISDIR(found.st_mode)) return WordsFor(Obstacle::IsFolder, target);
  if (!S_ISREG(found.st_mode)) return WordsFor(Obstacle::IsDevice, target);
  if (!Allowed(target, W_OK)) return WordsFor(Obstacle::FileReadOnly, target);
  // In a folder like /tmp, only its owner may replace a file, whoever may write to it.
  struct stat folder {};
  const uid_t user = geteuid();
  const bool sticky = stat(FolderOf(target).c_str(), &folder) == 0 && (folder.st_mode & S_ISVTX) != 0;
  if (sticky && user != 0 && user != found.st_uid && user != folder.st_uid) {
    return "The file \"" + target + "\" belongs to another user: choose another name.";
  }
  return "";
}

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

std::size_t InputFile::ReadSome() {
  ssize_t taken = 0;
  do {
    taken = read(fd_, buffer_.data(), buffer_.size());
  } while (taken < 0 && errno == EINTR);
  if (taken < 0) throw RuntimeFault(RuntimeFault::DeviceIOError);
  return static_cast<std::size_t>(taken);
}

void OutputFile::Create() {
  struct stat old {};
  const bool replaces = stat(target_.c_str(), &old) == 0;
  fd_ = CreateBeside(FolderOf(target_), replaces ? old.st_mode & 0600 : 0666, temporary_);
  if (fd_ < 0) throw NotWritten(RuntimeFault::PathFileAccessError, target_, errno);
  if (replaces) CopyRights(fd_, old);
}

OutputFile::~OutputFile() {
  if (fd_ >= 0) close(fd_);
  if (!temporary_.empty()) unlink(temporary_.c_str());
}

std::size_t OutputFile::WriteSome(std::string_view bytes) {
  ssize_t taken = 0;
  do {
    taken = write(fd_, bytes.data(), bytes.size());
  } while (taken < 0 && errno == EINTR);
  if (taken < 0) throw NotWritten(RuntimeFault::DeviceIOError, target_, errno);
  return static_cast<std::size_t>(taken);
}

void OutputFile::StoreBytes() {
  if (!Synced(fsync(fd_))) throw NotWritten(RuntimeFault::DeviceIOError, target_, errno);
}

void OutputFile::StoreBytesOfAll(const std::list<OutputFile*>& files) {
  std::map<dev_t, const OutputFile*> disks;  // one of the files on each
  for (const OutputFile* file : files) {
    struct stat found {};
    if (fstat(file->fd_, &found) == 0) disks.emplace(found.st_dev, file);
  }
  for (const auto& [disk, file] : disks) {
    if (!Synced(syncfs(file->fd_))) throw NotWritten(RuntimeFault::DeviceIOError, file->target_, errno);
  }
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

}  // namespace vk32
