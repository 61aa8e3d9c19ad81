// Files on the disk, by the system's own calls.
#include "platform/Files.h"

#include <utility>

#include "platform/FileParts.h"
#include "platform/Paths.h"
#include "platform/SystemName.h"
#include "platform/win32/Win32.h"

namespace vk32 {
namespace {

constexpr std::size_t LongestName = 255;  // UTF-16 units
constexpr DWORD ShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

DWORD AttributesOf(const std::string& path) { return GetFileAttributesW(WideOf(path).c_str()); }
bool Has(DWORD attributes, DWORD one) { return attributes != INVALID_FILE_ATTRIBUTES && (attributes & one) != 0; }

RuntimeFault NotWrittenNow(RuntimeFault::Number number, const std::string& path) {
  return NotWritten(number, path, static_cast<std::int32_t>(GetLastError()));
}

/// Opens a file of a name that is not taken. Others may look into it, and put it in its place, while it is open; but no
/// other save takes it for a leftover then.
HANDLE CreateBeside(const std::string& folder, std::string& path) {
  for (int attempt = 0; attempt < 100; ++attempt) {
    path = TemporaryName(folder);
    const HANDLE file = CreateFileW(WideOf(path).c_str(), GENERIC_WRITE | DELETE, ShareAll, nullptr, CREATE_NEW,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file != INVALID_HANDLE_VALUE || GetLastError() != ERROR_FILE_EXISTS) return file;
  }
  return INVALID_HANDLE_VALUE;
}

/// A place as a user writes it; one that is too long for that stays as the system gives it.
std::string Plain(const std::string& place) {
  constexpr std::string_view Start = R"(\\?\)", Network = R"(\\?\UNC\)";
  if (place.size() >= MAX_PATH) return place;
  if (place.starts_with(Network)) return R"(\\)" + place.substr(Network.size());
  return place.starts_with(Start) ? place.substr(Start.size()) : place;
}

/// Whether a file could be made there: only the attempt tells.
DWORD TryToCreate(const std::string& folder) {
  const HANDLE file = CreateFileW(WideOf(TemporaryName(folder)).c_str(), GENERIC_WRITE | DELETE, 0, nullptr, CREATE_NEW,
                                  FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
  if (file == INVALID_HANDLE_VALUE) return GetLastError();
  CloseHandle(file);
  return ERROR_SUCCESS;
}

}  // namespace

std::string RealPlace(const std::string& path) {
  if (!Has(AttributesOf(path), FILE_ATTRIBUTE_REPARSE_POINT)) return path;
  const HANDLE file = OpenExisting(WideOf(path), {0, ShareAll, FILE_FLAG_BACKUP_SEMANTICS});
  if (file == INVALID_HANDLE_VALUE) return path;
  const OwnedHandle owned(file);
  std::wstring place(GetFinalPathNameByHandleW(file, nullptr, 0, FILE_NAME_NORMALIZED), L'\0');
  place.resize(GetFinalPathNameByHandleW(file, place.data(), static_cast<DWORD>(place.size()), FILE_NAME_NORMALIZED));
  return place.empty() ? path : Plain(NarrowOf(place));
}

/// The move into a place is written through.
void StoreFolder(const std::string&) {}

void RemoveLeftover(const std::string& path) {
  // A file whose save goes on is open, and so can't be had alone.
  const HANDLE file = OpenExisting(WideOf(path), {DELETE, 0, FILE_FLAG_DELETE_ON_CLOSE | FILE_FLAG_OPEN_REPARSE_POINT});
  if (file != INVALID_HANDLE_VALUE) CloseHandle(file);
}

std::string WhyNotNamed(const std::string& name) {
  if (WideOf(name).size() > LongestName) return WordsFor(Obstacle::NameTooLong, name);
  if (name.find_first_of(R"(<>:"|?*)") != std::string::npos) return WordsFor(Obstacle::NameForbidden, name);
  return NamesDevice(WideOf(name)) ? WordsFor(Obstacle::IsDevice, name) : "";
}

std::string WhyNotReplaced(const std::string& target) {
  const DWORD attributes = AttributesOf(target);
  if (Has(attributes, FILE_ATTRIBUTE_DIRECTORY)) return WordsFor(Obstacle::IsFolder, target);
  return Has(attributes, FILE_ATTRIBUTE_READONLY) ? WordsFor(Obstacle::FileReadOnly, target) : "";
}

std::string WhyNotInFolder(const std::string& folder) {
  const DWORD attributes = AttributesOf(folder);
  if (attributes == INVALID_FILE_ATTRIBUTES) {
    const DWORD error = GetLastError();
    const bool missing = error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND;
    return missing ? WordsFor(Obstacle::NoFolder, folder) : NotReached(folder, static_cast<std::int32_t>(error));
  }
  if (!Has(attributes, FILE_ATTRIBUTE_DIRECTORY)) return WordsFor(Obstacle::IsNoFolder, folder);
  ULARGE_INTEGER room{};
  if (GetDiskFreeSpaceExW(WideOf(folder).c_str(), &room, nullptr, nullptr) != 0 && room.QuadPart < SmallFile) {
    return WordsFor(Obstacle::DiskFull, folder);
  }
  switch (TryToCreate(folder)) {
    case ERROR_ACCESS_DENIED: return WordsFor(Obstacle::FolderForbidden, folder);
    case ERROR_WRITE_PROTECT: return WordsFor(Obstacle::DiskReadOnly, folder);
    default: return "";
  }
}

InputFile::InputFile(const std::string& path) {
  const std::wstring wide = WideOf(path);
  const HANDLE file = NamesDevice(wide) ? INVALID_HANDLE_VALUE : OpenExisting(wide, {});
  if (file == INVALID_HANDLE_VALUE) {
    const DWORD error = GetLastError();
    const bool missing = !NamesDevice(wide) && (error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND);
    throw RuntimeFault(missing ? RuntimeFault::FileNotFound : RuntimeFault::PathFileAccessError);
  }
  fd_ = NumberOf(file);
  LARGE_INTEGER size{};
  if (GetFileType(file) != FILE_TYPE_DISK || GetFileSizeEx(file, &size) == 0) {
    CloseHandle(file);
    throw RuntimeFault(RuntimeFault::PathFileAccessError);
  }
  size_ = static_cast<std::uint64_t>(size.QuadPart);
}

InputFile::~InputFile() { CloseHandle(HandleOf(fd_)); }

std::size_t InputFile::ReadSome() {
  DWORD taken = 0;
  if (ReadFile(HandleOf(fd_), buffer_.data(), static_cast<DWORD>(buffer_.size()), &taken, nullptr) == 0) {
    throw RuntimeFault(RuntimeFault::DeviceIOError);
  }
  return taken;
}

void OutputFile::Create() {
  const HANDLE file = CreateBeside(FolderOf(target_), temporary_);
  if (file == INVALID_HANDLE_VALUE) throw NotWrittenNow(RuntimeFault::PathFileAccessError, target_);
  fd_ = NumberOf(file);
}

OutputFile::~OutputFile() {
  if (fd_ != -1) CloseHandle(HandleOf(fd_));
  if (!temporary_.empty()) DeleteFileW(WideOf(temporary_).c_str());
}

std::size_t OutputFile::WriteSome(std::string_view bytes) {
  DWORD taken = 0;
  if (WriteFile(HandleOf(fd_), bytes.data(), static_cast<DWORD>(bytes.size()), &taken, nullptr) == 0 || taken == 0) {
    throw NotWrittenNow(RuntimeFault::DeviceIOError, target_);
  }
  return taken;
}

void OutputFile::StoreBytes() {
  if (FlushFileBuffers(HandleOf(fd_)) == 0) throw NotWrittenNow(RuntimeFault::DeviceIOError, target_);
}

/// A whole disk can be told to store what it has by an administrator alone.
void OutputFile::StoreBytesOfAll(const std::list<OutputFile*>& files) {
  for (OutputFile* file : files) file->StoreBytes();
}

void OutputFile::TakePlace() {
  const std::wstring target = WideOf(target_), temporary = WideOf(temporary_);
  const std::wstring old = WideOf(TemporaryName(FolderOf(target_)));
  CloseHandle(HandleOf(std::exchange(fd_, -1)));  // an open file replaces nothing
  // The replaced file's rights go to the new one. A disk that can't do that gets it moved over the old one.
  if (ReplaceFileW(target.c_str(), temporary.c_str(), old.c_str(), REPLACEFILE_IGNORE_MERGE_ERRORS, nullptr, nullptr) ==
      0) {
    const DWORD why = GetLastError();
    if (MoveFileExW(temporary.c_str(), target.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) == 0) {
      const DWORD error = why == ERROR_SHARING_VIOLATION ? why : GetLastError();
      MoveFileExW(old.c_str(), target.c_str(), 0);  // where the first attempt has come half way
      throw NotWritten(RuntimeFault::PathFileAccessError, target_, static_cast<std::int32_t>(error));
    }
  }
  DeleteFileW(old.c_str());
  temporary_.clear();
}

}  // namespace vk32
