// The search of /proc for the program that holds a device.
#include "platform/PortHolder.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/sysmacros.h>
#include <unistd.h>

#include <charconv>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <memory>
#include <sstream>
#include <string_view>
#include <vector>

#include "platform/posix/PortOpeners.h"

namespace vk32 {
namespace {

/// Nothing if there is no such process.
std::optional<Holder> Process(const std::string& pid) {
  std::ifstream file("/proc/" + pid + "/comm");
  std::string name;
  int number = 0;
  std::from_chars(pid.data(), pid.data() + pid.size(), number);
  return std::getline(file, name) ? std::optional<Holder>({name, number, number == getpid()}) : std::nullopt;
}

/// Calls `each` with the folder's descriptor and every name in it that is a number, until it gives false.
template <class Each>
void ForEachNumber(const std::string& folder, Each each) {
  const std::unique_ptr<DIR, int (*)(DIR*)> entries(opendir(folder.c_str()), closedir);
  if (!entries) return;
  while (const dirent* entry = readdir(entries.get())) {
    const char first = entry->d_name[0];
    if (first >= '0' && first <= '9' && !each(dirfd(entries.get()), entry->d_name)) return;
  }
}

bool IsOpenOf(const struct statx& file, const struct stat& device) {
  if (!S_ISCHR(file.stx_mode) || makedev(file.stx_rdev_major, file.stx_rdev_minor) != device.st_rdev) return false;
  // Each container counts its pseudo-terminals from 0; any other device has its number once, under whatever path.
  return !IsPseudoTerminal(device) ||
         (makedev(file.stx_dev_major, file.stx_dev_minor) == device.st_dev && file.stx_ino == device.st_ino);
}

/// True if a master that a process has open leads the pseudo-terminal.
bool Leads(const std::string& pid, const std::string& master, const struct stat& device) {
  std::ifstream file("/proc/" + pid + "/fdinfo/" + master);
  for (std::string key; file >> key;) {
    unsigned index = 0;
    if (key == "tty-index:") return file >> index && index == minor(device.st_rdev);
  }
  return false;
}

bool HasOpen(const std::string& pid, const struct stat& device) {
  bool open = false;
  std::vector<std::string> masters;
  ForEachNumber("/proc/" + pid + "/fd", [&](int folder, const char* number) {
    struct statx file {};
    // What the system knows already is enough; a server that does not answer must not stop the search.
    if (statx(folder, number, AT_STATX_DONT_SYNC, STATX_TYPE | STATX_INO, &file) != 0) return true;
    open = open || IsOpenOf(file, device);
    if (S_ISCHR(file.stx_mode) && file.stx_rdev_major == 5 && file.stx_rdev_minor == 2) masters.emplace_back(number);
    return true;
  });
  if (!open) return false;
  for (const std::string& master : masters) {
    if (Leads(pid, master, device)) return false;
  }
  return true;
}

std::optional<Holder> LockHolder(const struct stat& device) {
  char wanted[64];
  std::snprintf(wanted, sizeof wanted, "%02x:%02x:%lu", major(device.st_dev), minor(device.st_dev),
                static_cast<unsigned long>(device.st_ino));
  std::ifstream locks("/proc/locks");
  for (std::string line; std::getline(locks, line);) {
    std::istringstream fields(line);
    std::string number, kind, mode, access, pid, place;
    if (fields >> number >> kind >> mode >> access >> pid >> place && kind == "FLOCK" && place == wanted) {
      return Process(pid);
    }
  }
  return std::nullopt;
}

}  // namespace

bool IsPseudoTerminal(const struct stat& device) {
  return S_ISCHR(device.st_mode) && major(device.st_rdev) >= 136 && major(device.st_rdev) <= 143;
}

std::optional<Holder> OtherOpener(const struct stat& device) {
  const std::string own = std::to_string(getpid());
  std::optional<Holder> opener;
  ForEachNumber("/proc", [&](int, const char* number) {
    const std::string pid = number;
    if (pid != own && HasOpen(pid, device)) opener = Process(pid);
    return !opener;
  });
  return opener;
}

std::optional<Holder> HolderOf(const std::string& path) {
  struct stat device {};
  if (stat(path.c_str(), &device) != 0) return std::nullopt;
  const auto holder = LockHolder(device);
  return holder ? holder : OtherOpener(device);
}

bool TellsHolders() { return true; }

}  // namespace vk32
