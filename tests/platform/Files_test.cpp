// Reading files, and replacing them as a whole, on a real disk.
#include "platform/Files.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>

#include "platform/Fault.h"

namespace vk32 {
namespace {

namespace fs = std::filesystem;

class FilesTest : public testing::Test {
 protected:
  FilesTest() {
    std::string name = testing::TempDir() + "/files.XXXXXX";
    folder_ = mkdtemp(name.data());
  }
  ~FilesTest() override { fs::remove_all(folder_); }

  std::string Path(const std::string& name) const { return folder_ / name; }

  void Put(const std::string& name, const std::string& text) { std::ofstream(folder_ / name) << text; }

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

  fs::path folder_;
};

TEST_F(FilesTest, ReadsEveryByteOnce) {
  std::string all;
  for (int i = 0; i < 40000; ++i) all += static_cast<char>(i * 7);
  Put("all", all);
  InputFile file(Path("all"));
  EXPECT_EQ(file.Size(), 40000u);
  std::string got;
  for (int byte = file.Get(); byte >= 0; byte = file.Get()) got += static_cast<char>(byte);
  EXPECT_EQ(got, all);
  EXPECT_EQ(file.Get(), -1);
  Put("empty", "");
  EXPECT_EQ(InputFile(Path("empty")).Get(), -1);
}

TEST_F(FilesTest, WhatIsNoFileIsNotRead) {
  ASSERT_EQ(mkfifo(Path("pipe").c_str(), 0666), 0);
  EXPECT_EQ(Fault([&] { InputFile file(Path("none")); }), 53);
  EXPECT_EQ(Fault([&] { InputFile file(""); }), 53);
  EXPECT_EQ(Fault([&] { InputFile file(Path("")); }), 75);
  EXPECT_EQ(Fault([&] { InputFile file(Path("pipe")); }), 75);
  EXPECT_EQ(Fault([&] { InputFile file("/dev/zero"); }), 75);
  Put("file", "");
  EXPECT_EQ(Fault([&] { InputFile file(Path("file/below")); }), 75);
  // The only regular file of every system that opens and can't be read at its start.
  EXPECT_EQ(Fault([&] { InputFile("/proc/self/mem").Get(); }), 57);
}

TEST_F(FilesTest, NewFileHasTheUsualMode) {
  const mode_t before = umask(027);
  Save(Path("new"), "text");
  umask(before);
  EXPECT_EQ(Text("new"), "text");
  EXPECT_EQ(Mode("new"), 0640u);
  EXPECT_EQ(Entries(), 1);
}

TEST_F(FilesTest, OldFileStandsUntilCommit) {
  Put("file", "old");
  chmod(Path("file").c_str(), 0604);
  {
    OutputFile file(Path("file"));
    file.Write(std::string(200000, 'x'));
    EXPECT_EQ(Text("file"), "old");
  }
  EXPECT_EQ(Text("file"), "old");
  EXPECT_EQ(Entries(), 1);
  Save(Path("file"), std::string(200000, 'x'));
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
  EXPECT_EQ(Text("far/file"), "new");
  EXPECT_EQ(Text("far/new"), "first");
  for (const char* link : {"link", "again", "early"}) EXPECT_TRUE(fs::is_symlink(Path(link))) << link;
  EXPECT_EQ(Entries(), 4);
}

TEST_F(FilesTest, PlacesWhereNothingCanBeSaved) {
  fs::create_directory(Path("folder"));
  Put("file", "");
  fs::create_symlink("circle", Path("circle"));
  ASSERT_EQ(mkfifo(Path("pipe").c_str(), 0666), 0);
  struct Row {
    std::string path;
    const char* why;
  };
  for (const Row& row : {
           Row{"", "no name"},
           Row{Path(""), "names a folder"},
           Row{Path("folder"), "is a folder"},
           Row{Path("folder/"), "names a folder"},
           Row{Path("none/file"), "does not exist"},
           Row{Path("file/below"), "is not a folder"},
           Row{Path("file/far/below"), "can't be reached"},
           Row{Path("pipe"), "is a device"},
           Row{"/dev/null", "is a device"},
           Row{Path("circle"), "leads back to itself"},
           Row{Path(std::string(256, 'x')), "is too long"},
       }) {
    EXPECT_NE(WhyNotWritable(row.path).find(row.why), std::string::npos) << WhyNotWritable(row.path);
    EXPECT_EQ(Fault([&] { OutputFile file(row.path); }), 75) << row.path;
  }
  for (const std::string& good : {Path("file"), Path("new"), Path("folder/new"), Path(std::string(255, 'x'))}) {
    EXPECT_EQ(WhyNotWritable(good), "");
  }
  EXPECT_EQ(Entries(), 4);
}

TEST_F(FilesTest, PlacesThatBelongToOthers) {
  if (geteuid() != 0) GTEST_SKIP() << "only the superuser can lay out another's files";
  chmod(folder_.c_str(), 0777);
  for (const char* name : {"closed", "sticky", "open"}) fs::create_directory(Path(name));
  chmod(Path("sticky").c_str(), 01777);
  chmod(Path("open").c_str(), 0777);
  for (const char* name : {"open/read-only", "sticky/theirs", "open/theirs"}) {
    Put(name, "");
    chmod(Path(name).c_str(), name == std::string("open/read-only") ? 0644 : 0666);
  }
  struct Row {
    const char* name;
    const char* why;
  };
  const Row rows[] = {{"closed/new", "You may not save files in the folder"},
                      {"open/read-only", "is read-only"},
                      {"sticky/theirs", "belongs to another user"},
                      {"sticky/new", ""},
                      {"open/theirs", ""}};
  const pid_t child = fork();
  if (child == 0) {
    int wrong = setgid(65534) == 0 && setuid(65534) == 0 ? 0 : 1;
    for (const Row& row : rows) {
      const std::string why = WhyNotWritable(Path(row.name));
      const int fault = Fault([&] { Save(Path(row.name), "new"); });
      if (why.find(row.why) == std::string::npos || fault != (why.empty() ? 0 : 75)) ++wrong;
      if (why.empty() != (row.why[0] == 0)) ++wrong;
    }
    _exit(wrong);
  }
  int status = 0;
  waitpid(child, &status, 0);
  EXPECT_TRUE(WIFEXITED(status));
  EXPECT_EQ(WEXITSTATUS(status), 0);
}

TEST_F(FilesTest, FullDiskLeavesTheOldFile) {
  Put("file", "old");
  const auto before = signal(SIGXFSZ, SIG_IGN);
  rlimit limit{};
  ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &limit), 0);
  const rlimit small{100000, limit.rlim_max};
  setrlimit(RLIMIT_FSIZE, &small);
  const int atOnce = Fault([&] { Save(Path("file"), std::string(200000, 'x')); });
  const int atCommit = Fault([&] {
    OutputFile file(Path("file"));
    for (int i = 0; i < 101; ++i) file.Write(std::string(1000, 'x'));
    EXPECT_EQ(Fault([&] { file.Commit(); }), 57);
    file.Commit();
  });
  setrlimit(RLIMIT_FSIZE, &limit);
  signal(SIGXFSZ, before);
  EXPECT_EQ(atOnce, 57);
  EXPECT_EQ(atCommit, 57);
  EXPECT_EQ(Text("file"), "old");
  EXPECT_EQ(Entries(), 1);
}

}  // namespace
}  // namespace vk32
