// What the program is, and where its maker can be reached.
#pragma once

#include "shell/ShellFrame.h"

namespace vk32 {

class About : public Form {
 public:
  static constexpr const char* FormName = "About";

  explicit About(App& app);

 private:
  void Form_Load() override;
  void CloseCmd_Click();
  void SupportCmd_Click();
  void WebsiteLbl_Click();
  void WebsiteLbl_MouseDown();
  void WebsiteLbl_MouseUp();

  App& app_;

  // clang-format off
  ShellFrame  shell {*this};
  Label       WebsiteLbl     {*this, "WebsiteLbl",     {4440,  720, 2850, 315}, "www.norvanta.example", TextRole::Link,
                              &About::WebsiteLbl_Click, {&About::WebsiteLbl_MouseDown, &About::WebsiteLbl_MouseUp, {}}};
  Label       VersionLbl     {*this, "VersionLbl",     {4440,  375, 2850, 315}, "", TextRole::BandText};
  Label       TitleLbl       {*this, "TitleLbl",       { 240, 1680, 7050, 480}, "VK32 Configuration Software", TextRole::Product};
  Label       DescriptionLbl {*this, "DescriptionLbl", { 240, 2280, 7050, 315}, "Description", TextRole::Heading};
  Label       DescriptionTxt {*this, "DescriptionTxt", { 240, 2595, 7050, 540},
                              "This software is used to configure the online operating parameters of Norvanta's gateway devices."};
  Label       ContactLbl     {*this, "ContactLbl",     { 240, 3360, 7050, 315}, "Contact Information", TextRole::Heading};
  Label       Ave1           {*this, "Ave1",           { 240, 3675, 3360, 315}, "Norvanta"};
  Label       Ave2           {*this, "Ave2",           { 240, 3990, 3360, 315}, "1 Example Avenue"};
  Label       Ave3           {*this, "Ave3",           { 240, 4305, 3360, 315}, "Exampletown, EX 00000"};
  Label       Tel            {*this, "Tel",            {3960, 3675, 3330, 315}, "Telephone:  555-0100"};
  Label       Toll           {*this, "Toll",           {3960, 3990, 3330, 315}, "Toll Free:  555-0101"};
  Label       Fax            {*this, "Fax",            {3960, 4305, 3330, 315}, "Fax:  555-0102"};
  Label       Email          {*this, "Email",          {3960, 4620, 3330, 315}, "E-mail:  info@norvanta.example"};
  Label       SupportLbl     {*this, "SupportLbl",     { 240, 5115, 7050, 480},
                              "When something goes wrong, a support file tells the maker what program and device said last, "
                              "and how the configuration stands.", TextRole::Small};
  CommandButton SupportCmd   {*this, "SupportCmd",     { 240, 5955, 2640, 390}, "Save Support File...", &About::SupportCmd_Click};
  FileDialog  SupportDialog  {*this, "SupportDialog"};
  ImageButton CloseCmd       {*this, "CloseCmd",       {5865, 5925, 1425, 450}, &About::CloseCmd_Click, WindowKey::Escape};
  // clang-format on
};

}  // namespace vk32
