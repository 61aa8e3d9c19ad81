// The desktop's event loop: timers in every kind of wait, and what wakes it.
#include "QtEventLoop.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>
#include <ctime>

namespace vk32 {
namespace {

using namespace std::chrono_literals;

struct QtEventLoopTest : testing::Test {
  QtEventLoopTest() { EXPECT_EQ(pipe(ends), 0); }
  ~QtEventLoopTest() override { close(ends[0]), close(ends[1]); }

  QtEventLoop loop;
  int ends[2];
};

TEST_F(QtEventLoopTest, TimersRunWhileQtHasTheLoopAlsoWhenATickWaitsForTheUser) {
  QEventLoop qt, box;
  std::string order;
  loop.StartTimer(1ms, [&] { box.exec(), order += "c", qt.quit(); });
  loop.StartTimer(20ms, [&] { order += "b", box.quit(); });
  loop.StartTimer(1ms, [&] { order += "a"; });
  loop.StopTimer(loop.StartTimer(10ms, [&] { order += "x"; }));
  loop.StartWhenReadable(ends[0], [&] { order += "r"; });
  // What has rung in a wait rings again behind it.
  for (const Time end = loop.Now() + 3ms; loop.Now() < end;) loop.Wait({-1, WaitFor::ToRead, end});
  EXPECT_EQ(write(ends[1], "x", 1), 1);
  qt.exec();
  EXPECT_EQ(std::erase(order, 'r'), 1u);
  EXPECT_EQ(order, "abc");
}

TEST_F(QtEventLoopTest, WaitsTickNothingAndEndInTime) {
  EXPECT_EQ(write(ends[1], "x", 1), 1);
  using enum WaitFor::Ready;
  const struct {
    int fd;
    WaitFor::Ready ready;
    Time limit, least;
  } rows[] = {{-1, ToRead, 5s, 30ms},        // a timer is due
              {ends[0], ToRead, 5s, 0ms},    // a byte has come
              {-1, ToWrite, 15ms, 14ms},     // the time has come
              {ends[1], ToWrite, 5s, 0ms}};  // there is room for bytes
  for (const auto& row : rows) {
    SCOPED_TRACE(&row - rows);
    QCoreApplication::processEvents();
    bool ticked = false, posted = false;
    const Alarm alarm(loop, 30ms, [&] { ticked = true; });
    QTimer::singleShot(0, [&] { posted = true; });
    const Time start = loop.Now();
    // What is posted ends a wait as well.
    while (!posted || loop.Now() - start < row.least) loop.Wait({row.fd, row.ready, start + row.limit});
    EXPECT_LT(loop.Now() - start, 1s);
    EXPECT_FALSE(ticked);
    while (loop.Now() - start < 30ms) loop.Wait(-1);
    loop.RunDue();
    EXPECT_TRUE(ticked);
  }
}

TEST_F(QtEventLoopTest, AWaitCostsNoProcessorTime) {
  const std::clock_t used = std::clock();
  for (const Time end = loop.Now() + 500ms; loop.Now() < end;) loop.Wait({ends[0], WaitFor::ToRead, end});
  EXPECT_LT(std::clock() - used, CLOCKS_PER_SEC / 50);
}

}  // namespace
}  // namespace vk32
