// What a program without a window does first and last.
#pragma once

#include <string>
#include <vector>

namespace vk32 {

/// Makes the standard streams carry the program's bytes as they are, and a reader that has ended a failed write. The
/// arguments, in UTF-8, the program's name first.
std::vector<std::string> TakeArguments(int argc, char** argv);

/// The standard error is shown to a user as it comes.
bool ErrorsAreOnTerminal();

/// Sends what the standard output still has; false, with words on the standard error, if not all of it could be
/// written.
bool FinishOutput();

}  // namespace vk32
