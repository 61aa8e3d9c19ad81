// The application shell: start-up, product selection, product menu.
#pragma once

namespace vk32 {

struct App;

/// Makes the forms of the shell known.
void RegisterShell(App& app);

}  // namespace vk32
