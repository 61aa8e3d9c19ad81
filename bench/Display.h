// What can be seen on an X display, for the measurements of the desktop program.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

struct xcb_connection_t;

namespace vk32::bench {

class Display {
 public:
  /// The display of the environment; std::runtime_error if it can't be reached.
  Display();

  /// The pixels of a few lines across the screen: a window that is painted changes them, one that is only there does
  /// not.
  std::string Sample() const;

 private:
  std::shared_ptr<xcb_connection_t> connection_;
  std::uint32_t root_ = 0;
  std::uint16_t width_ = 0, height_ = 0;
};

}  // namespace vk32::bench
