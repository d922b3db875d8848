#include "services/file_system.h"

#include <algorithm>
#include <optional>
#include <unordered_map>

#include "services/arrays.h"
#include "services/code_page.h"
#include "services/faults.h"
#include "services/os_files.h"
#include "services/paths.h"
#include "services/text.h"

namespace rws {

namespace {

constexpr std::size_t kWriteChunk = 64 * 1024;

bool IsAbsolute(const std::string& path) {
  return !path.empty() && (IsSeparator(path[0]) || (path.size() > 1 && path[1] == ':'));
}

/** Sorts names without regard to case, ties by bytes; the folded forms are made once. */
template <class Item, class NameOf>
void SortByName(std::vector<Item>& items, NameOf nameOf) {
  SortByKey(
      items, [&](const Item& item) { return FoldName(nameOf(item)); }, nameOf);
}

/** A file written beside another, removed again when the writer fails before it has its name. */
class RemovedUnlessKept {
 public:
  explicit RemovedUnlessKept(std::string path) : path_(std::move(path)) {}
  ~RemovedUnlessKept() {
    if (!path_.empty()) ResumeNext([&] { os::DeleteFile(path_, true); });
  }
  RemovedUnlessKept(const RemovedUnlessKept&) = delete;
  RemovedUnlessKept& operator=(const RemovedUnlessKept&) = delete;
  void Keep() { path_.clear(); }

 private:
  std::string path_;
};

/** Before a file or folder gets the name of `path`. */
void RequireName(const std::string& path) {
  const std::string refusal = NameRefusal(path);
  if (!refusal.empty()) throw FileFault(fault::InvalidCall, "use the name", path, refusal);
}

/** A name beside `path` that nothing bears yet. */
std::string NameBeside(const std::string& path) {
  for (int i = 0;; ++i) {
    std::string name = path + ".rws" + std::to_string(i);
    if (!os::Exists(name)) return name;
  }
}

}  // namespace

/** The names of a folder by their folded form. */
class NameIndex {
 public:
  explicit NameIndex(std::string folder) : folder_(std::move(folder)) {
    for (auto& entry : os::ListFolder(folder_)) Add(std::move(entry.Name));
  }
  bool IsOf(const std::string& folder) const { return folder == folder_; }

  std::vector<std::string> Find(std::string_view name) const {
    const auto found = names_.find(FoldName(name));
    return found == names_.end() ? std::vector<std::string>() : found->second;
  }
  void Moved(const std::string& from, const std::string& to) {
    if (GetParentFolderName(from) == folder_)
      std::erase(names_[FoldName(GetFileName(from))], GetFileName(from));
    if (GetParentFolderName(to) == folder_) Add(GetFileName(to));
  }

 private:
  void Add(std::string name) { names_[FoldName(name)].push_back(std::move(name)); }

  std::string folder_;
  std::unordered_map<std::string, std::vector<std::string>> names_;
};

KnownFolder::KnownFolder(const FileSystem& files, const std::string& folder) : files_(files) {
  ResumeNext([&] { files_.known_ = std::make_shared<NameIndex>(files.Resolve(folder)); });
}

KnownFolder::~KnownFolder() { files_.known_.reset(); }

/** The name in `folder` that equals `name` but for its case, first in sorted order. */
std::optional<std::string> FileSystem::FindEntry(const std::string& folder,
                                                 std::string_view name) const {
  std::vector<std::string> matches;
  if (known_ && known_->IsOf(folder)) {
    matches = known_->Find(name);
  } else {
    const std::string wanted = FoldName(name);
    ResumeNext([&] {
      for (auto& entry : os::ListFolder(folder))
        if (FoldName(entry.Name) == wanted) matches.push_back(entry.Name);
    });
  }
  if (matches.empty()) return {};
  return *std::min_element(matches.begin(), matches.end());
}

void FileSystem::Step(std::string_view action, const std::string& path, std::string_view bytes,
                      std::string_view into) const {
  if (BeforeStep) BeforeStep({action, path, bytes, into});
}

std::function<void()> FileSystem::Announce(FileDeed::Kind what, const std::string& path,
                                           const std::string& to) const {
  std::function<void()> done = OnDeed ? OnDeed({what, path, to}) : nullptr;
  return done ? done : [] {};
}

std::string FileSystem::Resolve(const std::string& path) const {
  if (path.empty()) return path;
  if (os::Exists(path)) return os::Spelling(path);
  // Nothing has a longer name, and to look for each of its parts would take time and stack.
  constexpr std::size_t kLongest = 4096;
  if (!os::kMindsCase || path.size() > kLongest) return path;
  std::string rest = path;
  std::replace(rest.begin(), rest.end(), '\\', kSeparator);
  if (rest != path && os::Exists(rest)) return rest;
  // The longest parent that exists keeps its spelling; only what lies below it is searched for.
  const std::string parent = GetParentFolderName(rest);
  const std::string folder = parent.empty() ? (IsAbsolute(rest) ? "/" : ".") : Resolve(parent);
  const std::string name = GetFileName(rest);
  const std::string prefix = parent.empty() && !IsAbsolute(rest) ? "" : folder;
  std::string exact = BuildPath(prefix, name);
  if (exact != rest && os::Exists(exact)) return exact;
  const auto found = FindEntry(folder, name);
  return found ? BuildPath(prefix, *found) : exact;
}

FileSystem FileSystem::ForThreads() const {
  FileSystem other = *this;
  other.known_.reset();
  return other;
}

bool FileSystem::MindsCase() { return os::kMindsCase; }

std::string FileSystem::FollowLinks(const std::string& path) const {
  return os::FollowLinks(Resolve(path));
}

std::string FileSystem::RealPath(const std::string& path) const {
  const std::string parent = GetParentFolderName(path);
  if (parent.empty() || parent == path) return path;
  return FollowLinks(BuildPath(RealPath(parent), GetFileName(path)));
}

std::string FileSystem::ProgramFile() const { return os::ProgramFile(); }

std::string FileSystem::UserDataFolder() const { return os::UserDataFolder(); }

std::string FileSystem::GetAbsolutePathName(const std::string& path) const {
  if (path.empty()) return path;
  const bool isNamed = !os::kMindsCase || os::Exists(path);
  return os::AbsolutePath(isNamed ? path : Replace(path, "\\", "/"));
}

std::string FileSystem::FindFile(const std::string& path) const {
  os::EntryKind kind;
  std::string found = Resolve(path);
  return os::Stat(found, kind) && kind == os::EntryKind::File ? found : "";
}

std::string FileSystem::FindFolder(const std::string& path) const {
  os::EntryKind kind;
  std::string found = Resolve(path);
  return os::Stat(found, kind) && kind == os::EntryKind::Folder ? found : "";
}

bool FileSystem::FileExists(const std::string& path) const { return !FindFile(path).empty(); }

bool FileSystem::FolderExists(const std::string& path) const { return !FindFolder(path).empty(); }

bool FileSystem::IsGone(const std::string& path) const { return os::IsGone(Resolve(path)); }

FileStamp FileSystem::Stamp(const std::string& path) const { return os::Stamp(Resolve(path)); }

DateTime FileSystem::LocalTime(const FileStamp& stamp) { return os::LocalTime(stamp.Modified); }

void FileSystem::RequireWritable(const std::string& path) const {
  const std::string target = FollowLinks(path);
  if (os::IsReadOnly(target))
    throw FileFault(fault::Permission, "write", target, "the file is read-only");
}

bool FileSystem::IsSameFile(const std::string& a, const std::string& b) const {
  return os::SameFile(Resolve(a), Resolve(b));
}

bool FileSystem::CanWriteInto(const std::string& folder) const {
  return os::CanWriteInto(Resolve(folder));
}

std::string FileSystem::ReadFile(const std::string& path, std::uint64_t most,
                                 FileStamp* stamp) const {
  const std::string source = Resolve(path);
  Step("read", source);
  return os::ReadFile(source, most, stamp);
}

void FileSystem::SyncFolderOf(const std::string& path) const {
  Step("sync folder", path);
  os::SyncFolderOf(path);
}

void FileSystem::WriteBeside(const std::string& path, const std::string& beside,
                             std::string_view bytes, const std::string& rightsFrom) const {
  Step("create", path);
  auto file = os::OpenOutput(beside, os::OpenMode::CreateNew, path);
  RemovedUnlessKept written(beside);
  for (std::size_t start = 0; start < bytes.size(); start += kWriteChunk) {
    const std::string_view chunk = bytes.substr(start, kWriteChunk);
    Step("write", path, chunk, beside);
    file->Write(chunk);
  }
  Step("flush", path);
  file->Sync();
  file->Close();
  os::CopyMode(rightsFrom, beside);
  written.Keep();
}

void FileSystem::WriteWhole(const std::string& target, std::string_view bytes,
                            const std::string& rightsFrom, IfReadOnly readOnly) const {
  RequireName(target);
  // A device or a pipe would be replaced by a file of its name.
  os::EntryKind kind;
  if (os::Stat(target, kind) && kind == os::EntryKind::Other)
    throw FileFault(fault::Permission, "write", target, "it is a device or a pipe");
  const auto done = Announce(FileDeed::Write, target, target);
  const std::string beside = NameBeside(target);
  WriteBeside(target, beside, bytes, rightsFrom);
  RemovedUnlessKept written(beside);
  Step("take name", target);
  os::RenameOver(beside, target, readOnly == IfReadOnly::AllTheSame);
  written.Keep();
  done();
  SyncFolderOf(target);
}

void FileSystem::ReplaceFile(const std::string& path, std::string_view bytes,
                             const std::string& rightsFrom, IfReadOnly readOnly) const {
  const std::string target = FollowLinks(path);
  WriteWhole(target, bytes, rightsFrom.empty() ? target : FollowLinks(rightsFrom), readOnly);
}

void FileSystem::AppendToFile(const std::string& path, std::string_view bytes) const {
  const std::string target = Resolve(path);
  RequireName(target);
  Step("append", target, bytes, target);
  auto file = os::OpenOutput(target, os::OpenMode::Append, target);
  file->Write(bytes);
  file->Close();
}

void FileSystem::CopyFile(const std::string& from, const std::string& to) const {
  const std::string source = Resolve(from);
  const std::string target = Resolve(to);
  if (os::SameFile(source, target))
    throw FileFault(fault::Permission, "copy", source, "source and target are the same file");
  WriteWhole(os::FollowLinks(target), ReadFile(source), source, IfReadOnly::AsTheSystemDoes);
}

/** A whole copy, on disk, of a name that nothing bears yet. */
void FileSystem::CopyNew(const std::string& source, const std::string& target) const {
  const std::string bytes = ReadFile(source);
  const std::string beside = NameBeside(target);
  WriteBeside(target, beside, bytes, source);
  RemovedUnlessKept written(beside);
  os::CopyTime(source, beside);
  Step("take name", target);
  os::RenameNew(beside, target);
  written.Keep();
  SyncFolderOf(target);
}

void FileSystem::LinkOrCopy(const std::string& from, const std::string& to) const {
  const std::string source = FollowLinks(from);
  const std::string target = Resolve(to);
  RequireName(target);
  if (os::Exists(target)) throw FileExistsFault(target);
  const auto link = [&] {
    Step("link", source, {}, target);
    os::Link(source, target);
  };
  const bool linked = Trap(link, [&](const Fault& caught) {
    if (caught.Number == fault::FileExists) throw Fault(caught);
    CopyNew(source, target);
  });
  if (linked) SyncFolderOf(target);
}

void FileSystem::MoveFile(const std::string& from, const std::string& to) const {
  const std::string source = Resolve(from);
  const std::string target = Resolve(to);
  // A rename that only changes letter case finds the file itself at the target.
  const bool isItself = target == source || (!os::kMindsCase && os::SameFile(source, target));
  if (os::Exists(target) && (source == to || !isItself)) throw FileExistsFault(target);
  const std::string wanted =
      isItself ? BuildPath(GetParentFolderName(target), GetFileName(to)) : target;
  RequireName(wanted);
  const auto done = Announce(FileDeed::Move, source, wanted);
  const auto rename = [&] {
    Step("move", source, {}, wanted);
    os::RenameNew(source, wanted);
  };
  Trap(rename, [&](const Fault& caught) {
    if (caught.Number != fault::OtherDisk) throw Fault(caught);
    CopyNew(source, wanted);
    Step("delete", source);
    os::DeleteFile(source, true);
  });
  done();
  if (known_) known_->Moved(source, wanted);
  SyncFolderOf(wanted);
  if (GetParentFolderName(source) != GetParentFolderName(wanted)) SyncFolderOf(source);
}

void FileSystem::DeleteFile(const std::string& path, IfReadOnly readOnly) const {
  const std::string target = Resolve(path);
  const auto done = Announce(FileDeed::Delete, target, target);
  Step("delete", target);
  os::DeleteFile(target, readOnly == IfReadOnly::AllTheSame);
  done();
  SyncFolderOf(target);
}

std::shared_ptr<void> FileSystem::Hold(const std::string& path, int mostWait) const {
  constexpr int kPause = 5;
  const std::string target = Resolve(path);
  RequireName(target);
  Step("lock", target);
  for (int waited = 0;; waited += kPause) {
    if (std::shared_ptr<os::HeldFile> held = os::TryHold(target)) return held;
    if (waited >= mostWait)
      throw FileFault(fault::FileOpen, "lock", target, "another program is at work and has it");
    os::Pause(kPause);
  }
}

void FileSystem::CreateFolder(const std::string& path) const {
  const std::string target = Resolve(path);
  RequireName(target);
  Step("create folder", target);
  os::CreateFolder(target);
  SyncFolderOf(target);
}

void FileSystem::CreateFolders(const std::string& path) const {
  if (path.empty() || FolderExists(path)) return;
  CreateFolders(GetParentFolderName(path));
  CreateFolder(path);
}

std::vector<FolderEntry> FileSystem::ListFolder(const std::string& path) const {
  const std::string folder = Resolve(path);
  Step("list", folder);
  std::vector<FolderEntry> entries;
  for (auto& entry : os::ListFolder(folder)) {
    os::EntryKind kind = entry.Kind;
    if (kind == os::EntryKind::Link && !os::Stat(BuildPath(folder, entry.Name), kind)) continue;
    entries.push_back(
        {std::move(entry.Name), kind == os::EntryKind::Folder, kind == os::EntryKind::File});
  }
  SortByName(entries, [](const FolderEntry& entry) -> const std::string& { return entry.Name; });
  return entries;
}

std::vector<std::string> FileSystem::ListFileNames(
    const std::string& path, const std::function<bool(const std::string&)>& wanted) const {
  const std::string folder = Resolve(path);
  Step("list", folder);
  std::vector<std::string> names;
  for (auto& entry : os::ListFolder(folder)) {
    os::EntryKind kind = entry.Kind;
    if (kind == os::EntryKind::Folder || !wanted(entry.Name)) continue;
    if (kind == os::EntryKind::Link && !os::Stat(BuildPath(folder, entry.Name), kind)) continue;
    if (kind == os::EntryKind::File) names.push_back(std::move(entry.Name));
  }
  SortByName(names, [](const std::string& name) -> const std::string& { return name; });
  return names;
}

}  // namespace rws
