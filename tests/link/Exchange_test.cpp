// What the status tells of an exchange, and the details of the box of a failed one.
#include "models/WizardUser.h"

namespace vk32 {
namespace {

using namespace std::chrono_literals;

// Kind; what is clicked; when the status is looked at, in ms; what it tells then, with the value of the wizard's bar;
// what it tells in the end; how the details begin.
TEST(Exchange, TellsHowFarItIsHowItEndedAndWhatIsKnownOfAFailure) {
  const std::pair<sim::Misbehaviour, std::string> rows[] = {
      {{}, "RB2000|UploadCmd|200|Reading from COM3: 185 of 460 bytes 185|Read from COM3 in 0.5 s: 460 bytes"},
      {{.silent = true},
       "RB2000|UploadCmd|200|Reading from COM3 0|COM3 did not answer within 3 s. Is the Configure button pressed?"},
      {{.junk = true},
       "RB2000|UploadCmd|1|Reading from COM3 0|What came is no configuration of the RB2000: 15 FF 00 3F"},
      {{.shortBy = 406}, "RB2000|UploadCmd|200|Reading from COM3: 54 of 460 bytes 54|54 of 460 bytes came"},
      {{.shortBy = 462},
       "RB2000|UploadCmd|200|Reading from COM3 0|2 of 4 bytes came within 3 s after the request of the "
       "configuration"},
      {{.unplugAfter = 300},
       "RB2000|UploadCmd|200|Reading from COM3: 185 of 460 bytes 185|293 of 460 bytes came. COM3 "
       "has failed: words of 5"},
      {{.silent = true},
       "RB2000|NextCmd|900|Written to COM3: 467 bytes. Waiting for the acknowledgement, 27.4 s at most 467|COM3 did "
       "not answer within 27.4 s. Is the Configure button pressed?|COM3: nothing came within 27.4 s after the "
       "configuration.\nSent last: 4E 45 45 CA 01"},
      {{}, "RB3000|Open|100|COM3 can't be opened: words of 13 0|COM3 can't be opened: words of 13"},
      {{},
       "RB3000|Write|100|COM3 has failed: words of 13  COMM Error Flags = 0 0|COM3 has failed: words of 13  COMM Error "
       "Flags = 0"},
      {{.unplugAfter = 20},
       "RBCard|NextCmd|5|Written to COM3: 59 bytes. Waiting for the acknowledgement, 7 s at most 59|"
       "COM3 has failed: words of 5|COM3: has failed: words of 5.\nSent last: 4E 45 45 32 00"},
      {{.late = 200ms},
       "VK-RTX-Modbus|UploadCmd|2000|Reading from COM3: block 9 of 25, 5 s left 8|Read from COM3 in 6 s: 25 blocks"},
      {{.badChecksum = true},
       "VK-RTX-Modbus|UploadCmd|10|Reading from COM3: block 1 of 25 0|The reply's checksum is wrong|COM3: the reply's "
       "checksum is wrong.\nSent last: A5 CE 06 F5 00 01 00 40 CA\nCame then: 06 01 01 00"},
      {{.deafBlock = 30},
       "VK-RTX-Modbus|UploadCmd|1000|Reading from COM3: block 12 of 25 11|Nothing came within 3 s after the request of "
       "block 30; 11 of 25 blocks had come|COM3: nothing came within"},
      {{.deafBlock = 30},
       "VK-RTX-Modbus|NextCmd|1000|Writing to COM3: block 12 of 25 11|Nothing came within 3 s after block 30; 11 of 25 "
       "blocks had gone|COM3: nothing came within"},
      {{.shortBy = 60},
       "VK-RTX-Modbus|UploadCmd|1000|Reading from COM3: block 1 of 25 0|6 of 66 bytes came within 3 s after the "
       "request of block 1|COM3: 6 of 66 bytes came"},
      {{.deafBlock = 3},
       "VK5300|UploadCmd|3200|Restarting the device on COM3 0|COM3 did not answer within 3 s. Is the Configure button "
       "pressed?|COM3: nothing came within 3 s after the request of block 3.\nSent last: A5 CE 06 F5 00 03 00 40 C8\n"},
      {{}, "VK5300|DeviceInfoCmd|100|Reading from COM3|Read from COM3 in 0.2 s: 75 bytes"},
      {{.infoPieces = 1},
       "VK5300|DeviceInfoCmd|100|Reading from COM3|The device information came in part|COM3: the device information "
       "came in part.\nSent last: DD\n"}};
  for (const auto& [how, told] : rows) {
    SCOPED_TRACE(told);
    auto texts = Split(told, '|');
    texts.resize(6);
    const std::string &kind = texts[0], &click = texts[1], &details = texts[5];
    GatewayDevice device(kind, how, true);
    WizardUser user(kind, &device);
    if (click == "NextCmd") user.Use((kind == "VK-RTX-Modbus" ? Dhcp : "") + "to ApplyFrame");
    const bool fails = click == "Open" || click == "Write";
    if (fails) user.driver.Fail(click, 13);
    const std::string form = click == "DeviceInfoCmd" ? "ProductMenu" : user.form;
    std::string during;
    user.loop.StartTimer(std::stoi(texts[2]) * 1ms, [&] {
      during = user.Get(form + ".StatusLbl.Caption");
      if (form == user.form) during += " " + user.Get(form + ".StatusBar.Value");
      EXPECT_TRUE(user.app.forms.Find(form)->Busy);
      EXPECT_EQ(user.app.forms.Find("DownloadingMsg") != nullptr, kind == "RB2000" && click == "NextCmd");
    });
    user.Do("click " + form + "." + (fails ? "UploadCmd" : click));
    EXPECT_EQ(during, texts[3]);
    EXPECT_EQ(user.Get(form + ".StatusLbl.Caption"), texts[4]);
    EXPECT_EQ(user.details.substr(0, details.empty() ? std::string::npos : details.size()), details);
    EXPECT_EQ(user.Get(form + ".StatusMark.Shown"), texts[4].starts_with("Read ") ? "False" : "True");
    EXPECT_FALSE(user.app.forms.Find(form)->Busy);
  }
}

}  // namespace
}  // namespace vk32
