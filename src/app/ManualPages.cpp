// Which page of the manual belongs to which form.
#include "app/ManualPages.h"

namespace vk32 {

std::string_view ManualPage(std::string_view form) {
  constexpr struct {
    std::string_view form, page;
  } pages[] = {
      {"Splash", "first-steps"},
      {"MainMenu", "first-steps"},
      {"ProductMenu", "ports"},
      {"About", "support"},
      {"Configuration_RB2000", "configure"},
      {"Configuration_RB3000", "configure"},
      {"DDTAExplanationFrm", "configure"},
      {"Configuration_VK5300", "configure"},
      {"Configuration_RBCard", "configure"},
      {"Configuration_VKRTX", "configure"},
      {"Route", "configure"},
      {"DelRoute", "configure"},
      {"ABModMapping", "configure"},
      {"Compare", "compare"},
      {"DeviceInfo", "information"},
      {"Firmware", "firmware"},
      {"DownloadingMsg", "firmware"},
      {"OfflineMngr", "recovery"},
  };
  for (const auto& row : pages) {
    if (row.form == form) return row.page;
  }
  return {};
}

}  // namespace vk32
