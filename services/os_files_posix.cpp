#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <utility>

#include "services/faults.h"
#include "services/os_files.h"
#include "services/paths.h"

namespace rws::os {

const bool kMindsCase = true;

namespace {

[[noreturn]] void Fail(std::string_view action, const std::string& path, int error) {
  if (error == ENOENT) throw FileNotFoundFault(path);
  if (error == EEXIST) throw FileExistsFault(path);
  int number = fault::FileIo;
  if (error == EACCES || error == EPERM || error == EROFS) number = fault::Permission;
  if (error == EXDEV) number = fault::OtherDisk;
  throw FileFault(number, action, path, std::strerror(error));
}

constexpr std::int64_t kNanoseconds = 1'000'000'000;

EntryKind KindOf(mode_t mode) {
  if (S_ISREG(mode)) return EntryKind::File;
  if (S_ISDIR(mode)) return EntryKind::Folder;
  return EntryKind::Other;
}

FileStamp StampOf(const struct stat& info) {
  return {true, static_cast<std::uint64_t>(info.st_size),
          std::int64_t{info.st_mtim.tv_sec} * kNanoseconds + info.st_mtim.tv_nsec};
}

class Descriptor {
 public:
  Descriptor(const std::string& path, const std::string& shownAs, int flags)
      : fd_(::open(path.c_str(), flags | O_CLOEXEC, 0666)) {
    if (fd_ < 0) Fail("open", shownAs, errno);
  }
  ~Descriptor() {
    if (fd_ >= 0) ::close(fd_);
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  int Get() const { return fd_; }
  int Release() { return std::exchange(fd_, -1); }

 private:
  int fd_;
};

class PosixOutput : public OutputFile {
 public:
  PosixOutput(const std::string& path, OpenMode mode, const std::string& shownAs)
      : path_(shownAs),
        file_(path, shownAs, O_WRONLY | O_CREAT | (mode == OpenMode::Append ? O_APPEND : O_EXCL)) {}

  void Write(std::string_view bytes) override {
    while (!bytes.empty()) {
      const ssize_t written = ::write(file_.Get(), bytes.data(), bytes.size());
      if (written < 0 && errno == EINTR) continue;
      if (written < 0) Fail("write", path_, errno);
      bytes.remove_prefix(static_cast<std::size_t>(written));
    }
  }
  void Sync() override {
    if (::fsync(file_.Get()) != 0) Fail("flush", path_, errno);
  }
  void Close() override {
    if (::close(file_.Release()) != 0) Fail("close", path_, errno);
  }

 private:
  std::string path_;
  Descriptor file_;
};

class PosixHeld : public HeldFile {
 public:
  PosixHeld(std::string path, int file) : path_(std::move(path)), file_(file) {}
  ~PosixHeld() override {
    ::unlink(path_.c_str());
    ::close(file_);
  }

 private:
  std::string path_;
  int file_;
};

/** True if the open file is still the one of that name. */
bool IsNamed(int file, const std::string& path) {
  struct stat held, named;
  return ::fstat(file, &held) == 0 && ::stat(path.c_str(), &named) == 0 &&
         held.st_dev == named.st_dev && held.st_ino == named.st_ino;
}

}  // namespace

std::unique_ptr<HeldFile> TryHold(const std::string& path) {
  int file = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
  // One that another user's run has left, which it did not live to delete.
  if (file < 0 && errno == EACCES) file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (file < 0) Fail("lock", path, errno);
  const bool isTaken =
      ::flock(file, LOCK_EX | LOCK_NB) != 0 && (errno == EWOULDBLOCK || errno == EINTR);
  // Who held it before may have deleted it meanwhile, and another may hold a new one.
  if (!isTaken && IsNamed(file, path)) return std::make_unique<PosixHeld>(path, file);
  ::close(file);
  return nullptr;
}

void Pause(int milliseconds) {
  const std::timespec time{milliseconds / 1000, milliseconds % 1000 * 1'000'000L};
  ::nanosleep(&time, nullptr);
}

bool Stat(const std::string& path, EntryKind& kind) {
  struct stat info;
  if (::stat(path.c_str(), &info) != 0) return false;
  kind = KindOf(info.st_mode);
  return true;
}

bool IsGone(const std::string& path) {
  struct stat info;
  return ::stat(path.c_str(), &info) != 0 && (errno == ENOENT || errno == ENOTDIR);
}

FileStamp Stamp(const std::string& path) {
  struct stat info;
  return ::stat(path.c_str(), &info) == 0 ? StampOf(info) : FileStamp();
}

DateTime LocalTime(std::int64_t nanoseconds) {
  const auto seconds = static_cast<std::time_t>(nanoseconds / kNanoseconds);
  std::tm local{};
  ::localtime_r(&seconds, &local);
  return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday,
          local.tm_hour,        local.tm_min,     local.tm_sec};
}

bool IsReadOnly(const std::string& path) {
  struct stat info;
  if (::stat(path.c_str(), &info) != 0) return false;
  // To the superuser every file is open; the one who took all rights to write away meant it.
  return (info.st_mode & 0222) == 0 || ::access(path.c_str(), W_OK) != 0;
}

bool Exists(const std::string& path) {
  struct stat info;
  return ::lstat(path.c_str(), &info) == 0;
}

std::string Spelling(const std::string& path) { return path; }

bool SameFile(const std::string& a, const std::string& b) {
  struct stat first, second;
  return ::stat(a.c_str(), &first) == 0 && ::stat(b.c_str(), &second) == 0 &&
         first.st_dev == second.st_dev && first.st_ino == second.st_ino;
}

std::string FollowLinks(const std::string& path) {
  std::error_code error;
  if (!std::filesystem::is_symlink(path, error)) return path;
  const auto real = std::filesystem::canonical(path, error);
  return error ? path : real.string();
}

std::string ProgramFile() {
  std::error_code error;
  return std::filesystem::read_symlink("/proc/self/exe", error).string();
}

std::string UserDataFolder() {
  const char* data = std::getenv("XDG_DATA_HOME");
  if (data && data[0] == '/') return data;
  const char* home = std::getenv("HOME");
  return home && *home ? BuildPath(home, ".local/share") : "";
}

bool CanWriteInto(const std::string& folder) { return ::access(folder.c_str(), W_OK | X_OK) == 0; }

std::string ReadFile(const std::string& path, std::uint64_t most, FileStamp* stamp) {
  struct stat info;
  const auto requireFile = [&] {
    if (S_ISDIR(info.st_mode)) Fail("read", path, EISDIR);
    if (!S_ISREG(info.st_mode))
      throw FileFault(fault::Permission, "read", path, "it is a device or a pipe");
  };
  // The opening of a pipe would wait for somebody who writes into it.
  if (::stat(path.c_str(), &info) == 0) requireFile();
  Descriptor file(path, path, O_RDONLY);
  if (::fstat(file.Get(), &info) != 0) Fail("read", path, errno);
  requireFile();
  if (stamp) *stamp = StampOf(info);
  if (info.st_size > 0 && static_cast<std::uint64_t>(info.st_size) > most)
    Fail("read", path, EFBIG);
  std::string bytes(static_cast<std::size_t>(info.st_size) + 1, 0);
  std::size_t used = 0;
  while (true) {
    if (used == bytes.size()) bytes.resize(bytes.size() * 2);
    const ssize_t count = ::read(file.Get(), bytes.data() + used, bytes.size() - used);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) Fail("read", path, errno);
    if (count == 0) break;
    used += static_cast<std::size_t>(count);
    if (used > most) Fail("read", path, EFBIG);
  }
  bytes.resize(used);
  return bytes;
}

std::vector<Entry> ListFolder(const std::string& path) {
  struct Closer {
    void operator()(DIR* folder) const { ::closedir(folder); }
  };
  const std::unique_ptr<DIR, Closer> folder(::opendir(path.c_str()));
  if (!folder) {
    if (errno == ENOENT || errno == ENOTDIR) throw PathNotFoundFault(path);
    Fail("list", path, errno);
  }
  std::vector<Entry> entries;
  errno = 0;
  while (const dirent* found = ::readdir(folder.get())) {
    const std::string_view name = found->d_name;
    if (name == "." || name == "..") continue;
    EntryKind kind = EntryKind::Other;
    if (found->d_type == DT_REG) kind = EntryKind::File;
    if (found->d_type == DT_DIR) kind = EntryKind::Folder;
    if (found->d_type == DT_LNK) kind = EntryKind::Link;
    if (found->d_type == DT_UNKNOWN) Stat(BuildPath(path, name), kind);
    entries.push_back({std::string(name), kind});
    errno = 0;
  }
  if (errno != 0) Fail("list", path, errno);
  return entries;
}

std::unique_ptr<OutputFile> OpenOutput(const std::string& path, OpenMode mode,
                                       const std::string& shownAs) {
  return std::make_unique<PosixOutput>(path, mode, shownAs);
}

void CopyMode(const std::string& from, const std::string& to) {
  struct stat info;
  if (::stat(from.c_str(), &info) != 0) return;
  // Some mounted systems know no rights; the bytes matter more.
  (void)!::chmod(to.c_str(), info.st_mode & 07777);
}

void CopyTime(const std::string& from, const std::string& to) {
  std::error_code error;
  const auto time = std::filesystem::last_write_time(from, error);
  if (!error) std::filesystem::last_write_time(to, time, error);
}

void SyncFolderOf(const std::string& path) {
  const std::string parent = std::filesystem::path(path).parent_path().string();
  const int folder =
      ::open(parent.empty() ? "." : parent.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  // A folder that may be written but not read cannot be flushed.
  if (folder < 0 && errno == EACCES) return;
  if (folder < 0) Fail("open", parent, errno);
  const int error = ::fsync(folder) == 0 ? 0 : errno;
  ::close(folder);
  // Some network file systems cannot flush a folder and say so; nothing more can be done there.
  if (error != 0 && error != EINVAL && error != ENOTSUP && error != EBADF)
    Fail("flush", parent, error);
}

void RenameOver(const std::string& from, const std::string& to, bool) {
  if (::rename(from.c_str(), to.c_str()) != 0) Fail("rename", from, errno);
}

void RenameNew(const std::string& from, const std::string& to) {
#if defined(__linux__) && defined(RENAME_NOREPLACE)
  if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) return;
  if (errno == EEXIST) throw FileExistsFault(to);
  if (errno != EINVAL && errno != ENOSYS && errno != ENOTSUP) Fail("rename", from, errno);
#endif
  if (Exists(to)) throw FileExistsFault(to);
  if (::rename(from.c_str(), to.c_str()) != 0) Fail("rename", from, errno);
}

void Link(const std::string& from, const std::string& to) {
  if (::link(from.c_str(), to.c_str()) == 0) return;
  if (errno == EEXIST) throw FileExistsFault(to);
  Fail("link", from, errno);
}

void DeleteFile(const std::string& path, bool) {
  if (::unlink(path.c_str()) != 0) Fail("delete", path, errno);
}

void CreateFolder(const std::string& path) {
  if (::mkdir(path.c_str(), 0777) != 0) {
    if (errno == ENOENT) throw PathNotFoundFault(path);
    Fail("create", path, errno);
  }
}

std::string AbsolutePath(const std::string& path) {
  std::error_code error;
  const auto absolute = std::filesystem::absolute(path, error);
  return error ? path : absolute.lexically_normal().string();
}

}  // namespace rws::os
