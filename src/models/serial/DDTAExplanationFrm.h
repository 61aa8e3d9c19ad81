// The page that explains the three decodings of a destination data table address.
#pragma once

#include "app/App.h"
#include "forms/ControlArray.h"

namespace vk32 {

class DDTAExplanationFrm : public Form {
 public:
  static constexpr const char* FormName = "DDTAExplanationFrm";

  explicit DDTAExplanationFrm(App& app);

 private:
  static constexpr int Elements = 33;
  static constexpr int LinkElement = 2;  // "Click Here ..."

  static std::unique_ptr<Label> MakeElement(DDTAExplanationFrm& form, ControlName name, int index);

  void Form_MouseMove() override;
  void DDTAExpLbl_Click(int index);
  void DDTAExpLbl_MouseMove(int index);
  void CloseCmd_Click() { UnloadMe(); }

  App& app_;

 public:
  // clang-format off
  Label               DDTAExpTitleLbl {*this, "DDTAExpTitleLbl", {360, 240, 12120, 480}, "Destination Data Table Address Decoding Explanation", TextRole::Title};
  ControlArray<Label> DDTAExpLbl      {"DDTAExpLbl", 0, Elements - 1, [this](ControlName name, int index) { return MakeElement(*this, name, index); }};
  Frame               FootLineFrame   {*this, "FootLineFrame",   {    0, 9360, 12840,  15}, Fill::Hairline};
  ImageButton         CloseCmd        {*this, "CloseCmd",        {11055, 9585,  1425, 450}, &DDTAExplanationFrm::CloseCmd_Click, WindowKey::Escape};
  // clang-format on
};

}  // namespace vk32
