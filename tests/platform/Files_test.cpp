// Reading files, and replacing them as a whole, on a real disk.
#include "platform/Files.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>

#include "platform/Fault.h"
#include "platform/InAChild.h"
#include "support/Harness.h"

namespace {

/// What the disk refuses.
struct Disk {
  int file = 0, folder = 0;  // errno of their syncs
  bool modes = true, full = false;
} disk;

}  // namespace

// The system's own, but for what the disk refuses: no real one can be made to.
extern "C" int fsync(int fd) {
  struct stat found {};
  fstat(fd, &found);
  errno = S_ISDIR(found.st_mode) ? disk.folder : disk.file;
  return errno != 0 ? -1 : static_cast<int>(syscall(SYS_fsync, fd));
}
extern "C" int fchmod(int fd, mode_t mode) noexcept {
  return disk.modes ? static_cast<int>(syscall(SYS_fchmod, fd, mode)) : -1;
}
extern "C" int statvfs(const char*, struct statvfs* found) noexcept {
  std::memset(found, 0, sizeof *found);
  found->f_blocks = 100, found->f_frsize = 4096, found->f_bavail = disk.full ? 3 : 4;
  return 0;
}

namespace vk32 {
namespace {

namespace fs = std::filesystem;

class FilesTest : public testing::Test {
 protected:
  ~FilesTest() override { disk = {}; }

  std::string Path(const std::string& name) const { return folder_ / name; }
  void Put(const std::string& name, const std::string& text, mode_t mode = 0644) const {
    std::ofstream(folder_ / name) << text;
    chmod(Path(name).c_str(), mode);
  }
  std::string Text(const std::string& name) const {
    std::ifstream file(folder_ / name);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  mode_t Mode(const std::string& name) const {
    struct stat found {};
    return stat(Path(name).c_str(), &found) == 0 ? found.st_mode & 07777 : 0;
  }
  static void Save(const std::string& path, std::string_view text) {
    OutputFile file(path);
    file.Write(text);
    file.Commit();
  }
  /// The number of the fault that `act` ends with; 0 if it ends well.
  static int Fault(const std::function<void()>& act) {
    try {
      act();
    } catch (const RuntimeFault& fault) {
      EXPECT_NE(fault.Description(), "");
      return fault.Code();
    }
    return 0;
  }
  /// Things in the folder, temporary files included.
  long Entries() const { return std::distance(fs::directory_iterator(folder_), fs::directory_iterator()); }

  const TemporaryFile file_{"file"};
  const fs::path folder_ = fs::path(file_.Path()).parent_path();
};

TEST_F(FilesTest, ReadsEveryByteOnce) {
  std::string all, got;
  for (int i = 0; i < 40000; ++i) all += static_cast<char>(i * 7);
  Put("all", all);
  InputFile file(Path("all"));
  EXPECT_EQ(file.Size(), 40000u);
  for (int byte = file.Get(); byte >= 0; byte = file.Get()) got += static_cast<char>(byte);
  EXPECT_EQ(got, all);
  EXPECT_EQ(file.Get(), -1);
}

TEST_F(FilesTest, WhatIsNoFileIsNotReadAndKeepsNothingOpen) {
  ASSERT_EQ(mkfifo(Path("pipe").c_str(), 0666), 0);
  Put("file", "");
  const auto open = [] { return std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator()); };
  const auto before = open();
  const auto fault = [&](const std::string& path) { return Fault([&] { InputFile(path).Get(); }); };
  for (const char* name : {"", "pipe", "file/below"}) EXPECT_EQ(fault(Path(name)), 75) << name;
  EXPECT_EQ(fault("/dev/zero"), 75);
  EXPECT_EQ(fault(Path("none")), 53);
  EXPECT_EQ(fault("/proc/self/mem"), 57);  // the only one of every system that opens and can't be read at its start
  EXPECT_EQ(fault(Path("file")), 0);
  EXPECT_EQ(open(), before);
}

TEST_F(FilesTest, OldFileStandsUntilCommit) {
  const mode_t before = umask(027);
  Save(Path("file"), "old");
  umask(before);
  EXPECT_EQ(Text("file"), "old");
  EXPECT_EQ(Mode("file"), 0640u);  // of a new file, as usual
  chmod(Path("file").c_str(), 0604);
  for (const bool commit : {false, true}) {
    OutputFile file(Path("file"));
    file.Write(std::string(200000, 'x'));
    EXPECT_EQ(Text("file"), "old");
    if (commit) file.Commit();
  }
  EXPECT_EQ(Text("file"), std::string(200000, 'x'));
  EXPECT_EQ(Mode("file"), 0604u);
  EXPECT_EQ(Entries(), 1);
}

TEST_F(FilesTest, LinkStaysALink) {
  fs::create_directory(Path("far"));
  Put("far/file", "old");
  fs::create_symlink("far/file", Path("link"));
  fs::create_symlink("link", Path("again"));
  fs::create_symlink("far/new", Path("early"));
  Save(Path("again"), "new");
  Save(Path("early"), "first");
  EXPECT_EQ(Text("far/file") + Text("far/new"), "newfirst");
  for (const char* link : {"link", "again", "early"}) EXPECT_TRUE(fs::is_symlink(Path(link))) << link;
  EXPECT_EQ(Entries(), 4);
}

TEST_F(FilesTest, PlacesWhereNothingCanBeSaved) {
  fs::create_directory(Path("folder"));
  Put("file", "");
  fs::create_symlink("circle", Path("circle"));
  ASSERT_EQ(mkfifo(Path("pipe").c_str(), 0666), 0);
  const auto check = [](const std::string& path, const char* why) {
    EXPECT_NE(WhyNotWritable(path).find(why), std::string::npos) << WhyNotWritable(path);
    EXPECT_EQ(Fault([&] { OutputFile file(path); }), 75) << path;
  };
  for (const std::string row : {"|names a folder", "folder|is a folder", "folder/|names a folder",
                                "none/file|does not exist", "file/below|is not a folder",
                                "file/far/below|can't be reached", "pipe|is a device", "circle|leads back to itself"}) {
    check(Path(row.substr(0, row.find('|'))), row.c_str() + row.find('|') + 1);
  }
  check("", "no name");
  check(Path(std::string(256, 'x')), "is too long");
  for (const std::string& good : {Path("file"), Path("new"), Path("folder/new"), Path(std::string(255, 'x'))}) {
    EXPECT_EQ(WhyNotWritable(good), "");
  }
  disk.full = true;
  check(Path("new"), "is full");
  EXPECT_EQ(Entries(), 4);
}

TEST_F(FilesTest, PlacesThatBelongToOthers) {
  if (geteuid() != 0) GTEST_SKIP() << "only the superuser can lay out another's files";
  chmod(folder_.c_str(), 0777);
  for (const char* name : {"closed", "sticky", "open"}) fs::create_directory(Path(name));
  chmod(Path("sticky").c_str(), 01777);
  chmod(Path("open").c_str(), 0777);
  const struct {
    const char *name, *why;
    mode_t mode = 0, saved = 0;
  } rows[] = {{"closed/new", "You may not save files in the folder"},
              {"open/read-only", "is read-only", 0644},
              {"sticky/theirs", "belongs to another user", 0666},
              {"sticky/new", "", 0, 0644},
              // Their group has become others, and others the group.
              {"open/theirs", "", 0646, 0644},
              {"open/closed-to-group", "", 0606, 0600}};
  for (const auto& row : rows) {
    if (row.mode != 0) Put(row.name, "", row.mode);
  }
  EXPECT_EQ(AsNobody([&] {
              int wrong = 0;
              for (const auto& row : rows) {
                const std::string why = WhyNotWritable(Path(row.name));
                const int fault = Fault([&] { Save(Path(row.name), "new"); });
                if (why.find(row.why) == std::string::npos || why.empty() != (row.why[0] == 0)) ++wrong;
                if (fault != (why.empty() ? 0 : 75) || (why.empty() && Mode(row.name) != row.saved)) ++wrong;
              }
              return wrong;
            }),
            0);
}

TEST_F(FilesTest, OfTheNewFileAllIsStoredOrNothing) {
  for (const mode_t mode : {0600u, 0664u}) {
    Put("file", "old", mode);
    disk = {};
    disk.file = EIO;
    EXPECT_EQ(Fault([&] { Save(Path("file"), "new"); }), 57);
    EXPECT_EQ(Text("file"), "old");
    disk.file = EINVAL;  // there is no such step
    disk.folder = EIO;   // the file stands in its place all the same
    disk.modes = false;
    EXPECT_EQ(Fault([&] { Save(Path("file"), "new"); }), 0);
    EXPECT_EQ(Text("file"), "new");
    EXPECT_EQ(Mode("file"), 0600u);  // at most what the old one had
  }
  EXPECT_EQ(Entries(), 1);
}

TEST_F(FilesTest, FullDiskLeavesTheOldFile) {
  Put("file", "old");
  EXPECT_EQ(InAChild([&] {
              const rlimit small{100, 100};
              signal(SIGXFSZ, SIG_IGN);
              setrlimit(RLIMIT_FSIZE, &small);
              return Fault([&] { Save(Path("file"), std::string(101, 'x')); });
            }),
            57);
  EXPECT_EQ(Text("file"), "old");
  EXPECT_EQ(Entries(), 1);
}

TEST_F(FilesTest, SaveClearsWhatKilledOnesHaveLeft) {
  const auto leave = [&](const char* name) {
    return InAChild([&]() -> int {
      OutputFile file(Path(name));
      file.Write(std::string(100000, 'x'));
      _exit(0);
    });
  };
  EXPECT_EQ(leave("file"), 0);
  EXPECT_EQ(Entries(), 1);
  for (const char* name : {".vk32-1.tmp", ".vk32-12345678.cfg", "avk32-12345678.tmp"}) Put(name, "");
  fs::create_symlink("avk32-12345678.tmp", Path(".vk32-00000000.tmp"));
  OutputFile first(Path("first"));
  EXPECT_EQ(Entries(), 5);
  Save(Path("second"), "2");
  first.Write("1");
  first.Commit();
  EXPECT_EQ(Text("first") + Text("second"), "12");
  EXPECT_EQ(Entries(), 6);
}

}  // namespace
}  // namespace vk32
