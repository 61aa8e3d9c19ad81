// The serial port layer: the driver's verbs that it calls, its results and its source texts.
#include "link/modCOMM.h"

#include "support/Harness.h"

namespace vk32 {
namespace {

using namespace std::chrono_literals;

constexpr int Port = 32;  // the last one
constexpr const char* Settings = "baud=19200 parity=N data=8 stop=1";
const Bytes Odd("\0\xFF\x11\0\n", 5);  // whatever a byte may be

/// COM32 has an open end.
struct Line : Harness {
  Line() { driver.Plug("COM32", nullptr); }
  std::string Error() {
    app.comm.CommGetError(data);
    return data;
  }
  Bytes data;
};

using Operation = std::int32_t (*)(Line&);
const Operation Open = [](Line& l) { return l.app.comm.CommOpen(Port, "COM32", Settings); };
const Operation Set = [](Line& l) { return l.app.comm.CommSet(Port, Settings); };
const Operation SetNoXon = [](Line& l) { return l.app.comm.CommSetNOXON(Port, Settings); };
const Operation Close = [](Line& l) { return l.app.comm.CommClose(Port); };
const Operation Flush = [](Line& l) { return l.app.comm.CommFlush(Port); };
const Operation Read = [](Line& l) { return l.app.comm.CommRead(Port, l.data, 9); };
const Operation Write = [](Line& l) { return l.app.comm.CommWrite(Port, Odd); };

TEST(modCOMM, CallsTheDriverStepByStep) {
  Line line;
  for (const Operation operation : {Open, Set, SetNoXon, Flush, Close, Close}) EXPECT_EQ(operation(line), 0);
  const std::string open = "Open \\\\.\\COM32|SetupQueues 1024 1024|Purge 15|SetTimeouts 4294967295 0 1000 1000 0|";
  const std::string set = "GetState|BuildState baud=19200 parity=N data=8 stop=1|SetState 19200 ";
  const std::string calls = open + set + "NOXON|" + set + "XON|" + set + "NOXON|Purge 15|Close";  // closed only once
  EXPECT_EQ(line.driver.calls, Split(calls, '|'));
  EXPECT_EQ(line.driver.state.XonChar * 100 + line.driver.state.XoffChar, 1719);
  EXPECT_EQ(line.Error(), "Error (0):  - ");  // no success leaves a trace
}

TEST(modCOMM, TellsWhichStepFailed) {
  const std::string flags = "  COMM Error Flags = 1A";
  const struct {
    std::string verb;  // that fails with 31
    Operation operation;
    std::string source;
    std::size_t calls;  // the failing step is the last one, but for the look at the flags
    std::int32_t status = 31;
    std::string flags = "";
  } rows[] = {{"Open", Open, "CommOpen (CreateFile)", 1},
              {"SetupQueues", Open, "CommOpen (SetupComm)", 2},
              {"Purge", Open, "CommOpen (PurgeComm)", 3},
              {"GetState", Open, "CommOpen (GetCommState)", 5},
              {"BuildState", Open, "CommOpen (BuildCommDCB)", 6},
              {"SetState", Open, "CommOpen (SetCommState)", 7},
              {"GetState", Set, "CommSet (GetCommState)", 1},
              {"SetState", SetNoXon, "CommSetNOXON (SetCommState)", 3},
              {"Close", Close, "CommClose (CloseHandle)", 1},
              {"Purge", Flush, "CommFlush (PurgeComm)", 1},
              {"ClearError", Read, "CommRead (ClearCommError)", 1, -1},
              {"Read", Read, "CommRead (ReadFile)", 3, -1, flags},
              {"PendingResult", Read, "CommRead (GetOverlappedResult)", 6, -1, flags},
              {"Write", Write, "CommWrite (WriteFile)", 2, -1, flags},
              {"PendingResult", Write, "CommWrite (GetOverlappedResult)", 5, 5, flags}};
  for (const auto& row : rows) {
    Line line;
    if (row.operation != Open) Open(line);
    line.driver.calls.clear();
    line.driver.input = "xy";
    line.driver.lineErrors = 0x1A;
    row.verb == "PendingResult" ? line.driver.MakePending(2, 31) : line.driver.Fail(row.verb, 31);
    EXPECT_EQ(row.operation(line), row.status) << row.source;
    EXPECT_EQ(line.Error(), "Error (31): " + row.source + " - words of 31" + row.flags);
    EXPECT_EQ(line.driver.calls.size(), row.calls) << row.source;
    // What was opened stays open until it is closed.
    EXPECT_EQ(Open(line), row.verb == "Open" ? 0 : -1) << row.source;
    EXPECT_EQ(line.Error() == "Error (-1): CommOpen - Port in use.", row.verb != "Open");
    EXPECT_EQ(Close(line) + Open(line), 0) << row.source;
  }
}

TEST(modCOMM, ReadsWhatWaitsAndLetsEventsRunMeanwhile) {
  Line line;
  Open(line);
  line.driver.input = Odd + Bytes(2000, 'x');
  line.driver.MakePending(2);
  Bytes all;
  for (const auto& [most, count] : {std::pair(0, 0), {5, 5}, {1, 1}, {5000, 1024}, {5000, 975}, {9, 0}}) {
    EXPECT_EQ(line.app.comm.CommRead(Port, line.data, most), count);
    all += line.data;
  }
  EXPECT_EQ(all, Odd + Bytes(2000, 'x'));
  EXPECT_EQ(line.data, "");

  const auto during = [&](Operation operation) {
    const int before = line.loop.Passes();
    operation(line);
    return line.loop.Passes() - before;
  };
  EXPECT_EQ(during(Read), 1);
  EXPECT_EQ(during(Write), 11);
  line.driver.MakePending(3);
  EXPECT_EQ(during(Write), 14);
  line.driver.Fail("Write", 0);
  EXPECT_EQ(Write(line), 0);  // a failure that is none
  EXPECT_EQ(line.driver.written, Odd + Odd);
}

}  // namespace
}  // namespace vk32
