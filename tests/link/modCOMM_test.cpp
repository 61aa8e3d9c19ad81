// The serial port layer: the driver's verbs that it calls, its results and its source texts.
#include "link/modCOMM.h"

#include "support/Harness.h"

namespace vk32 {
namespace {

constexpr int Port = 32;  // the last one
constexpr const char* Settings = "baud=19200 parity=N data=8 stop=1";
const Bytes Odd("\0\xFF\x11\0\n", 5);  // whatever a byte may be

/// COM32 has an open end.
struct OpenLine : Harness {
  OpenLine() { driver.Plug("COM32", nullptr); }
  std::string Error() {
    app.comm.CommGetError(data);
    return data;
  }
  Bytes data;
};

using Operation = std::int32_t (*)(OpenLine&);
const Operation Open = [](OpenLine& l) { return l.app.comm.CommOpen(Port, "COM32", Settings); };
const Operation Set = [](OpenLine& l) { return l.app.comm.CommSet(Port, Settings); };
const Operation SetNoXon = [](OpenLine& l) { return l.app.comm.CommSetNOXON(Port, Settings); };
const Operation Close = [](OpenLine& l) { return l.app.comm.CommClose(Port); };
const Operation Flush = [](OpenLine& l) { return l.app.comm.CommFlush(Port); };
const Operation Read = [](OpenLine& l) { return l.app.comm.CommRead(Port, l.data, 9); };
const Operation Write = [](OpenLine& l) { return l.app.comm.CommWrite(Port, Odd); };

TEST(modCOMM, CallsTheDriverStepByStep) {
  OpenLine line;
  for (const Operation operation : {Open, Set, SetNoXon, Flush, Close, Close}) EXPECT_EQ(operation(line), 0);
  const std::string open = "Open \\\\.\\COM32|SetupQueues 1024 1024|Purge 15|SetTimeouts 4294967295 0 1000 1000 0|";
  const std::string set = "GetState|BuildState baud=19200 parity=N data=8 stop=1|SetState 19200 ";
  const std::string calls = open + set + "NOXON|" + set + "XON|" + set + "NOXON|Purge 15|Close";  // closed only once
  EXPECT_EQ(line.driver.calls, Split(calls, '|'));
  EXPECT_EQ(line.driver.state.XonChar * 100 + line.driver.state.XoffChar, 1719);
  EXPECT_EQ(line.Error(), "Error (0):  - ");  // no success leaves a trace
  EXPECT_EQ(line.app.comm.CommFlush(0), 9);
  EXPECT_EQ(line.Error(), "Error (9): CommFlush - Subscript out of range");
}

TEST(modCOMM, TellsWhichStepFailed) {
  // The verb that fails with 31, the operation, its source text, the calls, and what the operation returns.
  // The failing step is the last one, but for the look at the flags.
  const std::tuple<std::string, Operation, std::string, std::size_t, std::int32_t> rows[] = {
      {"Open", Open, "CommOpen (CreateFile)", 1, 31},
      {"SetupQueues", Open, "CommOpen (SetupComm)", 2, 31},
      {"Purge", Open, "CommOpen (PurgeComm)", 3, 31},
      {"GetState", Open, "CommOpen (GetCommState)", 5, 31},
      {"BuildState", Open, "CommOpen (BuildCommDCB)", 6, 31},
      {"SetState", Open, "CommOpen (SetCommState)", 7, 31},
      {"GetState", Set, "CommSet (GetCommState)", 1, 31},
      {"SetState", SetNoXon, "CommSetNOXON (SetCommState)", 3, 31},
      {"Close", Close, "CommClose (CloseHandle)", 1, 31},
      {"Purge", Flush, "CommFlush (PurgeComm)", 1, 31},
      {"ClearError", Read, "CommRead (ClearCommError)", 1, -1},
      {"Read", Read, "CommRead (ReadFile)", 3, -1},
      {"PendingResult", Read, "CommRead (GetOverlappedResult)", 6, -1},
      {"Write", Write, "CommWrite (WriteFile)", 2, -1},
      {"PendingResult", Write, "CommWrite (GetOverlappedResult)", 5, 5}};
  for (const auto& [verb, operation, source, calls, status] : rows) {
    OpenLine line;
    if (operation != Open) Open(line);
    line.driver.calls.clear();
    line.driver.input = "xy";
    line.driver.lineErrors = 0x1A;
    verb == "PendingResult" ? line.driver.MakePending(2, 31) : line.driver.Fail(verb, 31);
    const std::string flags = status == 31 || verb == "ClearError" ? "" : "  COMM Error Flags = 1A";
    EXPECT_EQ(operation(line), status) << source;
    EXPECT_EQ(line.Error(), "Error (31): " + source + " - words of 31" + flags);
    EXPECT_EQ(line.driver.calls.size(), calls) << source;
    // What was opened stays open until it is closed.
    EXPECT_EQ(Open(line), verb == "Open" ? 0 : -1) << source;
    EXPECT_EQ(line.Error() == "Error (-1): CommOpen - Port in use.", verb != "Open");
    EXPECT_EQ(Close(line) + Open(line), 0) << source;
  }
}

TEST(modCOMM, ReadsWhatWaitsAndLetsEventsRunMeanwhile) {
  OpenLine line;
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
  EXPECT_EQ(Write(line), 1);  // a failure that is none
  EXPECT_EQ(line.driver.written, Odd + Odd);
  line.driver.input = "x";
  line.driver.MakePending(0);
  EXPECT_EQ(Read(line), 1);
  EXPECT_EQ(std::ranges::count(line.app.trace.Text(), '>'), 3);
}

}  // namespace
}  // namespace vk32
