// What can be seen on an X display.
#include "Display.h"

#include <xcb/xcb.h>

#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <vector>

namespace vk32::bench {
namespace {

constexpr int LineDistance = 96;  // pixels: any window that deserves the name crosses a line

}  // namespace

Display::Display() {
  int number = 0;
  connection_ = {xcb_connect(nullptr, &number), xcb_disconnect};
  if (xcb_connection_has_error(connection_.get()) != 0) throw std::runtime_error("the display can't be reached");
  auto screen = xcb_setup_roots_iterator(xcb_get_setup(connection_.get()));
  while (number-- > 0) xcb_screen_next(&screen);
  root_ = screen.data->root;
  width_ = screen.data->width_in_pixels;
  height_ = screen.data->height_in_pixels;
}

std::string Display::Sample() const {
  std::vector<xcb_get_image_cookie_t> lines;
  for (int y = LineDistance / 2; y < height_; y += LineDistance) {
    lines.push_back(xcb_get_image(connection_.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, root_, 0, static_cast<std::int16_t>(y),
                                  width_, 1, ~0u));
  }
  std::string pixels;
  for (const auto& line : lines) {
    const std::unique_ptr<xcb_get_image_reply_t, decltype(&free)> reply(
        xcb_get_image_reply(connection_.get(), line, nullptr), free);
    if (!reply) throw std::runtime_error("the display can't be read");
    pixels.append(reinterpret_cast<const char*>(xcb_get_image_data(reply.get())),
                  static_cast<std::size_t>(xcb_get_image_data_length(reply.get())));
  }
  return pixels;
}

std::string Display::Property(std::uint32_t window, std::string_view name) const {
  constexpr std::uint32_t Longest = 64;  // units of 4 bytes
  xcb_connection_t* const x = connection_.get();
  const auto named = xcb_intern_atom(x, 1, static_cast<std::uint16_t>(name.size()), name.data());
  const std::unique_ptr<xcb_intern_atom_reply_t, decltype(&free)> atom(xcb_intern_atom_reply(x, named, nullptr), free);
  if (!atom) throw std::runtime_error("the display can't be read");
  const auto asked = xcb_get_property(x, 0, window, atom->atom, XCB_GET_PROPERTY_TYPE_ANY, 0, Longest);
  const std::unique_ptr<xcb_get_property_reply_t, decltype(&free)> reply(xcb_get_property_reply(x, asked, nullptr),
                                                                         free);
  if (!reply) return {};
  return {static_cast<const char*>(xcb_get_property_value(reply.get())),
          static_cast<std::size_t>(xcb_get_property_value_length(reply.get()))};
}

std::string Display::ActiveTitle() const {
  const std::string active = Property(root_, "_NET_ACTIVE_WINDOW");
  std::uint32_t window = 0;
  if (active.size() != sizeof window) return {};
  std::memcpy(&window, active.data(), sizeof window);
  return Property(window, "_NET_WM_NAME");
}

}  // namespace vk32::bench
