// The serial port layer: the driver's verbs that it calls, its results and its source texts.
#include "link/modCOMM.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "forms/FaultOf.h"
#include "script/ScriptScreen.h"
#include "support/FakeSerialDriver.h"

namespace vk32 {
namespace {

using namespace std::chrono_literals;

constexpr const char* Settings = "baud=19200 parity=N data=8 stop=1";
const Bytes Odd("\0\xFF\x11\0\n", 5);  // whatever a byte may be

/// COM12 has an open end.
struct Line {
  Line() { driver.Plug("COM12", nullptr); }

  std::int32_t Open() { return comm.CommOpen(12, "COM12", Settings); }
  std::string Error() const {
    std::string text;
    comm.CommGetError(text);
    return text;
  }

  VirtualEventLoop loop;
  ScriptScreen screen{[](const std::string&) {}};
  Dispatcher dispatcher{loop, screen};
  FakeSerialDriver driver{loop};
  modCOMM comm{driver, dispatcher};
  Bytes data;
};

TEST(modCOMM, CallsTheDriverStepByStep) {
  Line line;
  DeviceControlBlock& state = line.driver.state;
  EXPECT_EQ(line.Open(), 0);
  for (const bool on : {true, false}) {
    state.fOutX = !on;
    state.XonChar = state.XoffChar = 0;
    EXPECT_EQ(on ? line.comm.CommSet(12, "baud=9600 parity=N data=8 stop=1") : line.comm.CommSetNOXON(12, Settings), 0);
    EXPECT_EQ(state.XonChar, 17);
    EXPECT_EQ(state.XoffChar, 19);
  }
  EXPECT_EQ(line.comm.CommFlush(12), 0);
  EXPECT_EQ(line.comm.CommClose(12), 0);
  EXPECT_EQ(line.comm.CommClose(12), 0);  // closed already, as one that was never opened: no call
  EXPECT_EQ(line.comm.CommClose(31), 0);
  EXPECT_EQ(line.driver.calls,
            (std::vector<std::string>{
                "Open \\\\.\\COM12", "SetupQueues 1024 1024", "Purge 15", "SetTimeouts 4294967295 0 1000 1000 0",
                "GetState", "BuildState baud=19200 parity=N data=8 stop=1", "SetState 19200 NOXON",  // CommOpen
                "GetState", "BuildState baud=9600 parity=N data=8 stop=1", "SetState 9600 XON",      // CommSet
                "GetState", "BuildState baud=19200 parity=N data=8 stop=1", "SetState 19200 NOXON",  // CommSetNOXON
                "Purge 15", "Close"}));
  EXPECT_EQ(line.Error(), "Error (0):  - ");  // no success leaves a trace
}

TEST(modCOMM, TellsWhichStepFailed) {
  using Operation = std::function<std::int32_t(Line&, int port)>;
  const Operation open = [](Line& l, int port) { return l.comm.CommOpen(port, "COM12", Settings); };
  const Operation set = [](Line& l, int port) { return l.comm.CommSet(port, Settings); };
  const Operation setNoXon = [](Line& l, int port) { return l.comm.CommSetNOXON(port, Settings); };
  const Operation close = [](Line& l, int port) { return l.comm.CommClose(port); };
  const Operation flush = [](Line& l, int port) { return l.comm.CommFlush(port); };
  const Operation read = [](Line& l, int port) { return l.comm.CommRead(port, l.data, 9); };
  const Operation write = [](Line& l, int port) { return l.comm.CommWrite(port, "abc"); };
  const std::string flags = "  COMM Error Flags = 1A";
  const struct {
    std::string verb;  // that fails with 31
    Operation operation;
    std::string source;
    std::size_t calls;  // the failing step is the last one, but for the look at the flags
    std::int32_t status = 31;
    std::string flags = "";
  } rows[] = {{"Open", open, "CommOpen (CreateFile)", 1},
              {"SetupQueues", open, "CommOpen (SetupComm)", 2},
              {"Purge", open, "CommOpen (PurgeComm)", 3},
              {"SetTimeouts", open, "CommOpen (SetCommTimeouts)", 4},
              {"GetState", open, "CommOpen (GetCommState)", 5},
              {"BuildState", open, "CommOpen (BuildCommDCB)", 6},
              {"SetState", open, "CommOpen (SetCommState)", 7},
              {"GetState", set, "CommSet (GetCommState)", 1},
              {"BuildState", set, "CommSet (BuildCommDCB)", 2},
              {"SetState", set, "CommSet (SetCommState)", 3},
              {"GetState", setNoXon, "CommSetNOXON (GetCommState)", 1},
              {"BuildState", setNoXon, "CommSetNOXON (BuildCommDCB)", 2},
              {"SetState", setNoXon, "CommSetNOXON (SetCommState)", 3},
              {"Close", close, "CommClose (CloseHandle)", 1},
              {"Purge", flush, "CommFlush (PurgeComm)", 1},
              {"ClearError", read, "CommRead (ClearCommError)", 1, -1},
              {"Read", read, "CommRead (ReadFile)", 3, -1, flags},
              {"PendingResult", read, "CommRead (GetOverlappedResult)", 6, -1, flags},
              {"Write", write, "CommWrite (WriteFile)", 2, -1, flags},
              {"PendingResult", write, "CommWrite (GetOverlappedResult)", 5, 3, flags}};
  for (const auto& row : rows) {
    Line line;
    if (!row.source.starts_with("CommOpen")) open(line, 12);
    line.driver.calls.clear();
    line.driver.input = "xy";
    line.driver.lineErrors = 0x1A;
    if (row.verb == "PendingResult") {
      line.driver.MakePending(2, 31);
    } else {
      line.driver.Fail(row.verb, 31);
    }
    EXPECT_EQ(row.operation(line, 12), row.status) << row.source;
    EXPECT_EQ(line.Error(), "Error (31): " + row.source + " - words of 31" + row.flags);
    EXPECT_EQ(line.driver.calls.size(), row.calls) << row.source;

    // What was opened stays open until it is closed.
    EXPECT_EQ(open(line, 12), row.verb == "Open" ? 0 : -1) << row.source;
    EXPECT_EQ(line.Error() == "Error (-1): CommOpen - Port in use.", row.verb != "Open");
    EXPECT_EQ(close(line, 12), 0);
    EXPECT_EQ(open(line, 12), 0);
  }

  const std::pair<std::string, Operation> trapped[] = {{"CommOpen", open},         {"CommSet", set},
                                                       {"CommSetNOXON", setNoXon}, {"CommClose", close},
                                                       {"CommFlush", flush},       {"CommRead", read}};
  for (const int port : {0, 33, -1}) {
    Line line;
    EXPECT_EQ(FaultOf([&] { write(line, port); }), 9);
    EXPECT_EQ(line.Error(), "Error (0):  - ");  // the caller's fault, not recorded
    for (const auto& [source, operation] : trapped) {
      EXPECT_EQ(operation(line, port), 9);
      EXPECT_EQ(line.Error(), "Error (9): " + source + " - Subscript out of range");
    }
    EXPECT_TRUE(line.driver.calls.empty());
  }
  for (const int port : {1, 32}) {
    Line line;
    EXPECT_EQ(open(line, port), 0);
    EXPECT_EQ(write(line, port), 3);
  }
}

TEST(modCOMM, ReadsWhatWaitsAndNoMore) {
  Line line;
  line.Open();
  line.data = "old";
  EXPECT_EQ(line.comm.CommRead(12, line.data, 9), 0);
  EXPECT_EQ(line.data, "");
  line.driver.input = Odd + Bytes(2000, 'x');
  EXPECT_EQ(line.comm.CommRead(12, line.data, 0), 0);
  line.driver.MakePending(2);
  EXPECT_EQ(line.comm.CommRead(12, line.data, 5), 5);
  EXPECT_EQ(line.data, Odd);
  EXPECT_EQ(line.comm.CommRead(12, line.data, 1), 1);
  EXPECT_EQ(line.comm.CommRead(12, line.data, 5000), 1024);
  EXPECT_EQ(line.data, Bytes(1024, 'x'));
  EXPECT_EQ(line.comm.CommRead(12, line.data, 5000), 975);
}

/// Counts how often events were let run.
struct Passes : Outside {
  std::optional<Time> NextDue() const override { return std::nullopt; }
  void RunDue(Time) override { ++count; }
  int count = 0;
};

TEST(modCOMM, LetsEventsRunWhileItReadsAndWrites) {
  const struct {
    std::function<void(FakeSerialDriver&)> prepare;
    std::int32_t written;
    int passes;
  } rows[] = {{[](FakeSerialDriver&) {}, 5, 11},
              {[](FakeSerialDriver& driver) { driver.writeLimit = 2; }, 2, 11},  // the time-out of the driver
              {[](FakeSerialDriver& driver) { driver.MakePending(3); }, 5, 17},
              {[](FakeSerialDriver& driver) { driver.MakePending(3, 31); }, 5, 7},
              {[](FakeSerialDriver& driver) { driver.Fail("Write", 31); }, -1, 1},
              {[](FakeSerialDriver& driver) { driver.Fail("Write", 0); }, 0, 1}};
  for (const auto& row : rows) {
    Line line;
    Passes passes;
    line.Open();
    line.loop.Add(passes);
    line.comm.CommRead(12, line.data, 1);
    EXPECT_EQ(passes.count, 1);
    row.prepare(line.driver);
    EXPECT_EQ(line.comm.CommWrite(12, Odd), row.written);
    EXPECT_EQ(passes.count - 1, row.passes) << row.written;
    EXPECT_EQ(line.driver.written, Odd.substr(0, static_cast<std::size_t>(std::max(0, row.written))));
  }

  // A tick in the middle may use the port as well: the failure that is told stays the write's own.
  Line line;
  line.Open();
  line.driver.Fail("Write", 31);
  line.driver.Fail("Purge", SerialDriver::ErrorIoPending);
  line.loop.StartTimer(0ms, [&] { line.comm.CommFlush(12); });
  EXPECT_EQ(line.comm.CommWrite(12, "a"), -1);
  EXPECT_EQ(line.Error(), "Error (31): CommWrite (WriteFile) - words of 31  COMM Error Flags = 0");
}

}  // namespace
}  // namespace vk32
