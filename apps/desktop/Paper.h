// Reports on paper.
#pragma once

#include <string>

namespace vk32 {

/// A PDF of an HTML text in UTF-8, on the paper that is usual where the user is: A4 or Letter.
std::string PdfOf(const std::string& html);

}  // namespace vk32
