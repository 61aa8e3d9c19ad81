// The desktop's event loop: timers in every kind of wait, and what wakes it.
#include "QtEventLoop.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QEventLoop>
#include <QKeyEvent>

namespace vk32 {
namespace {

using namespace std::chrono_literals;

class QtEventLoopTest : public testing::Test {
 protected:
  QtEventLoopTest() { EXPECT_EQ(pipe(pipe_), 0); }
  ~QtEventLoopTest() override {
    close(pipe_[0]);
    close(pipe_[1]);
  }

  static Time Used() {
    rusage usage{};
    getrusage(RUSAGE_THREAD, &usage);
    const auto span = [](const timeval& time) {
      return std::chrono::seconds(time.tv_sec) + std::chrono::microseconds(time.tv_usec);
    };
    return span(usage.ru_utime) + span(usage.ru_stime);
  }

  /// Waits as a polling loop does, until `done` or for `limit`.
  template <class Done>
  void Poll(int fd, Time limit, Done done) {
    const Time end = loop.Now() + limit;
    while (!done() && loop.Now() < end) {
      loop.RunDue();
      if (!done()) loop.Wait(fd);
    }
  }

  QtEventLoop loop;
  int pipe_[2];
};

TEST_F(QtEventLoopTest, TimersRunWhileQtHasTheLoop) {
  QEventLoop qt;
  std::string order;
  loop.StartTimer(20ms, [&] {
    order += "b";
    qt.quit();
  });
  loop.StartTimer(5ms, [&] { order += "a"; });
  const auto stopped = loop.StartTimer(10ms, [&] { order += "x"; });
  loop.StopTimer(stopped);
  qt.exec();
  EXPECT_EQ(order, "ab");
}

TEST_F(QtEventLoopTest, ATickThatWaitsForTheUserLetsTheOthersGoOn) {
  QEventLoop qt, box;
  bool ticked = false;
  loop.StartTimer(1ms, [&] {
    box.exec();
    qt.quit();
  });
  loop.StartTimer(1ms, [&] { ticked = true; });
  loop.StartTimer(10ms, [&] { box.quit(); });
  qt.exec();
  EXPECT_TRUE(ticked);
}

TEST_F(QtEventLoopTest, AWaitTicksNothingAndEndsWhenATimerIsDue) {
  bool ticked = false;
  loop.StartTimer(30ms, [&] { ticked = true; });
  const Time start = loop.Now();
  while (loop.Now() - start < 30ms) loop.Wait(-1);
  loop.Wait(-1);
  EXPECT_FALSE(ticked);
  EXPECT_LT(loop.Now() - start, 200ms);
  loop.RunDue();
  EXPECT_TRUE(ticked);
}

TEST_F(QtEventLoopTest, AWaitEndsWhenAByteComes) {
  loop.StartTimer(10ms, [&] { EXPECT_EQ(write(pipe_[1], "x", 1), 1); });
  const Time start = loop.Now();
  bool read = false;
  Poll(pipe_[0], 5s, [&] {
    read = loop.Now() - start > 10ms && !read;
    return read;
  });
  EXPECT_LT(loop.Now() - start, 1s);
}

TEST_F(QtEventLoopTest, AWaitCostsNoProcessorTime) {
  bool over = false;
  loop.StartTimer(500ms, [&] { over = true; });
  const Time used = Used();
  Poll(pipe_[0], 5s, [&] { return over; });
  EXPECT_LT(Used() - used, 20ms);
}

TEST_F(QtEventLoopTest, AWaitEndsWhenTheDescriptorCanBeWrittenOrAtItsTime) {
  Time start = loop.Now();
  loop.Wait({pipe_[1], WaitFor::ToWrite, start + 5s});
  EXPECT_LT(loop.Now() - start, 1s);
  start = loop.Now();
  while (loop.Now() < start + 60ms) loop.Wait({-1, WaitFor::ToWrite, start + 60ms});
  EXPECT_LT(loop.Now() - start, 1s);
}

}  // namespace
}  // namespace vk32
