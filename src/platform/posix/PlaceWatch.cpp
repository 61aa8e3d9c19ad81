// The watch by inotify: it opens none of the files.
#include "platform/PlaceWatch.h"

#include <sys/inotify.h>
#include <unistd.h>

#include <cstddef>
#include <cstring>
#include <filesystem>
#include <map>
#include <set>
#include <utility>

namespace vk32 {
namespace {

namespace fs = std::filesystem;

constexpr std::uint32_t InFolder =
    IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO | IN_DELETE_SELF | IN_MOVE_SELF | IN_ONLYDIR;
constexpr std::uint32_t OfFile = IN_DELETE_SELF | IN_MOVE_SELF | IN_ATTRIB;  // one of its names has gone
constexpr std::uint32_t OfDevice = OfFile | IN_OPEN | IN_CLOSE;

}  // namespace

struct PlaceWatch::State {
  using Names = std::set<std::string>;  // that count in a folder; an empty one: all

  int fd = inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
  std::map<int, Names> watched;  // by the system's number of the watch
};

PlaceWatch::PlaceWatch() : state_(std::make_unique<State>()) {}

PlaceWatch::~PlaceWatch() {
  if (state_->fd >= 0) close(state_->fd);
}

int PlaceWatch::Handle() const { return state_->fd; }

void PlaceWatch::Watch(const std::vector<std::string>& folders, const std::vector<std::string>& paths,
                       const std::string& device) {
  const auto before = std::exchange(state_->watched, {});
  const auto add = [this](const std::string& path, std::uint32_t events, const std::string& name) {
    const int watch = path.empty() ? -1 : inotify_add_watch(state_->fd, path.c_str(), events);
    if (watch >= 0) state_->watched[watch].insert(name);
    return watch >= 0;
  };
  const auto await = [&add](const fs::path& path) { add(path.parent_path(), InFolder, path.filename()); };
  for (const std::string& folder : folders) {
    if (!add(folder, InFolder, "")) await(folder);
  }
  // The folder of what is there is left alone: beside a pseudo-terminal others come and go all the time.
  for (const fs::path path : paths) {
    if (add(path, OfFile, "")) continue;
    await(path);
    std::error_code fault;
    if (const fs::path target = fs::read_symlink(path, fault); !fault) await(path.parent_path() / target);
  }
  add(device, OfDevice, "");
  for (const auto& [watch, names] : before) {
    if (!state_->watched.contains(watch)) inotify_rm_watch(state_->fd, watch);
  }
}

bool PlaceWatch::TakeChange() {
  alignas(inotify_event) char buffer[4096];
  bool changed = false;
  for (ssize_t length = 0; (length = read(state_->fd, buffer, sizeof buffer)) > 0;) {
    for (ssize_t at = 0; at < length;) {
      inotify_event event{};
      std::memcpy(&event, buffer + at, sizeof event);
      const char* name = event.len > 0 ? buffer + at + offsetof(inotify_event, name) : "";
      const auto watch = state_->watched.find(event.wd);
      const bool overflow = (event.mask & IN_Q_OVERFLOW) != 0;
      const bool counts =
          watch != state_->watched.end() && (watch->second.contains("") || watch->second.contains(name));
      changed = changed || overflow || (counts && (event.mask & IN_IGNORED) == 0);
      at += static_cast<ssize_t>(sizeof event) + event.len;
    }
  }
  return changed;
}

}  // namespace vk32
