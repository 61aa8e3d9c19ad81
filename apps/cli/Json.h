// Results as JSON documents.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

namespace vk32 {

using Json = nlohmann::ordered_json;

/// In ASCII, as it can be for a terminal, on which a device's bytes must command nothing.
inline std::string Printed(const Json& document) {
  return document.dump(2, ' ', true, Json::error_handler_t::replace) + "\n";
}

}  // namespace vk32
