// The desktop's event loop: timers in every kind of wait, and what wakes it.
#include "QtEventLoop.h"

#include <gtest/gtest.h>
#include <time.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QEventLoop>

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
    timespec used{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &used);
    return std::chrono::seconds(used.tv_sec) + std::chrono::nanoseconds(used.tv_nsec);
  }

  QtEventLoop loop;
  int pipe_[2];
};

TEST_F(QtEventLoopTest, TimersRunWhileQtHasTheLoopAlsoWhenATickWaitsForTheUser) {
  QEventLoop qt, box;
  std::string order;
  loop.StartTimer(1ms, [&] {
    box.exec();
    order += "c";
    qt.quit();
  });
  loop.StartTimer(20ms, [&] {
    order += "b";
    box.quit();
  });
  loop.StartTimer(1ms, [&] { order += "a"; });
  loop.StopTimer(loop.StartTimer(10ms, [&] { order += "x"; }));
  qt.exec();
  EXPECT_EQ(order, "abc");
}

TEST_F(QtEventLoopTest, WaitsTickNothingAndEndInTime) {
  EXPECT_EQ(write(pipe_[1], "x", 1), 1);
  struct Row {
    const char* what;
    std::function<void()> wait;
    Time least;
  };
  for (const Row& row : {
           Row{"a timer is due", [this] { loop.Wait(-1); }, 29ms},
           Row{"a byte has come", [this] { loop.Wait(pipe_[0]); }, 0ms},
           Row{"the time has come",
               [this] {
                 loop.Wait({-1, WaitFor::ToWrite, loop.Now() + 15ms});
               },
               14ms},
           Row{"there is room for bytes",
               [this] {
                 loop.Wait({pipe_[1], WaitFor::ToWrite, loop.Now() + 5s});
               },
               0ms},
       }) {
    SCOPED_TRACE(row.what);
    QCoreApplication::processEvents();
    bool ticked = false, posted = false;
    const Alarm alarm(loop, 30ms, [&] { ticked = true; });
    const auto paint = [&] { posted = true; };
    QMetaObject::invokeMethod(qApp, paint, Qt::QueuedConnection);
    const Time start = loop.Now();
    // What is posted ends a wait as well.
    while (!posted || loop.Now() - start < row.least) row.wait();
    EXPECT_LT(loop.Now() - start, 1s);
    EXPECT_FALSE(ticked);
    while (loop.Now() - start < 30ms) loop.Wait(-1);
    loop.RunDue();
    EXPECT_TRUE(ticked);
  }
}

TEST_F(QtEventLoopTest, AWaitCostsNoProcessorTime) {
  bool over = false;
  loop.StartTimer(500ms, [&] { over = true; });
  const Time used = Used();
  while (!over) {
    loop.RunDue();
    if (!over) loop.Wait(pipe_[0]);
  }
  EXPECT_LT(Used() - used, 20ms);
}

}  // namespace
}  // namespace vk32
