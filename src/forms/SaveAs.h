// A file that the user is asked a place for.
#pragma once

#include <functional>
#include <string>

#include "forms/Controls.h"

namespace vk32 {

/// Asks for a file by the form's dialog, and writes it. `content`: of the file at the path that was chosen, made then;
/// a fault of it refuses the file. Gives the path; empty if none was written: the user has cancelled, or been told why.
std::string SaveAs(FileDialog& dialog, const std::string& title, const std::string& filter,
                   const std::function<std::string(const std::string& path)>& content);

}  // namespace vk32
