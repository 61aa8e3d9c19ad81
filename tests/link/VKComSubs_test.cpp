// The messages, the checksums and the waits of the device link.
#include "link/VKComSubs.h"

#include "core/TestWizard.h"
#include "link/BuildFrame.h"

namespace vk32 {
namespace {

TEST(BuildFrame, TheProductDecidesTheKindAndWhatDoesNotFitFaults) {
  const Bytes data = FromHex("01 02 03"), most = Bytes(128, '\xFF') + '\x7E';  // 1 + 32640 + 126 = 32767
  const std::string image = "4E 45 45 0D 00 00 00 00 01 00 00 00 00 00 00 00 00 01 02 03 07 00";
  // The products, the frame's code, block, length and data; how the frame begins, or the fault.
  const std::tuple<const char*, std::uint8_t, std::int16_t, std::int16_t, Bytes, std::string> rows[] = {
      {"VK-RTX VK5300", 0xF5, 3, 64, data, "A5 CE 06 F5 00 03 00 40 C8"},
      {"VK-RTX VK5300", 0xFA, 5, 3, data, "A5 CE 09 FA 00 05 00 03 01 02 03 F8"},
      {"VK-RTX", 0xFA, 255, 249, Bytes(249, 'a'), "A5 CE FF FA 00 FF 00 F9 61"},
      {"VK-RTX", 0xFA, 5, 250, Bytes(250, 'a'), "6"},
      {"VK-RTX", 0xFA, 256, 1, "a", "6"},
      {"VK-RTX", 0xFA, 5, -1, "a", "6"},
      {"VK-RTX", 208, 1, 0, data, "A5 CE 00 D0 00 01 00 2F"},  // nobody asks for it
      {"VK5300 RB2000 RB3000 RBCard", 208, 1, 0, data, image},
      {"RB2000", 0xFA, 5, 3, most, "4E 45 45 8B"},
      {"RB2000", 0xFA, 5, 3, most + '\1', "6"},
      {"RB2000", 0xFA, 5, 3, Bytes(32758, '\0'), "6"},
      {"another", 208, 1, 0, data, ""}};
  for (const auto& [products, code, block, length, bytes, begins] : rows) {
    for (const std::string& product : Split(products)) {
      Globals globals;
      globals.BlockNumber = block;
      globals.BlockLength = length;
      globals.BlockData = globals.ConfigImage = bytes;
      std::string made;
      const int fault = FaultOf([&] { made = ToHex(BuildFrame(globals, product, code)); });
      if (fault != 0) made = std::to_string(fault);
      EXPECT_EQ(made.substr(0, bytes == data ? made.size() : begins.size()), begins) << product;
    }
  }
}

/// A conversation on the open COM3, whose device speaks by itself.
class WaitTest : public testing::Test {
 protected:
  WaitTest() {
    talk->CommOpen();
    h.wizard->TimeOutTmr.Interval = 3000;
    h.app.globals.TimeOutFlag = FlagTrue;  // of an earlier wait
  }

  /// How long the wait took. The timer is at rest behind it.
  void ExpectWait(Time time) {
    EXPECT_EQ(h.Elapsed(), time);
    EXPECT_FALSE(h.wizard->TimeOutTmr.Enabled);
  }

  ScriptedDevice device;
  WizardHarness h{"VK-RTX", &device};
  std::shared_ptr<Conversation> talk = Conversation::Begin(h.app, *h.wizard, {"The test", "Wait."});
};

TEST_F(WaitTest, TakesWhatItAskedForWithinItsInterval) {
  device.says = {{10ms, FromHex("15 00 FF")}, {20ms, "\x05\x06:"}, {2990ms, "234"}, {3010ms, "late"}, {6009ms, "\x06"}};
  EXPECT_EQ(WaitForAck(*talk), FlagFalse);
  ExpectWait(20ms);
  Bytes buffer = "kept ";
  EXPECT_EQ(ReadBytes(*talk, buffer, 3), 3);
  ExpectWait(2970ms);
  EXPECT_EQ(ReadBytes(*talk, buffer, 6), -1);  // the full interval anew, which bounds the whole read
  ExpectWait(3000ms);
  EXPECT_EQ(buffer + "|" + h.driver.input, "kept :234late|");  // what did come stays
  EXPECT_EQ(h.app.globals.TimeOutFlag, FlagTrue);
}

TEST_F(WaitTest, NoAckIsInAMessageThatTheDeviceRepeats) {
  // What is sent, what comes at 10 ms and at 20 ms, and when the wait ends.
  const std::tuple<const char*, const char*, const char*, Time> rows[] = {
      {"A5 CE 06 F5 06", "A5 CE", "06 F5 06", 3000ms},                      // all comes back, in pieces
      {"A5 CE 06 F5 06", "A5 CE 06 F5 06", "06", 20ms},                     // and then the answer
      {"4E 45 45 01 0D 06 07", "4E 45 45 01 0D 41 42", "06 07", 3000ms},    // parted by a text
      {"4E 45 45 01 0D 06 07", "4E", "41 06", 20ms},                        // no more than chance
      {"4E 45 45 00 00 00 07 06", "00 00 00", "06", 20ms},                  // noise
      {"4E 45 45 45 06 07", "4E 45 45 45 4E 45 45 45 06 07", "06", 20ms}};  // begins anew
  for (const auto& [message, first, second, end] : rows) {
    device.says = {{h.loop.Now() + 10ms, FromHex(first)}, {h.loop.Now() + 20ms, FromHex(second)}};
    Send(*talk, FromHex(message));
    h.Elapsed();
    WaitForAck(*talk);
    EXPECT_EQ(h.Elapsed(), end) << message << ": " << first << " " << second;
  }
}

TEST_F(WaitTest, ABoxThatWaitsForTheUserStopsNoClockAndLosesNoAnswer) {
  device.says = {{2000ms, "\x06"}};
  // A box of another form stands from the first second to the fifth: nobody reads the port.
  h.screen.onBox = [&](const auto&) { h.Do("wait 4000"); };
  h.loop.StartTimer(1s, [&] { h.app.forms.MsgBox("A word", MessageIcon::None); });
  EXPECT_EQ(WaitForAck(*talk), FlagFalse);
  ExpectWait(5s);
}

// Every wizard's timer ticks while it is open.
TEST_F(WaitTest, AWaitEndsByTheTimerOfItsOwnForm) {
  h.Do("click MainMenu.VK5300Cmd");
  h.app.forms.Load("Configuration_RBCard").Get<Timer>("TimeOutTmr").Interval = 700;
  h.Elapsed();
  EXPECT_EQ(WaitForAck(*talk), FlagTrue);
  ExpectWait(3s);
}

TEST_F(WaitTest, NothingWakesTheProcessorOnceItIsOver) {
  talk.reset();
  h.wizard->TimeOutTmr.Enabled = true;
  h.Do("wait 10000");
  EXPECT_THROW(h.loop.Wait(-1), std::logic_error);  // nothing will ever happen
}

TEST_F(WaitTest, TheLineGoesThroughFlowControlAtItsOwnRate) {
  h.app.globals.BaudRate = "9600";  // of what has been chosen since
  h.driver.calls.clear();
  SetDeviceLink(*talk);
  const std::string set = "GetState|BuildState baud=19200 parity=N data=8 stop=1|SetState 19200 ";
  EXPECT_EQ(h.driver.calls, Split(set + "XON|Purge 15|" + set + "NOXON", '|'));
}

}  // namespace
}  // namespace vk32
