#include "mission/update_note.h"

#include <vector>

#include "services/checksum.h"
#include "services/faults.h"
#include "services/paths.h"

namespace rws {

namespace {

constexpr std::string_view kHead =
    "An update of the mission named below was under way. The file beside this one is the mission "
    "as it was before.\r\n";
constexpr std::string_view kLineEnd = "\r\n";
constexpr std::size_t kSumLength = 40, kLargestNote = 1 << 20;

/** Cuts a checksum and its line end off the end of a text; "" if it ends in none. */
std::string CutSum(std::string_view& text) {
  if (!text.ends_with(kLineEnd) || text.size() < kSumLength + kLineEnd.size()) return "";
  text.remove_suffix(kLineEnd.size());
  const std::string sum(text.substr(text.size() - kSumLength));
  text.remove_suffix(kSumLength);
  return sum;
}

/** The path is what is left between head and checksums, and may hold any byte. */
std::optional<UpdateNote> Parse(std::string_view text) {
  const std::string whole = CutSum(text);
  if (whole != Sha1(text) || !text.starts_with(kHead)) return {};
  text.remove_prefix(kHead.size());
  UpdateNote note;
  note.New = CutSum(text);
  note.Old = CutSum(text);
  if (note.Old.empty() || !text.ends_with(kLineEnd)) return {};
  text.remove_suffix(kLineEnd.size());
  note.Mission = text;
  return note;
}

}  // namespace

std::string CopyPath(const Services& services) { return BuildPath(services.AppPath, kCopyName); }

std::shared_ptr<void> HoldCopy(const Services& services, int mostWait) {
  std::shared_ptr<void> held;
  const auto hold = [&] {
    held = services.Files.Hold(CopyPath(services) + std::string(kLockEnding), mostWait);
  };
  Trap(hold, [](const Fault& caught) {
    if (caught.Number == fault::FileOpen) throw Fault(caught);
  });
  return held;
}

std::string NotePath(const std::string& copy) { return copy + std::string(kNoteEnding); }

void WriteNote(const Services& services, const std::string& copy, const UpdateNote& note) {
  std::string text(kHead);
  for (const auto& part : {note.Mission, note.Old, note.New}) text.append(part).append(kLineEnd);
  text += Sha1(text);
  services.Files.ReplaceFile(NotePath(copy), text.append(kLineEnd));
}

std::optional<UpdateNote> ReadNote(const Services& services, const std::string& copy) {
  std::optional<UpdateNote> note;
  ResumeNext([&] { note = Parse(services.Files.ReadFile(NotePath(copy), kLargestNote)); });
  return note;
}

void DropNote(const Services& services, const std::string& copy) {
  const FileSystem& files = services.Files;
  if (!files.FileExists(NotePath(copy)) || !files.IsGone(copy)) return;
  ResumeNext([&] { files.DeleteFile(NotePath(copy)); });
}

void MoveWithNote(const Services& services, const std::string& copy, const std::string& to) {
  const FileSystem& files = services.Files;
  // A note without its copy is of no use and may be replaced.
  if (files.FileExists(NotePath(copy))) files.CopyFile(NotePath(copy), NotePath(to));
  const auto dropSecond = [&](const Fault& caught) {
    DropNote(services, to);
    throw Fault(caught);
  };
  Trap([&] { files.MoveFile(copy, to); }, dropSecond);
  DropNote(services, copy);
}

std::string FreeStampedName(const Services& services, const std::string& start,
                            std::string_view ending) {
  const std::string stamped = start + StampText(services.System.Now());
  std::string name = stamped + std::string(ending);
  for (int i = 2; services.Files.FileExists(name); ++i)
    name = stamped + " " + std::to_string(i) + std::string(ending);
  return name;
}

void PartFromBackups(const Services& services, const std::string& mission) {
  PartFromBackups(services, BuildPath(services.AppPath, "RWS Backup"), mission);
}

void PartFromBackups(const Services& services, const std::string& folder,
                     const std::string& mission) {
  const FileSystem& files = services.Files;
  std::vector<std::string> names;
  ResumeNext([&] { names = files.ListFileNames(folder, [](const auto&) { return true; }); });
  for (const auto& name : names) {
    const std::string backup = BuildPath(folder, name);
    if (!files.IsSameFile(backup, mission)) continue;
    ResumeNext([&] { files.ReplaceFile(backup, files.ReadFile(mission)); });
    if (files.IsSameFile(backup, mission)) ResumeNext([&] { files.DeleteFile(backup); });
  }
}

}  // namespace rws
