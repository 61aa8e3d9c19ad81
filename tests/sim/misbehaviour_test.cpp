// Each misbehaviour of a gateway as the user of the program sees it, and how long it takes him.
#include <gtest/gtest.h>

#include "link/BuildFrame.h"
#include "link/Frames.h"
#include "support/Harness.h"

namespace vk32 {
namespace {

using namespace std::chrono_literals;

const Time ByteTime = sim::SimulatedLine::ByteTime(9600);
const std::string TimeOutBox =
    "box critical \"Error!\" \"A timeout or error has occured while communicating to the RB2000\" -> OK\n";
const std::string SuccessBox =
    "box information \"Success!\" \"Configuration has been downloaded to the RB2000\" -> OK\n";

/// A new device's image, with the last slot in use.
Bytes FullImage() {
  Bytes image = sim::FindGatewayKind("RB2000")->factoryImage;
  image.replace(438, 10, FromHex("01 00 05 00 09 00 01 00 01 00"));
  return image;
}

/// The wizard with a gateway of that image on its port.
struct Wizard : Harness {
  explicit Wizard(sim::Misbehaviour how, bool pace = false) : device("RB2000", how, pace) {
    Globals globals;
    globals.ConfigImage = FullImage();
    device.gateway.Receive(BuildFrame(globals, "RB2000", ImageFrame::Code), 0ms);
    while (device.gateway.NextPiece()) {
    }
    GoTo("RB2000Cmd", &device);
    Do("click ProductMenu.ConfigureCmd");
    Elapsed();
  }

  /// What a click shows behind the reminder to press the Configure button.
  std::string Transfer(const std::string& button) {
    const int sleeps = loop.Sleeps();
    const std::string printed = Do("click Configuration_RB2000." + button);
    EXPECT_LT(loop.Sleeps() - sleeps, 1000) << "the wait spins";
    EXPECT_EQ(printed.substr(0, 64), "box critical \"VK32\" \"Press the Configure button on the RB2000 be");
    EXPECT_EQ(driver.calls.back(), "Close");
    return printed.substr(printed.find('\n') + 1);
  }
  std::string Upload() { return Transfer("UploadCmd"); }
  std::string Download() {
    while (app.globals.CurrentPage < 4 && Do("click Configuration_RB2000.NextCmd").empty()) {
    }
    return Transfer("NextCmd");
  }
  /// A value near the begin of the image, one in the second slot, and one in the last.
  std::string Shown() {
    return Get("Configuration_RB2000.ChaSpeedLst.Text") + " " + Get("Configuration_RB2000.ModStartTxt(1).Text") + " " +
           Get("Configuration_RB2000.ModEndTxt(39).Text");
  }

  GatewayDevice device;
};

constexpr bool Paced = true;

TEST(Misbehaviour, OfAnUpload) {
  const std::string defaults = "9600  ", all = "19200 40101 5", allButTheLastSlot = "19200 40101 ";
  const struct {
    const char* name;
    sim::Misbehaviour how;
    Time span;
    std::string shown;
    bool pace = false;
  } rows[] = {
      {"none", {}, 0ms, all},
      {"none, at the true rate", {}, 467 * ByteTime, all, Paced},
      {"silent", {.silent = true}, 3000ms, defaults},
      {"late, but in time", {.late = 2999ms}, 2999ms, all},
      {"late", {.late = 3001ms}, 3000ms, defaults},
      {"junk", {.junk = true}, 0ms, defaults},
      {"bad checksum", {.badChecksum = true}, 0ms, all},
      {"hold", {.hold = 500ms}, 0ms, defaults},
      // What is missing costs three seconds for each read: of the start, of the header, of the image.
      {"short by a byte", {.shortBy = 1}, 3000ms, all},
      {"short by the checksum", {.shortBy = 2}, 3000ms, all},
      {"short by the last slot", {.shortBy = 10}, 3000ms, allButTheLastSlot},
      {"short by the image", {.shortBy = 450}, 3000ms, defaults},
      {"short by image and header", {.shortBy = 460}, 6000ms, defaults},
      {"short within the length", {.shortBy = 461}, 3000ms, defaults},
      {"unplugged before the request", {.unplugAfter = 0}, 3000ms, defaults, Paced},
      {"unplugged before the reply", {.unplugAfter = 3}, 3000ms, defaults, Paced},
      {"unplugged within the start", {.unplugAfter = 5}, 3000ms, defaults, Paced},
      {"unplugged behind the start", {.unplugAfter = 7}, 7 * ByteTime + 6000ms, defaults, Paced},
      {"unplugged behind the header", {.unplugAfter = 17}, 17 * ByteTime + 3000ms, defaults, Paced},
      {"unplugged in the second slot", {.unplugAfter = 79}, 17 * ByteTime + 3000ms, allButTheLastSlot, Paced},
      {"unplugged before the last byte", {.unplugAfter = 466}, 17 * ByteTime + 3000ms, all, Paced},
      {"unplugged behind the last byte", {.unplugAfter = 467}, 467 * ByteTime, all, Paced},
  };
  for (const auto& row : rows) {
    Wizard wizard(row.how, row.pace);
    EXPECT_EQ(wizard.Upload(), "") << row.name;
    EXPECT_EQ(wizard.Elapsed().count(), row.span.count()) << row.name;
    EXPECT_EQ(wizard.Shown(), row.shown) << row.name;
  }
}

TEST(Misbehaviour, OfADownload) {
  const struct {
    const char* name;
    sim::Misbehaviour how;
    Time span;
    bool done, stored;
    bool pace = false;
  } rows[] = {
      {"none", {}, 0ms, true, true},
      {"none, at the true rate", {}, 468 * ByteTime, true, true, Paced},
      {"silent", {.silent = true}, 27400ms, false, true},
      {"late, but in time", {.late = 27399ms}, 27399ms, true, true},
      {"late", {.late = 27401ms}, 27400ms, false, true},
      {"junk", {.junk = true}, 0ms, true, true},
      {"bad checksum", {.badChecksum = true}, 0ms, true, true},
      {"short", {.shortBy = 10}, 0ms, true, true},
      {"hold", {.hold = 500ms}, 0ms, true, true},
      {"unplugged at once", {.unplugAfter = 0}, 27400ms, false, false, Paced},
      {"unplugged in the image", {.unplugAfter = 100}, 27400ms, false, false, Paced},
      {"unplugged before the checksum", {.unplugAfter = 465}, 27400ms, false, false, Paced},
      {"unplugged before the ACK", {.unplugAfter = 467}, 27400ms, false, true, Paced},
      {"unplugged behind the ACK", {.unplugAfter = 468}, 468 * ByteTime, true, true, Paced},
  };
  for (const auto& row : rows) {
    Wizard wizard(row.how, row.pace);
    EXPECT_EQ(wizard.Download(), row.done ? SuccessBox : TimeOutBox) << row.name;
    EXPECT_EQ(wizard.Elapsed().count(), row.span.count()) << row.name;
    EXPECT_EQ(wizard.device.gateway.Image() == wizard.app.globals.ConfigImage, row.stored) << row.name;
    EXPECT_EQ(wizard.Do("forms"),
              row.done ? "form ProductMenu visible\n" : "form ProductMenu visible\nform Configuration_RB2000 visible\n")
        << row.name;
  }
}

TEST(Misbehaviour, LeavesTheProgramFitForTheNextTry) {
  Wizard wizard({.unplugAfter = 100}, Paced);
  EXPECT_EQ(wizard.Download(), TimeOutBox);
  EXPECT_EQ(wizard.Download(), TimeOutBox);
  GatewayDevice healthy("RB2000");
  wizard.driver.Plug("COM3", &healthy);
  EXPECT_EQ(wizard.Upload(), "");
  EXPECT_EQ(wizard.Shown(), "19200 40101 ");
  EXPECT_EQ(wizard.Download(), SuccessBox);
}

}  // namespace
}  // namespace vk32
