// What the status tells of an exchange, and the details of the box of a failed one.
#include "models/WizardUser.h"

namespace vk32 {
namespace {

using namespace std::chrono_literals;

TEST(Exchange, TellsHowFarItIsHowItEndedAndWhatIsKnownOfAFailure) {
  const std::string silent = "COM3 did not answer within 3 s. Is the Configure button pressed?";
  const struct {
    std::string kind;
    sim::Misbehaviour how;
    std::string click;
    int at;              // ms, when the status is looked at
    std::string during;  // the bar's value behind it
    std::string end, details;
  } rows[] = {
      {"RB2000", {}, "UploadCmd", 200, "Reading from COM3: 185 of 460 bytes 185", "Read from COM3 in 0.5 s: 460 bytes", ""},
      {"RB2000", {.silent = true}, "UploadCmd", 200, "Reading from COM3 0", silent, ""},
      {"RB2000", {.junk = true}, "UploadCmd", 1, "Reading from COM3 0",
       "What came is no configuration of the RB2000: 15 FF 00 3F", ""},
      {"RB2000", {.shortBy = 406}, "UploadCmd", 200, "Reading from COM3: 54 of 460 bytes 54",
       "54 of 460 bytes came; what came was taken", ""},
      {"RB2000", {.shortBy = 462}, "UploadCmd", 200, "Reading from COM3 0",
       "2 of 4 bytes came within 3 s after the request of the configuration", ""},
      {"RB2000", {.unplugAfter = 300}, "UploadCmd", 200, "Reading from COM3: 185 of 460 bytes 185",
       "293 of 460 bytes came; what came was taken; has failed: words of 5", ""},
      {"RB2000", {.silent = true}, "NextCmd", 900,
       "Written to COM3: 467 bytes. Waiting for the acknowledgement, 27.4 s at most 467",
       "COM3 did not answer within 27.4 s. Is the Configure button pressed?",
       "COM3: nothing came within 27.4 s after the configuration.\nSent last: 4E 45 45 CA 01"},
      {"RBCard", {.unplugAfter = 20}, "NextCmd", 40, "COM3 has failed: words of 5 0", "COM3 has failed: words of 5",
       "COM3: has failed: words of 5.\nSent last: 4E 45 45 32 00"},
      {"VK-RTX-Modbus", {.late = 200ms}, "UploadCmd", 2000, "Reading from COM3: block 9 of 25, 5 s left 8",
       "Read from COM3 in 6 s: 25 blocks", ""},
      {"VK-RTX-Modbus", {.badChecksum = true}, "UploadCmd", 10, "Reading from COM3: block 1 of 25 0",
       "The reply's checksum is wrong",
       "COM3: the reply's checksum is wrong.\nSent last: A5 CE 06 F5 00 01 00 40 CA\nCame then: 06 01 01 00"},
      {"VK-RTX-Modbus", {.deafBlock = 30}, "UploadCmd", 1000, "Reading from COM3: block 12 of 25 11",
       "Nothing came within 3 s after the request of block 30; 11 of 25 blocks had come", "COM3: nothing came within"},
      {"VK-RTX-Modbus", {.deafBlock = 30}, "NextCmd", 1000, "Writing to COM3: block 12 of 25 11",
       "Nothing came within 3 s after block 30; 11 of 25 blocks had gone", "COM3: nothing came within"},
      {"VK-RTX-Modbus", {.shortBy = 60}, "UploadCmd", 1000, "Reading from COM3: block 1 of 25 0",
       "6 of 66 bytes came within 3 s after the request of block 1", "COM3: 6 of 66 bytes came"},
      // The image behind them is read all the same.
      {"VK5300", {.deafBlock = 3}, "UploadCmd", 3200, "Restarting the device on COM3 0", silent,
       "COM3: nothing came within 3 s after the request of block 3.\nSent last: A5 CE 06 F5 00 03 00 40 C8\n"},
      {"VK5300", {}, "DeviceInfoCmd", 100, "Reading from COM3", "Read from COM3 in 0.2 s: 75 bytes", ""},
      {"VK5300", {.infoPieces = 1}, "DeviceInfoCmd", 100, "Reading from COM3", "The device information came in part",
       "COM3: the device information came in part.\nSent last: DD\n"},
      {"RB3000", {}, "Open", 100, "COM3 can't be opened: words of 13 0", "COM3 can't be opened: words of 13", ""},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.kind + row.click + row.end);
    GatewayDevice device(row.kind, row.how, true);
    WizardUser user(row.kind, &device);
    const std::string form = row.click == "DeviceInfoCmd" ? "ProductMenu" : user.form;
    if (row.click == "NextCmd") user.Use((row.kind == "VK-RTX-Modbus" ? Dhcp : "") + "to ApplyFrame");
    if (row.click == "Open") user.driver.Fail("Open", 13);
    std::string during;
    user.loop.StartTimer(row.at * 1ms, [&] {
      during = user.Get(form + ".StatusLbl.Caption");
      if (form == user.form) during += " " + user.Get(form + ".StatusBar.Value");
      EXPECT_TRUE(user.app.forms.Find(form)->Busy);
    });
    user.Do("click " + form + "." + (row.click == "Open" ? "UploadCmd" : row.click));
    EXPECT_EQ(during, row.during);
    EXPECT_EQ(user.Get(form + ".StatusLbl.Caption"), row.end);
    EXPECT_EQ(user.details.substr(0, row.details.empty() ? std::string::npos : row.details.size()), row.details);
    EXPECT_EQ(user.Get(form + ".StatusMark.Shown"), row.end.starts_with("Read ") ? "False" : "True");
    EXPECT_FALSE(user.app.forms.Find(form)->Busy);
  }
}

}  // namespace
}  // namespace vk32
