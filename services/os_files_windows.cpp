#include <windows.h>

#include <algorithm>
#include <filesystem>
#include <utility>

#include "services/faults.h"
#include "services/os_files.h"
#include "services/paths.h"

// The header gives these two names a letter at the end by macro.
#undef DeleteFile
#undef ReadFile

namespace rws::os {

const bool kMindsCase = false;

namespace {

std::wstring Wide(const std::string& path) {
  const int length = static_cast<int>(path.size());
  std::wstring wide(
      static_cast<std::size_t>(::MultiByteToWideChar(CP_UTF8, 0, path.data(), length, nullptr, 0)),
      0);
  ::MultiByteToWideChar(CP_UTF8, 0, path.data(), length, wide.data(),
                        static_cast<int>(wide.size()));
  return wide;
}

std::string Narrow(const std::wstring& wide) {
  const int length = static_cast<int>(wide.size());
  std::string text(static_cast<std::size_t>(::WideCharToMultiByte(CP_UTF8, 0, wide.data(), length,
                                                                  nullptr, 0, nullptr, nullptr)),
                   0);
  ::WideCharToMultiByte(CP_UTF8, 0, wide.data(), length, text.data(), static_cast<int>(text.size()),
                        nullptr, nullptr);
  return text;
}

[[noreturn]] void Fail(std::string_view action, const std::string& path, DWORD error) {
  switch (error) {
    case ERROR_FILE_NOT_FOUND:
      throw FileNotFoundFault(path);
    case ERROR_PATH_NOT_FOUND:
      throw PathNotFoundFault(path);
    case ERROR_ALREADY_EXISTS:
    case ERROR_FILE_EXISTS:
      throw FileExistsFault(path);
    default:
      break;
  }
  const int number = error == ERROR_ACCESS_DENIED || error == ERROR_SHARING_VIOLATION
                         ? fault::Permission
                         : fault::FileIo;
  throw FileFault(number, action, path, std::system_category().message(static_cast<int>(error)));
}

/** A file's time counts tenths of a microsecond from 1601 on. */
constexpr std::int64_t kTick = 100, kTicksTo1970 = 116'444'736'000'000'000;

class Handle {
 public:
  Handle(const std::string& path, const std::string& shownAs, DWORD access, DWORD creation)
      : handle_(::CreateFileW(Wide(path).c_str(), access, FILE_SHARE_READ | FILE_SHARE_DELETE,
                              nullptr, creation, FILE_ATTRIBUTE_NORMAL, nullptr)) {
    if (handle_ == INVALID_HANDLE_VALUE) Fail("open", shownAs, ::GetLastError());
  }
  ~Handle() {
    if (handle_ != INVALID_HANDLE_VALUE) ::CloseHandle(handle_);
  }
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;
  HANDLE Get() const { return handle_; }
  HANDLE Release() { return std::exchange(handle_, INVALID_HANDLE_VALUE); }

 private:
  HANDLE handle_;
};

constexpr std::size_t kChunk = 1u << 20;

class WindowsOutput : public OutputFile {
 public:
  WindowsOutput(const std::string& path, OpenMode mode, const std::string& shownAs)
      : path_(shownAs),
        file_(path, shownAs, mode == OpenMode::Append ? FILE_APPEND_DATA : GENERIC_WRITE,
              mode == OpenMode::Append ? OPEN_ALWAYS : CREATE_NEW) {}

  void Write(std::string_view bytes) override {
    while (!bytes.empty()) {
      DWORD written = 0;
      const DWORD count = static_cast<DWORD>(std::min(bytes.size(), kChunk));
      if (!::WriteFile(file_.Get(), bytes.data(), count, &written, nullptr))
        Fail("write", path_, ::GetLastError());
      bytes.remove_prefix(written);
    }
  }
  void Sync() override {
    if (!::FlushFileBuffers(file_.Get())) Fail("flush", path_, ::GetLastError());
  }
  void Close() override {
    if (!::CloseHandle(file_.Release())) Fail("close", path_, ::GetLastError());
  }

 private:
  std::string path_;
  Handle file_;
};

/** No other can open it meanwhile, and the system deletes it with the last handle. */
class WindowsHeld : public HeldFile {
 public:
  explicit WindowsHeld(HANDLE file) : file_(file) {}
  ~WindowsHeld() override { ::CloseHandle(file_); }

 private:
  HANDLE file_;
};

}  // namespace

std::unique_ptr<HeldFile> TryHold(const std::string& path) {
  const HANDLE file = ::CreateFileW(Wide(path).c_str(), GENERIC_WRITE | DELETE, 0, nullptr,
                                    OPEN_ALWAYS, FILE_FLAG_DELETE_ON_CLOSE, nullptr);
  if (file != INVALID_HANDLE_VALUE) return std::make_unique<WindowsHeld>(file);
  const DWORD error = ::GetLastError();
  // The second is said of a file that is just being deleted.
  if (error != ERROR_SHARING_VIOLATION && error != ERROR_ACCESS_DENIED) Fail("lock", path, error);
  return nullptr;
}

void Pause(int milliseconds) { ::Sleep(static_cast<DWORD>(milliseconds)); }

bool Stat(const std::string& path, EntryKind& kind) {
  std::error_code error;
  const auto status = std::filesystem::status(Wide(path), error);
  if (error || !std::filesystem::exists(status)) return false;
  kind = std::filesystem::is_directory(status)      ? EntryKind::Folder
         : std::filesystem::is_regular_file(status) ? EntryKind::File
                                                    : EntryKind::Other;
  return true;
}

bool IsGone(const std::string& path) {
  if (::GetFileAttributesW(Wide(path).c_str()) != INVALID_FILE_ATTRIBUTES) return false;
  const DWORD error = ::GetLastError();
  return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND;
}

FileStamp Stamp(const std::string& path) {
  WIN32_FILE_ATTRIBUTE_DATA info;
  if (!::GetFileAttributesExW(Wide(path).c_str(), GetFileExInfoStandard, &info)) return {};
  const std::int64_t ticks = static_cast<std::int64_t>(info.ftLastWriteTime.dwHighDateTime) << 32 |
                             info.ftLastWriteTime.dwLowDateTime;
  return {true, std::uint64_t{info.nFileSizeHigh} << 32 | info.nFileSizeLow,
          (ticks - kTicksTo1970) * kTick};
}

DateTime LocalTime(std::int64_t nanoseconds) {
  const std::int64_t ticks = nanoseconds / kTick + kTicksTo1970;
  const FILETIME time{static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
  SYSTEMTIME universal{}, local{};
  ::FileTimeToSystemTime(&time, &universal);
  ::SystemTimeToTzSpecificLocalTime(nullptr, &universal, &local);
  return {local.wYear, local.wMonth, local.wDay, local.wHour, local.wMinute, local.wSecond};
}

bool IsReadOnly(const std::string& path) {
  const DWORD attributes = ::GetFileAttributesW(Wide(path).c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0;
}

bool Exists(const std::string& path) {
  std::error_code error;
  return std::filesystem::exists(std::filesystem::symlink_status(Wide(path), error));
}

std::string Spelling(const std::string& path) {
  WIN32_FIND_DATAW found;
  const HANDLE search = ::FindFirstFileW(Wide(path).c_str(), &found);
  // A root and a path that ends in a separator have no last name to be found.
  if (search == INVALID_HANDLE_VALUE) return path;
  ::FindClose(search);
  const std::string folder = StripFileName(path), given = path.substr(folder.size());
  return given == "." || given == ".." ? path : folder + Narrow(found.cFileName);
}

bool SameFile(const std::string& a, const std::string& b) {
  std::error_code error;
  return std::filesystem::equivalent(Wide(a), Wide(b), error) && !error;
}

std::string FollowLinks(const std::string& path) {
  std::error_code error;
  if (!std::filesystem::is_symlink(Wide(path), error)) return path;
  const auto real = std::filesystem::canonical(Wide(path), error);
  return error ? path : Narrow(real.wstring());
}

std::string ProgramFile() {
  std::wstring path(32768, L'\0');
  path.resize(::GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
  return Narrow(path);
}

std::string UserDataFolder() {
  std::wstring path(32768, L'\0');
  path.resize(
      ::GetEnvironmentVariableW(L"LOCALAPPDATA", path.data(), static_cast<DWORD>(path.size())));
  return Narrow(path);
}

bool CanWriteInto(const std::string& folder) {
  // Rights on Windows are only known by trying.
  const std::string probe = BuildPath(folder, "rws-write-test.tmp");
  const HANDLE file = ::CreateFileW(Wide(probe).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                    FILE_FLAG_DELETE_ON_CLOSE, nullptr);
  if (file == INVALID_HANDLE_VALUE) return false;
  ::CloseHandle(file);
  return true;
}

std::string ReadFile(const std::string& path, std::uint64_t most) {
  Handle file(path, path, GENERIC_READ, OPEN_EXISTING);
  std::string bytes;
  std::string chunk(kChunk, 0);
  while (true) {
    DWORD count = 0;
    if (!::ReadFile(file.Get(), chunk.data(), static_cast<DWORD>(chunk.size()), &count, nullptr))
      Fail("read", path, ::GetLastError());
    if (count == 0) return bytes;
    bytes.append(chunk, 0, count);
    if (bytes.size() > most) Fail("read", path, ERROR_FILE_TOO_LARGE);
  }
}

std::vector<Entry> ListFolder(const std::string& path) {
  std::vector<Entry> entries;
  std::error_code error;
  std::filesystem::directory_iterator it(Wide(path), error);
  if (error) throw PathNotFoundFault(path);
  for (; it != std::filesystem::directory_iterator(); it.increment(error)) {
    const EntryKind kind = it->is_symlink(error)        ? EntryKind::Link
                           : it->is_directory(error)    ? EntryKind::Folder
                           : it->is_regular_file(error) ? EntryKind::File
                                                        : EntryKind::Other;
    entries.push_back({Narrow(it->path().filename().wstring()), kind});
  }
  return entries;
}

std::unique_ptr<OutputFile> OpenOutput(const std::string& path, OpenMode mode,
                                       const std::string& shownAs) {
  return std::make_unique<WindowsOutput>(path, mode, shownAs);
}

void CopyMode(const std::string&, const std::string&) {}

void CopyTime(const std::string& from, const std::string& to) {
  WIN32_FILE_ATTRIBUTE_DATA info;
  if (!::GetFileAttributesExW(Wide(from).c_str(), GetFileExInfoStandard, &info)) return;
  const HANDLE file = ::CreateFileW(Wide(to).c_str(), FILE_WRITE_ATTRIBUTES,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) return;
  ::SetFileTime(file, nullptr, nullptr, &info.ftLastWriteTime);
  ::CloseHandle(file);
}

void SyncFolderOf(const std::string&) {
  // NTFS keeps its folders in a journal; write-through renames do the rest.
}

void RenameOver(const std::string& from, const std::string& to, bool evenReadOnly) {
  const auto rename = [&] {
    return ::MoveFileExW(Wide(from).c_str(), Wide(to).c_str(),
                         MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
  };
  if (rename()) return;
  const DWORD error = ::GetLastError();
  const DWORD attributes = ::GetFileAttributesW(Wide(to).c_str());
  const bool isReadOnly =
      attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0;
  if (!evenReadOnly || !isReadOnly) Fail("rename", from, error);
  ::SetFileAttributesW(Wide(to).c_str(), attributes & ~DWORD{FILE_ATTRIBUTE_READONLY});
  if (rename()) return;
  const DWORD second = ::GetLastError();
  ::SetFileAttributesW(Wide(to).c_str(), attributes);
  Fail("rename", from, second);
}

bool RenameNew(const std::string& from, const std::string& to) {
  if (::MoveFileExW(Wide(from).c_str(), Wide(to).c_str(), MOVEFILE_WRITE_THROUGH)) return true;
  const DWORD error = ::GetLastError();
  if (error == ERROR_NOT_SAME_DEVICE) return false;
  if (error == ERROR_ALREADY_EXISTS || error == ERROR_FILE_EXISTS) throw FileExistsFault(to);
  Fail("rename", from, error);
}

void Link(const std::string& from, const std::string& to) {
  if (::CreateHardLinkW(Wide(to).c_str(), Wide(from).c_str(), nullptr)) return;
  const DWORD error = ::GetLastError();
  if (error == ERROR_ALREADY_EXISTS || error == ERROR_FILE_EXISTS) throw FileExistsFault(to);
  Fail("link", from, error);
}

void DeleteFile(const std::string& path) {
  if (!::DeleteFileW(Wide(path).c_str())) Fail("delete", path, ::GetLastError());
}

void CreateFolder(const std::string& path) {
  if (!::CreateDirectoryW(Wide(path).c_str(), nullptr)) Fail("create", path, ::GetLastError());
}

std::string AbsolutePath(const std::string& path) {
  std::error_code error;
  const auto absolute = std::filesystem::absolute(Wide(path), error);
  return error ? path : Narrow(absolute.lexically_normal().wstring());
}

}  // namespace rws::os
