// What opens a file by the program that the user's desktop has for it.
#pragma once

#include <QString>
#include <functional>

namespace vk32 {

/// Returns at once. False if nothing opens it; if that shows only later, `failed` is run by the loop.
bool OpenFile(const QString& path, const std::function<void()>& failed);

}  // namespace vk32
