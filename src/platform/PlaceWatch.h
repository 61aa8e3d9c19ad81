// Tells when files come and go, so that nobody has to look again and again.
#pragma once

#include <memory>
#include <string>
#include <vector>

namespace vk32 {

class PlaceWatch {
 public:
  PlaceWatch();
  ~PlaceWatch();
  PlaceWatch(const PlaceWatch&) = delete;
  PlaceWatch& operator=(const PlaceWatch&) = delete;

  /// Watches these places and no others (on Windows the list of its serial ports): whatever comes and goes in
  /// `folders`, what stands at `paths` and where links at them lead, and who opens and closes `device` (empty: nobody).
  /// Of what isn't there yet its coming is watched, if the folder above it is there. What has come or gone is for the
  /// next call.
  void Watch(const std::vector<std::string>& folders, const std::vector<std::string>& paths, const std::string& device);
  /// Readable once something has happened; -1: the system has none to give.
  int Handle() const;
  /// Takes what has happened since the last call. False if nothing has.
  bool TakeChange();

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace vk32
