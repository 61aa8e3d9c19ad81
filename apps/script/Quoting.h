// Texts as the text front end prints and reads them.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vk32 {

/// In double quotes; bytes outside 32 to 126 as \r, \n, \t or \xHH.
std::string Quote(std::string_view bytes);
/// The rest of a command's line: as it stands, or, if it begins with a double quote, with its escapes undone. Nothing
/// if a quoted text is malformed.
std::optional<std::string> Unquote(std::string_view text);

}  // namespace vk32
