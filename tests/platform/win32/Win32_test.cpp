// What the platform layer of Windows does in its own way: files, and the serial driver on a port whose bytes come back.
#include <windows.h>

#include <cstdlib>
#include <filesystem>

#include "platform/Files.h"
#include "platform/Paths.h"
#include "platform/SystemEventLoop.h"
#include "support/Harness.h"

namespace vk32 {
namespace {

int Save(const std::string& path, std::string_view text) {
  return FaultOf([&] {
    OutputFile file(path);
    file.Write(text);
    file.Commit();
  });
}

TEST(Win32Files, OldFileStandsUntilCommitUnderAnyName) {
  const TemporaryFile place("Größe Ω.rom");
  const std::string folder = TextOf(PathOf(place.Path()).parent_path());
  const auto entries = [&] { return std::distance(std::filesystem::directory_iterator(PathOf(folder)), {}); };
  TemporaryFile left("x");
  place.Fill("old");
  std::filesystem::rename(PathOf(place.Path()), PathOf(folder + "/.vk32-00000001.tmp"));  // a killed save's
  EXPECT_EQ(FaultOf([&] { InputFile file(place.Path()); }), 53);
  EXPECT_EQ(Save(place.Path(), "old"), 0);
  EXPECT_EQ(entries(), 1);
  OutputFile other(folder + "/other");
  {
    OutputFile file(place.Path());
    file.Write("new");
    EXPECT_EQ(entries(), 3);  // nobody takes what is being saved for a leftover
    EXPECT_EQ(place.Content(), "old");
    file.Commit();
  }
  EXPECT_EQ(InputFile(place.Path()).Read(99), "new");
  SetFileAttributesW(PathOf(place.Path()).c_str(), FILE_ATTRIBUTE_READONLY);
  for (const auto& [name, why] : {std::pair("Größe Ω.rom", "is read-only"),
                                  {"com1.cfg", "is a device"},
                                  {"a:b", "< >"},
                                  {"none/file", "does not exist"},
                                  {"", "names a folder"}}) {
    const std::string path = folder + "/" + name;
    EXPECT_NE(WhyNotWritable(path).find(why), std::string::npos) << WhyNotWritable(path);
    EXPECT_EQ(Save(path, "x"), 75) << name;
  }
  EXPECT_EQ(FaultOf([&] { InputFile file(folder + "/com1.cfg"); }), 75);
  SetFileAttributesW(PathOf(place.Path()).c_str(), FILE_ATTRIBUTE_NORMAL);
}

/// A port whose other end sends back what it gets.
class Win32SerialDriverTest : public testing::Test {
 protected:
  void SetUp() override {
    const char* const port = std::getenv("VK32_LOOP");
    if (port == nullptr) GTEST_SKIP() << "VK32_LOOP names no port whose bytes come back";
    name_ = std::string(R"(\\.\)") + port;
    handle_ = driver_->Open(name_);
    ASSERT_GT(handle_, 0) << driver_->ErrorText(driver_->LastError());
    ASSERT_TRUE(driver_->SetTimeouts(handle_, {0, 0, 0, 0, 300}));
    SetFlow(false);
  }
  void SetFlow(bool outX) { EXPECT_TRUE(driver_->SetState(handle_, {19200, 'N', 8, 1, outX, 17, 19})); }
  /// How many bytes have left; -1: error.
  int Write(std::string_view bytes) {
    std::uint32_t written = 0;
    bool done = driver_->Write(handle_, bytes, written);
    const auto goesOn = [&] {
      return driver_->LastError() == SerialDriver::ErrorIoPending ||
             driver_->LastError() == SerialDriver::ErrorIoIncomplete;
    };
    while (!done && goesOn()) {
      loop_.Wait(driver_->PendingWait(handle_));
      done = driver_->PendingResult(handle_, written);
    }
    return done ? static_cast<int>(written) : -1;
  }
  /// What comes within a second, up to so many bytes.
  Bytes Come(std::size_t count) {
    Bytes all, some;
    for (const Time end = loop_.Now() + 1s; all.size() < count && loop_.Now() < end; all += some) {
      loop_.Wait({driver_->WaitHandle(handle_), WaitFor::ToRead, end});
      if (!driver_->Read(handle_, static_cast<std::uint32_t>(count - all.size()), some)) break;
    }
    return all;
  }

  std::string name_;
  SystemEventLoop loop_;
  PortNames names_;
  std::unique_ptr<SerialDriver> driver_ = SystemSerialDriver(loop_, names_);
  SerialDriver::Handle handle_ = 0;
};

TEST_F(Win32SerialDriverTest, AllBytesPassUnchangedUntilAPurge) {
  Bytes all;
  for (int byte = 0; byte < 256; ++byte) all += static_cast<char>(byte);
  EXPECT_EQ(Write(all), 256);
  EXPECT_EQ(Come(10), all.substr(0, 10));
  EXPECT_EQ(Come(246), all.substr(10));
  EXPECT_EQ(Write("late") + Come(1).size(), 5);
  EXPECT_TRUE(driver_->Purge(handle_, 15));
  EXPECT_EQ(Come(1), "");
  EXPECT_TRUE(driver_->Close(handle_));
  EXPECT_TRUE(!driver_->Close(handle_) && driver_->WaitHandle(handle_) == -1);
}

TEST_F(Win32SerialDriverTest, XoffHoldsAWriteUntilItsTimeOutAndEndsWithFlowControl) {
  SetFlow(true);
  EXPECT_EQ(Write("\x13"), 1);
  EXPECT_EQ(Come(1), "");
  EXPECT_EQ(Write("held"), 0);
  SetFlow(false);
  EXPECT_EQ(Write("free"), 4);
  EXPECT_EQ(Come(5), "free");
}

}  // namespace
}  // namespace vk32
