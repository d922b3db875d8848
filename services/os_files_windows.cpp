#include <windows.h>

#include <algorithm>
#include <atomic>
#include <cwchar>
#include <utility>

#include "services/faults.h"
#include "services/os_files.h"
#include "services/paths.h"
#include "services/paths_windows.h"

// The header gives these two names a letter at the end by macro.
#undef DeleteFile
#undef ReadFile

namespace rws::os {

const bool kMindsCase = false;

namespace {

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

bool IsBusy(DWORD error) {
  return error == ERROR_SHARING_VIOLATION || error == ERROR_LOCK_VIOLATION ||
         error == ERROR_USER_MAPPED_FILE;
}

/** The system's words, English where it has them, on one line without the full stop. */
std::string ReasonOf(DWORD error) {
  if (IsBusy(error)) return "it is open in another program";
  std::wstring text(1024, L'\0');
  DWORD length = 0;
  for (const DWORD language : {DWORD{MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US)}, DWORD{0}}) {
    length = ::FormatMessageW(
        FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_MAX_WIDTH_MASK,
        nullptr, error, language, text.data(), static_cast<DWORD>(text.size()), nullptr);
    if (length > 0) break;
  }
  text.resize(length);
  text.erase(text.find_last_not_of(L" .\r\n") + 1);
  return text.empty() ? "error " + std::to_string(error) : Narrow(text);
}

[[noreturn]] void Fail(std::string_view action, const std::string& path, DWORD error) {
  switch (error) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_INVALID_NAME:
      throw FileNotFoundFault(path);
    case ERROR_PATH_NOT_FOUND:
      throw PathNotFoundFault(path);
    case ERROR_ALREADY_EXISTS:
    case ERROR_FILE_EXISTS:
      throw FileExistsFault(path);
    default:
      break;
  }
  int number = fault::FileIo;
  if (error == ERROR_ACCESS_DENIED || error == ERROR_WRITE_PROTECT || IsBusy(error))
    number = fault::Permission;
  if (error == ERROR_NOT_SAME_DEVICE) number = fault::OtherDisk;
  throw FileFault(number, action, path, ReasonOf(error));
}

/** A file's time counts tenths of a microsecond from 1601 on. */
constexpr std::int64_t kTick = 100, kTicksTo1970 = 116'444'736'000'000'000;

HANDLE Open(const std::string& path, DWORD access, DWORD share, DWORD creation, DWORD flags) {
  return ::CreateFileW(CallPath(path).c_str(), access, share, nullptr, creation, flags, nullptr);
}

class Handle {
 public:
  explicit Handle(HANDLE handle) : handle_(handle) {}
  ~Handle() {
    if (IsOpen()) ::CloseHandle(handle_);
  }
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;
  bool IsOpen() const { return handle_ != INVALID_HANDLE_VALUE; }
  HANDLE Get() const { return handle_; }
  HANDLE Release() { return std::exchange(handle_, INVALID_HANDLE_VALUE); }

 private:
  HANDLE handle_;
};

/** What stands at a path, folders too, to be looked at only; links are followed. */
HANDLE OpenToLook(const std::string& path, DWORD access = FILE_READ_ATTRIBUTES) {
  return Open(path, access, kShareAll, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS);
}

/** True for a file that another program has open. Calls that rename or delete it may speak of
   denied access only. */
bool IsHeld(const std::string& path) {
  const Handle file(Open(path, DELETE, 0, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS));
  return !file.IsOpen() && IsBusy(::GetLastError());
}

/** The error that a call ends with, 0 for none. Scanners and indexers have a file open for moments:
    a call that fails for it is tried again, for a second in all. */
template <class Call>
DWORD Patiently(const Call& call, const std::string& mayBeHeld = "") {
  constexpr int kTries = 20, kPause = 50;
  for (int tried = 1;; ++tried) {
    if (call()) return 0;
    const DWORD error = ::GetLastError();
    const bool isBusy = IsBusy(error) || (error == ERROR_ACCESS_DENIED && IsHeld(mayBeHeld));
    if (!isBusy) return error;
    if (tried == kTries) return ERROR_SHARING_VIOLATION;
    Pause(kPause);
  }
}

/** The open file; a fault when another program keeps it to itself for longer than a moment. */
HANDLE OpenPatiently(const std::string& path, const std::string& shownAs, DWORD access, DWORD share,
                     DWORD creation) {
  HANDLE file = INVALID_HANDLE_VALUE;
  const DWORD error = Patiently([&] {
    file = Open(path, access, share, creation, FILE_ATTRIBUTE_NORMAL);
    return file != INVALID_HANDLE_VALUE;
  });
  if (error != 0) Fail("open", shownAs, error);
  return file;
}

/** True if the entry leads elsewhere, as a symbolic link and a junction do. Files that are kept
    elsewhere until they are read have such a mark too, but are files. */
bool IsLink(DWORD attributes, DWORD mark) {
  return (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 && IsReparseTagNameSurrogate(mark);
}

bool Find(const std::string& path, WIN32_FIND_DATAW& found) {
  const HANDLE search = ::FindFirstFileW(CallPath(path).c_str(), &found);
  return search != INVALID_HANDLE_VALUE && ::FindClose(search);
}

/** What stands at a path, and if nothing, the error that says so. */
struct Look {
  DWORD Error = 0;
  WIN32_FILE_ATTRIBUTE_DATA Data{};
};

Look LookAt(const std::string& path) {
  Look look;
  WIN32_FIND_DATAW found;
  if (!::GetFileAttributesExW(CallPath(path).c_str(), GetFileExInfoStandard, &look.Data)) {
    look.Error = ::GetLastError();
    // Some files that the system itself has open can only be looked at from their folder.
    if (IsBusy(look.Error) && Find(path, found))
      look = {0,
              {found.dwFileAttributes, found.ftCreationTime, found.ftLastAccessTime,
               found.ftLastWriteTime, found.nFileSizeHigh, found.nFileSizeLow}};
    return look;
  }
  if ((look.Data.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0) return look;
  const Handle end(OpenToLook(path));
  BY_HANDLE_FILE_INFORMATION info;
  if (!end.IsOpen() || !::GetFileInformationByHandle(end.Get(), &info))
    return {::GetLastError(), {}};
  look.Data = {info.dwFileAttributes, info.ftCreationTime, info.ftLastAccessTime,
               info.ftLastWriteTime,  info.nFileSizeHigh,  info.nFileSizeLow};
  return look;
}

bool Has(const Look& look, DWORD attribute) {
  return look.Error == 0 && (look.Data.dwFileAttributes & attribute) != 0;
}

EntryKind KindOf(DWORD attributes) {
  if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) return EntryKind::Folder;
  return (attributes & FILE_ATTRIBUTE_DEVICE) != 0 ? EntryKind::Other : EntryKind::File;
}

constexpr std::size_t kChunk = 1u << 20;

class WindowsOutput : public OutputFile {
 public:
  WindowsOutput(std::string shownAs, HANDLE file) : path_(std::move(shownAs)), file_(file) {}

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
    if (::FlushFileBuffers(file_.Get())) return;
    const DWORD error = ::GetLastError();
    // Some network drives cannot flush a file and say so; nothing more can be done there.
    if (error != ERROR_INVALID_FUNCTION && error != ERROR_NOT_SUPPORTED)
      Fail("flush", path_, error);
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

 private:
  Handle file_;
};

/** The path that an open file has, links followed; "" where the system does not tell. */
std::string FinalPath(HANDLE file) {
  std::wstring path(32768, L'\0');
  path.resize(::GetFinalPathNameByHandleW(file, path.data(), static_cast<DWORD>(path.size()),
                                          FILE_NAME_NORMALIZED | VOLUME_NAME_DOS));
  return PlainPath(path);
}

/** A rename that is on disk when it returns, where the file system can promise that. */
bool Rename(const std::string& from, const std::string& to, DWORD flags) {
  const std::wstring source = CallPath(from), target = CallPath(to);
  if (::MoveFileExW(source.c_str(), target.c_str(), flags | MOVEFILE_WRITE_THROUGH)) return true;
  const DWORD error = ::GetLastError();
  const bool isTooMuch = error == ERROR_NOT_SUPPORTED || error == ERROR_INVALID_PARAMETER;
  return isTooMuch && ::MoveFileExW(source.c_str(), target.c_str(), flags);
}

}  // namespace

std::unique_ptr<HeldFile> TryHold(const std::string& path) {
  // A file that is just being deleted denies access, and is gone a moment later.
  for (int tries = 2;; --tries) {
    const HANDLE file =
        Open(path, GENERIC_WRITE | DELETE, 0, OPEN_ALWAYS, FILE_FLAG_DELETE_ON_CLOSE);
    if (file != INVALID_HANDLE_VALUE) return std::make_unique<WindowsHeld>(file);
    const DWORD error = ::GetLastError();
    if (IsBusy(error)) return nullptr;
    if (error != ERROR_ACCESS_DENIED) Fail("lock", path, error);
    if (LookAt(path).Error == ERROR_ACCESS_DENIED) return nullptr;
    if (tries == 1) Fail("lock", path, error);
  }
}

void Pause(int milliseconds) { ::Sleep(static_cast<DWORD>(milliseconds)); }

bool Stat(const std::string& path, EntryKind& kind) {
  const Look look = LookAt(path);
  if (look.Error != 0) return false;
  kind = KindOf(look.Data.dwFileAttributes);
  return true;
}

bool IsGone(const std::string& path) {
  const DWORD error = LookAt(path).Error;
  return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND;
}

FileStamp Stamp(const std::string& path) {
  const Look look = LookAt(path);
  if (look.Error != 0) return {};
  const FILETIME& time = look.Data.ftLastWriteTime;
  const std::int64_t ticks =
      static_cast<std::int64_t>(time.dwHighDateTime) << 32 | time.dwLowDateTime;
  return {true, std::uint64_t{look.Data.nFileSizeHigh} << 32 | look.Data.nFileSizeLow,
          (ticks - kTicksTo1970) * kTick};
}

DateTime LocalTime(std::int64_t nanoseconds) {
  const std::int64_t ticks = nanoseconds / kTick + kTicksTo1970;
  const FILETIME time{static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
  SYSTEMTIME universal{}, local{};
  ::FileTimeToSystemTime(&time, &universal);
  // By the rules of that year: those of some zones have changed since.
  TIME_ZONE_INFORMATION zone{};
  const bool isKnown = ::GetTimeZoneInformationForYear(universal.wYear, nullptr, &zone) != 0;
  ::SystemTimeToTzSpecificLocalTime(isKnown ? &zone : nullptr, &universal, &local);
  return {local.wYear, local.wMonth, local.wDay, local.wHour, local.wMinute, local.wSecond};
}

bool IsReadOnly(const std::string& path) {
  const Look look = LookAt(path);
  return Has(look, FILE_ATTRIBUTE_READONLY) && !Has(look, FILE_ATTRIBUTE_DIRECTORY);
}

bool Exists(const std::string& path) {
  WIN32_FIND_DATAW found;
  return ::GetFileAttributesW(CallPath(path).c_str()) != INVALID_FILE_ATTRIBUTES ||
         (IsBusy(::GetLastError()) && Find(path, found));
}

std::string Spelling(const std::string& path) {
  WIN32_FIND_DATAW found;
  // A root and a path that ends in a separator have no last name to be found.
  if (!Find(path, found)) return path;
  const std::string folder = StripFileName(path), given = path.substr(folder.size());
  const bool isNamed = !given.empty() && given != "." && given != ".." && !IsDrive(given);
  return isNamed ? folder + Narrow(found.cFileName) : path;
}

bool SameFile(const std::string& a, const std::string& b) {
  const Handle first(OpenToLook(a)), second(OpenToLook(b));
  BY_HANDLE_FILE_INFORMATION one, other;
  if (!first.IsOpen() || !second.IsOpen() || !::GetFileInformationByHandle(first.Get(), &one) ||
      !::GetFileInformationByHandle(second.Get(), &other))
    return false;
  if (one.dwVolumeSerialNumber != other.dwVolumeSerialNumber ||
      one.nFileIndexHigh != other.nFileIndexHigh || one.nFileIndexLow != other.nFileIndexLow)
    return false;
  // Some network drives have no numbers for their files.
  const bool hasNumber = (one.nFileIndexHigh | one.nFileIndexLow) != 0;
  return hasNumber || FinalPath(first.Get()) == FinalPath(second.Get());
}

std::string FollowLinks(const std::string& path) {
  WIN32_FIND_DATAW found;
  if (!Find(path, found) || !IsLink(found.dwFileAttributes, found.dwReserved0)) return path;
  const Handle end(OpenToLook(path));
  const std::string real = end.IsOpen() ? FinalPath(end.Get()) : "";
  return real.empty() ? path : real;
}

std::string ProgramFile() {
  std::wstring path(32768, L'\0');
  path.resize(::GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
  return PlainPath(path);
}

std::string UserDataFolder() {
  std::wstring path(32768, L'\0');
  path.resize(
      ::GetEnvironmentVariableW(L"LOCALAPPDATA", path.data(), static_cast<DWORD>(path.size())));
  return Narrow(path);
}

bool CanWriteInto(const std::string& folder) {
  // Rights are only known by trying: guards against extortion ask no list of rights. The system
  // deletes the file with its handle.
  static std::atomic<unsigned> count{0};
  const std::string name =
      "rws-write-test-" + std::to_string(::GetCurrentProcessId()) + "-" + std::to_string(count++);
  const Handle probe(
      Open(BuildPath(folder, name + ".tmp"), GENERIC_WRITE | DELETE, FILE_SHARE_DELETE, CREATE_NEW,
           FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE));
  return probe.IsOpen();
}

std::string ReadFile(const std::string& path, std::uint64_t most, FileStamp* stamp) {
  if (stamp) *stamp = Stamp(path);
  const Handle file(OpenPatiently(path, path, GENERIC_READ, kShareAll, OPEN_EXISTING));
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
  struct Closer {
    void operator()(void* search) const { ::FindClose(search); }
  };
  if (path.empty()) throw PathNotFoundFault(path);
  std::vector<Entry> entries;
  WIN32_FIND_DATAW found;
  const HANDLE search =
      ::FindFirstFileExW(CallPath(BuildPath(path, "*")).c_str(), FindExInfoBasic, &found,
                         FindExSearchNameMatch, nullptr, FIND_FIRST_EX_LARGE_FETCH);
  DWORD error = search == INVALID_HANDLE_VALUE ? ::GetLastError() : 0;
  // The root of an empty drive has not even the two entries of other folders.
  if (error == ERROR_FILE_NOT_FOUND && Has(LookAt(path), FILE_ATTRIBUTE_DIRECTORY)) return entries;
  if (error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND || error == ERROR_DIRECTORY ||
      error == ERROR_INVALID_NAME)
    throw PathNotFoundFault(path);
  if (error != 0) Fail("list", path, error);
  const std::unique_ptr<void, Closer> closer(search);
  do {
    const std::wstring_view name = found.cFileName;
    if (name == L"." || name == L"..") continue;
    const bool isLink = IsLink(found.dwFileAttributes, found.dwReserved0);
    entries.push_back({Narrow(name), isLink ? EntryKind::Link : KindOf(found.dwFileAttributes)});
  } while (::FindNextFileW(search, &found));
  error = ::GetLastError();
  if (error != ERROR_NO_MORE_FILES) Fail("list", path, error);
  return entries;
}

std::unique_ptr<OutputFile> OpenOutput(const std::string& path, OpenMode mode,
                                       const std::string& shownAs) {
  const bool isNew = mode == OpenMode::CreateNew;
  const DWORD share = isNew ? FILE_SHARE_READ | FILE_SHARE_DELETE : kShareAll;
  const HANDLE file = OpenPatiently(path, shownAs, isNew ? GENERIC_WRITE : FILE_APPEND_DATA, share,
                                    isNew ? CREATE_NEW : OPEN_ALWAYS);
  return std::make_unique<WindowsOutput>(shownAs, file);
}

void CopyMode(const std::string& from, const std::string& to) {
  constexpr DWORD kCarried = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM |
                             FILE_ATTRIBUTE_NOT_CONTENT_INDEXED | FILE_ATTRIBUTE_READONLY;
  const Look look = LookAt(from);
  // The mark of a file that no backup has yet stays on what is written newly.
  if (Has(look, kCarried))
    ::SetFileAttributesW(CallPath(to).c_str(),
                         (look.Data.dwFileAttributes & kCarried) | FILE_ATTRIBUTE_ARCHIVE);
}

void CopyTime(const std::string& from, const std::string& to) {
  const Look look = LookAt(from);
  const Handle file(OpenToLook(to, FILE_WRITE_ATTRIBUTES));
  if (look.Error == 0 && file.IsOpen())
    ::SetFileTime(file.Get(), nullptr, nullptr, &look.Data.ftLastWriteTime);
}

void SyncFolderOf(const std::string&) {
  // NTFS keeps its folders in a journal; write-through renames do the rest.
}

// Not ReplaceFileW: it would keep the lists of rights and the streams of the old file too, but when
// it fails half-way nothing bears the name.
void RenameOver(const std::string& from, const std::string& to, bool evenReadOnly) {
  const auto rename = [&] { return Rename(from, to, MOVEFILE_REPLACE_EXISTING); };
  const Look old = LookAt(to);
  const bool isReadOnly = IsReadOnly(to);
  if (isReadOnly && !evenReadOnly)
    throw FileFault(fault::Permission, "replace", to, "the file is read-only");
  const std::wstring target = CallPath(to);
  if (isReadOnly)
    ::SetFileAttributesW(target.c_str(),
                         old.Data.dwFileAttributes & ~DWORD{FILE_ATTRIBUTE_READONLY});
  const DWORD error = Patiently(rename, to);
  if (error == 0) return;
  if (isReadOnly) ::SetFileAttributesW(target.c_str(), old.Data.dwFileAttributes);
  Fail("replace", to, error);
}

void RenameNew(const std::string& from, const std::string& to) {
  const DWORD error = Patiently([&] { return Rename(from, to, 0); }, from);
  if (error == 0) return;
  if (error == ERROR_ALREADY_EXISTS || error == ERROR_FILE_EXISTS) throw FileExistsFault(to);
  Fail("rename", from, error);
}

void Link(const std::string& from, const std::string& to) {
  if (::CreateHardLinkW(CallPath(to).c_str(), CallPath(from).c_str(), nullptr)) return;
  const DWORD error = ::GetLastError();
  if (error == ERROR_ALREADY_EXISTS || error == ERROR_FILE_EXISTS) throw FileExistsFault(to);
  Fail("link", from, error);
}

void DeleteFile(const std::string& path, bool evenReadOnly) {
  const std::wstring name = CallPath(path);
  const DWORD attributes = ::GetFileAttributesW(name.c_str());
  const bool isReadOnly =
      attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0;
  if (isReadOnly && !evenReadOnly)
    throw FileFault(fault::Permission, "delete", path, "the file is read-only");
  if (isReadOnly) ::SetFileAttributesW(name.c_str(), attributes & ~DWORD{FILE_ATTRIBUTE_READONLY});
  const DWORD error = Patiently([&] { return ::DeleteFileW(name.c_str()) != 0; }, path);
  if (error == 0) return;
  if (isReadOnly) ::SetFileAttributesW(name.c_str(), attributes);
  Fail("delete", path, error);
}

void CreateFolder(const std::string& path) {
  if (!::CreateDirectoryW(CallPath(path).c_str(), nullptr)) Fail("create", path, ::GetLastError());
}

std::string AbsolutePath(const std::string& path) { return PlainPath(FullPath(path)); }

}  // namespace rws::os
