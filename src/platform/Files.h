// Files that are read byte by byte and files that are replaced as a whole.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <list>
#include <string>
#include <string_view>

namespace vk32 {

/// A regular file, read from its start. Faults: 53 there is none, 75 it can't be opened or is no regular file, 57 it
/// can't be read.
class InputFile {
 public:
  explicit InputFile(const std::string& path);
  ~InputFile();
  InputFile(const InputFile&) = delete;
  InputFile& operator=(const InputFile&) = delete;

  /// The next byte, 0 to 255; -1 at the end.
  int Get() { return next_ < filled_ || Fill() ? static_cast<unsigned char>(buffer_[next_++]) : -1; }
  /// The next `count` bytes, or those that are left.
  std::string Read(std::size_t count);
  /// Bytes in the file when it was opened.
  std::uint64_t Size() const { return size_; }

 private:
  bool Fill();
  /// Reads into the buffer what one call of the system gives; 0 at the end.
  std::size_t ReadSome();

  int fd_ = -1;  // the system's descriptor, or handle
  std::uint64_t size_ = 0;
  std::size_t next_ = 0;
  std::size_t filled_ = 0;
  std::array<char, 16384> buffer_;
};

/// How long a file is to be there. Only what stays for good is worth a wait for the disk.
enum class Lasting { ForGood, ThisRun };

/// A file that is written beside its place and takes it in one step, so that the place holds the old file or the new
/// one and never a part. A link stays a link; an existing file keeps its mode, or gets a narrower one. What killed
/// programs of this user have left in the folder, ".vk32-XXXXXXXX.tmp", goes. Faults, whose descriptions say what
/// happened: 75 nothing can be saved there, 57 the bytes could not be stored.
class OutputFile {
 public:
  explicit OutputFile(const std::string& path, Lasting lasting = Lasting::ForGood);
  /// Without Commit, the old file stays as it is.
  ~OutputFile();
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;

  void Write(std::string_view bytes);
  /// Stores what was written and puts it in its place; the last call.
  void Commit();
  /// Commits many files with one wait for each of their disks. None takes its place before all are stored.
  static void CommitAll(std::list<OutputFile>& files);

 private:
  /// Makes the temporary file, with the rights of the one that it will replace.
  void Create();
  void Flush();
  /// How many of the bytes one call of the system has taken; at least one.
  std::size_t WriteSome(std::string_view bytes);
  /// Waits until the disk has them.
  void StoreBytes();
  /// The same for many, with as few waits as the system allows.
  static void StoreBytesOfAll(const std::list<OutputFile*>& files);
  void TakePlace();

  std::string target_;
  std::string temporary_;  // empty once it has become the target
  Lasting lasting_;
  int fd_ = -1;
  std::string buffer_;
};

/// One sentence for the user that says why no file could be saved at a place and what to do; empty if one could.
std::string WhyNotWritable(const std::string& path);

}  // namespace vk32
