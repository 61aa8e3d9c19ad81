// What can be seen on an X display, for the measurements of the desktop program.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

struct xcb_connection_t;

namespace vk32::bench {

class Display {
 public:
  /// The display of the environment; std::runtime_error if it can't be reached.
  Display();

  /// The pixels of a few lines across the screen: a window that is painted changes them, one that is only there does
  /// not.
  std::string Sample() const;
  /// The title of the window that has the keys; empty if none has.
  std::string ActiveTitle() const;

 private:
  /// As its bytes; empty if the window is gone or has no such property.
  std::string Property(std::uint32_t window, std::string_view name) const;

  std::shared_ptr<xcb_connection_t> connection_;
  std::uint32_t root_ = 0;
  std::uint16_t width_ = 0, height_ = 0;
};

}  // namespace vk32::bench
