#include "mission/interrupted.h"

#include <memory>
#include <optional>

#include "mission/backup_index.h"
#include "mission/line_array.h"
#include "mission/mission_file.h"
#include "mission/update_note.h"
#include "services/checksum.h"
#include "services/faults.h"
#include "services/paths.h"
#include "services/text.h"

namespace rws {

namespace {

constexpr int kShortWait = 100;

/** Not what is still being written beside a copy, and not what was dismissed. */
bool IsCopyName(std::string_view name) {
  return name.starts_with(kCopyName) && !name.ends_with(kNoteEnding) &&
         !name.ends_with(kKeptEnding) && !name.ends_with(kLockEnding) && !Contains(name, ".rws");
}

/** Checksum of a file; nothing when it cannot be read. */
std::optional<std::string> SumOf(const Services& services, const std::string& path) {
  std::optional<std::string> sum;
  ResumeNext([&] { sum = Sha1(services.Files.ReadFile(path, LineArray::kLargest)); });
  return sum;
}

void DropCopy(const Services& services, const std::string& copy) {
  ResumeNext([&] { services.Files.DeleteFile(copy, IfReadOnly::AllTheSame); });
  DropNote(services, copy);
}

/** Nothing for a copy that is not needed, or about which nothing can be said now. */
std::optional<Interrupted> Look(const Services& services, const std::string& copy) {
  const DateTime time = FileSystem::LocalTime(services.Files.Stamp(copy));
  const auto copied = SumOf(services, copy);
  const auto note = ReadNote(services, copy);
  if (!note || copied != note->Old) return Interrupted{"", copy, InterruptedState::Unknown, time};
  if (services.Files.IsGone(note->Mission))
    return Interrupted{note->Mission, copy, InterruptedState::Missing, time};
  const auto stands = SumOf(services, note->Mission);
  if (!stands) return {};
  if (stands != note->Old && stands != note->New)
    return Interrupted{note->Mission, copy, InterruptedState::Torn, time};
  if (stands == note->Old) PartFromBackups(services, note->Mission);
  DropCopy(services, copy);
  return {};
}

/** Keeps what stands at the path, then replaces it: something stands there at every moment. */
void ReplaceTorn(const Services& services, const std::string& mission, const std::string& copy) {
  const std::string start = BuildPath(BackupFolder(services), GetFileName(mission) + ".");
  const std::string backup = FreeStampedName(services, start, ".bak");
  services.Files.LinkOrCopy(mission, backup);
  NoteBackup(services, backup, mission);
  services.Files.ReplaceFile(mission, services.Files.ReadFile(copy), copy, IfReadOnly::AllTheSame);
  services.Files.DeleteFile(copy, IfReadOnly::AllTheSame);
}

}  // namespace

std::vector<Interrupted> FindInterrupted(const Services& services) {
  std::shared_ptr<void> held;
  // What another program is just writing is not interrupted.
  if (!ResumeNext([&] { held = HoldCopy(services, kShortWait); })) return {};
  std::vector<std::string> names;
  ResumeNext([&] {
    names = services.Files.ListFileNames(
        services.AppPath, [](const std::string& name) { return name.starts_with(kCopyName); });
  });
  std::vector<Interrupted> found;
  for (const auto& name : names) {
    const std::string path = BuildPath(services.AppPath, name);
    if (name.ends_with(kNoteEnding))
      DropNote(services, path.substr(0, path.size() - kNoteEnding.size()));
    else if (IsCopyName(name))
      if (auto interrupted = Look(services, path)) found.push_back(std::move(*interrupted));
  }
  return found;
}

void GiveBack(const Services& services, const Interrupted& interrupted) {
  const auto& [mission, copy, state, time] = interrupted;
  const auto held = HoldCopy(services);
  if (state == InterruptedState::Unknown)
    throw FileFault(fault::InvalidCall, "put back", copy, "its mission is not known");
  if (state == InterruptedState::Torn && !services.Files.IsGone(mission))
    ReplaceTorn(services, mission, copy);
  else
    services.Files.MoveFile(copy, mission);
  DropNote(services, copy);
}

std::string Dismiss(const Services& services, const Interrupted& interrupted) {
  const auto held = HoldCopy(services);
  const std::string kept = FreeStampedName(services, CopyPath(services), kKeptEnding);
  MoveWithNote(services, interrupted.Copy, kept);
  return kept;
}

}  // namespace rws
