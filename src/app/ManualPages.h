// Which page of the manual belongs to which form.
#pragma once

#include <string_view>

namespace vk32 {

/// The page about the boxes of the program.
constexpr std::string_view MessagesPage = "messages";

/// The name of the page's file, without its ending: "configure". Empty for a form that has none.
std::string_view ManualPage(std::string_view form);

}  // namespace vk32
