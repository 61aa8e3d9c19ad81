// Reading files, and replacing them as a whole, on a real disk.
#include "platform/Files.h"

#include <sys/resource.h>
#include <sys/statvfs.h>
#include <sys/syscall.h>

#include <filesystem>
#include <fstream>

#include "support/Harness.h"

/// What the disk refuses.
static struct Disk {
  int file = 0, folder = 0;  // errno of their syncs
  bool modes = true, full = false;
  bool cleared = false;  // once: another save takes a new file for a leftover, just before it is locked
} disk;

// The system's own, but for what the disk refuses: no real one can be made to.
extern "C" int fsync(int fd) {
  struct stat found {};
  fstat(fd, &found);
  errno = S_ISDIR(found.st_mode) ? disk.folder : disk.file;
  return errno != 0 ? -1 : static_cast<int>(syscall(SYS_fsync, fd));
}
extern "C" int syncfs(int fd) noexcept {
  errno = disk.file;
  return errno != 0 ? -1 : static_cast<int>(syscall(SYS_syncfs, fd));
}
extern "C" int fchmod(int fd, mode_t mode) noexcept {
  return disk.modes ? static_cast<int>(syscall(SYS_fchmod, fd, mode)) : -1;
}
extern "C" int flock(int fd, int operation) noexcept {
  if (std::exchange(disk.cleared, false)) {
    unlink(std::filesystem::read_symlink("/proc/self/fd/" + std::to_string(fd)).c_str());
  }
  return static_cast<int>(syscall(SYS_flock, fd, operation));
}
extern "C" int statvfs(const char*, struct statvfs* found) noexcept {
  *found = {};
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
    InputFile file(Path(name));
    std::string text, piece = "?";
    for (; !piece.empty(); text += piece) piece = file.Read(777);
    return text;
  }
  unsigned Mode(std::string_view name) const { return static_cast<unsigned>(fs::status(folder_ / name).permissions()); }
  /// The number of the fault that a save ends with; 0 if it ends well.
  int Save(const std::string& name, std::string_view text) const {
    return FaultOf([&] {
      OutputFile file(Path(name));
      file.Write(text);
      file.Commit();
    });
  }
  /// Things in the folder or in another one, temporary files included.
  long Entries(const fs::path& other = "") const { return std::distance(fs::directory_iterator(folder_ / other), {}); }

  const TemporaryFile file_{"file"};
  const fs::path folder_ = fs::path(file_.Path()).parent_path();
};

TEST_F(FilesTest, WhatIsNoFileIsNotReadAndKeepsNothingOpen) {
  ASSERT_EQ(mkfifo(Path("pipe").c_str(), 0666), 0);
  Put("file", "");
  const auto before = Entries("/proc/self/fd");
  const auto fault = [&](const std::string& path) { return FaultOf([&] { InputFile(path).Get(); }); };
  for (const auto& path : {Path(""), Path("pipe"), Path("file/below")}) EXPECT_EQ(fault(path), 75) << path;
  EXPECT_EQ(fault(Path("none")), 53);
  EXPECT_EQ(fault("/proc/self/mem"), 57);  // the only one of every system that opens and can't be read at its start
  EXPECT_EQ(fault(Path("file")), 0);
  EXPECT_EQ(Entries("/proc/self/fd"), before);
}

TEST_F(FilesTest, OldFileStandsUntilCommitAndALinkStaysALink) {
  std::string all;
  for (int i = 0; i < 200000; ++i) all += static_cast<char>(i * 7);
  fs::create_directory(Path("far"));
  fs::create_symlink("far/file", Path("link"));
  fs::create_symlink("link", Path("again"));
  const mode_t before = umask(027);
  EXPECT_EQ(Save("again", "old"), 0);
  umask(before);
  EXPECT_EQ(Mode("far/file"), 0640u);  // of a new file, as usual
  chmod(Path("link").c_str(), 0604);
  for (const bool commit : {false, true}) {
    OutputFile file(Path("again"));
    file.Write(all);
    EXPECT_EQ(Text("far/file"), "old");
    if (commit) file.Commit();
  }
  EXPECT_EQ(Text("far/file"), all);
  EXPECT_EQ(Mode("far/file"), 0604u);
  EXPECT_TRUE(fs::is_symlink(Path("link")) && fs::is_symlink(Path("again")));
  EXPECT_EQ(Entries() + Entries(Path("far")), 4);
}

TEST_F(FilesTest, PlacesWhereNothingCanBeSaved) {
  chmod(folder_.c_str(), 0777);
  for (const auto& [name, mode] : {std::pair("folder", 0777), {"sticky", 01777}, {"closed", 0755}}) {
    fs::create_directory(Path(name));
    chmod(Path(name).c_str(), mode);
  }
  for (const auto& [name, mode] : {std::pair("file", 0606), {"sticky/file", 0666}, {"locked", 0644}}) {
    Put(name, "", mode);
  }
  fs::create_symlink("circle", Path("circle"));
  ASSERT_EQ(mkfifo(Path("pipe").c_str(), 0666), 0);
  disk.full = true;
  EXPECT_NE(WhyNotWritable(Path("new")).find("is full"), std::string::npos);
  disk = {};
  auto rows = Split(
      "folder|is a folder,folder/|names a folder,none/file|does not exist,file/below|is not a folder,"
      "file/far/below|can't be reached,pipe|is a device,circle|leads back",
      ',');
  rows.push_back(std::string(256, 'x') + "|is too long");
  const bool others = geteuid() == 0;  // only the superuser can lay out another's files
  if (others) rows.insert(rows.end(), {"closed/new|may not save", "locked|is read-only", "sticky/file|another user"});
  // What the save gives, to another user if there is one; 255 if other words are told.
  const auto save = [&](const std::string& name, const std::string& why) {
    if (others && (setgid(65534) != 0 || setuid(65534) != 0)) _exit(254);
    const std::string told = WhyNotWritable(Path(name));
    _exit(told.find(why) != std::string::npos && told.empty() == why.empty() ? Save(name, "new") : 255);
  };
  for (const std::string& row : rows) {
    const std::size_t bar = row.find('|');
    EXPECT_EXIT(save(row.substr(0, bar), row.substr(bar + 1)), testing::ExitedWithCode(75), "") << row;
  }
  EXPECT_NE(WhyNotWritable(""), "");
  // Their group has become others, and others the group.
  for (const auto& [name, mode] :
       {std::pair("file", 0600u), {"sticky/new", 0644}, {"sticky/new", 0644}, {"folder/new", 0644}}) {
    EXPECT_EXIT(save(name, ""), testing::ExitedWithCode(0), "") << name;
    EXPECT_TRUE(Mode(name) == mode || !others) << name;
  }
  EXPECT_EQ(Save(std::string(255, 'x'), ""), 0);
  EXPECT_EQ(Entries(), 8);
}

TEST_F(FilesTest, OfTheNewFileAllIsStoredOrNothing) {
  const auto open = Entries("/proc/self/fd");
  const auto saveOnFullDisk = [&] {
    const rlimit small{100, 100};
    signal(SIGXFSZ, SIG_IGN);
    _exit(setrlimit(RLIMIT_FSIZE, &small) + Save("file", std::string(101, 'x')));
  };
  const auto saveBoth = [&](Lasting lasting) {
    return FaultOf([&] {
      std::list<OutputFile> files;
      for (const char* name : {"file", "other"}) files.emplace_back(Path(name), lasting).Write("both");
      OutputFile::CommitAll(files);
    });
  };
  for (const mode_t mode : {0600u, 0664u}) {
    Put("file", "old", mode);
    disk = {};
    EXPECT_EXIT(saveOnFullDisk(), testing::ExitedWithCode(57), "");
    disk.file = EIO;
    EXPECT_EQ(Save("file", "new"), 57);
    EXPECT_EQ(saveBoth(Lasting::ForGood), 57);
    EXPECT_EQ(Text("file"), "old");
    EXPECT_EQ(Entries(), 1);
    EXPECT_EQ(saveBoth(Lasting::ThisRun), 0);
    EXPECT_EQ(Text("file") + Text("other"), "bothboth");
    fs::remove(Path("other"));
    disk = {EINVAL, EIO, false};  // no such step; and the file stands in its place all the same
    EXPECT_EQ(Save("file", "new"), 0);
    EXPECT_EQ(Text("file"), "new");
    EXPECT_EQ(Mode("file"), 0600u);  // at most what the old one had
  }
  EXPECT_EQ(Entries("/proc/self/fd"), open);
  EXPECT_EQ(Entries(), 1);
}

TEST_F(FilesTest, SaveClearsWhatKilledOnesHaveLeft) {
  const auto saveAndDie = [&] {
    OutputFile file(Path("file"));
    file.Write(std::string(100000, 'x'));
    _exit(9);
  };
  EXPECT_EXIT(saveAndDie(), testing::ExitedWithCode(9), "");
  EXPECT_EQ(Entries(), 1);
  for (const char* name : {".vk32-1.tmp", ".vk32-12345678.cfg", "avk32-12345678.tmp"}) Put(name, "");
  fs::create_symlink("avk32-12345678.tmp", Path(".vk32-00000000.tmp"));
  disk.cleared = true;
  OutputFile first(Path("first"));
  Save("second", "2");
  EXPECT_EQ(Entries(), 6);
  first.Write("1");
  first.Commit();
  EXPECT_EQ(Text("first") + Text("second"), "12");
  EXPECT_EQ(Entries(), 6);
}

}  // namespace
}  // namespace vk32
