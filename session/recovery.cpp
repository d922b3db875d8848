#include "session/recovery.h"

#include <algorithm>
#include <tuple>
#include <utility>

#include "mission/carry_edits.h"
#include "mission/kept_merge.h"
#include "mission/reader.h"
#include "mission/untouched.h"
#include "mission/writer.h"
#include "services/checksum.h"
#include "services/error_log.h"
#include "services/paths.h"
#include "services/text.h"
#include "session/file_store.h"
#include "session/half_renamed.h"
#include "session/packing.h"
#include "session/recording.h"

namespace rws {

namespace {

constexpr std::string_view kFirstLine = "RWS Edit unsaved edits ";
constexpr char kExtension[] = ".edits";

/** The lines "version", "checksum", "time" and "path", then the mission. */
std::string Packed(const std::string& time, const std::string& path, const Mission& mission) {
  const std::string rest = time + "\n" + PackText(path) + "\n" + PackMission(mission);
  return std::string(kFirstLine) + RecordsVersion() + "\n" + Sha1(rest) + "\n" + rest;
}

std::string TakeLine(std::string_view& bytes) {
  const std::size_t end = bytes.find('\n');
  if (end == bytes.npos) throw Fault(fault::InputPastEnd, "The file is damaged.");
  const std::string line(bytes.substr(0, end));
  bytes.remove_prefix(end + 1);
  return line;
}

void Unpack(std::string_view bytes, Recovered& recovered) {
  const std::string first = TakeLine(bytes);
  if (first != std::string(kFirstLine) + RecordsVersion())
    throw Fault(fault::InvalidCall, "Another version of the program has written it.");
  const std::string sum = TakeLine(bytes);
  if (sum != Sha1(bytes)) throw Fault(fault::InputPastEnd, "The file is damaged.");
  recovered.Time = TakeLine(bytes);
  recovered.Path = TakeText(bytes);
  TakeLine(bytes);
  recovered.Mission = UnpackMission(bytes);
}

/** A name of its own for each run: what an earlier one has left is not written over. Nor is one
    taken that another mission has had since it was called so, and could not be written yet. */
std::string NewFile(const Services& services, const RecoveryState& state, const std::string& path) {
  MakeFolder(services, RecoveryFolder(services));
  const auto isTaken = [&](const std::string& file) {
    return services.Files.FileExists(file) ||
           std::any_of(state.Written.begin(), state.Written.end(),
                       [&](const auto& written) { return written.second.File == file; });
  };
  for (int i = 1;; ++i) {
    const std::string file = BuildPath(
        RecoveryFolder(services), ShortName(GetBaseName(path)) + "-" + Sha1(path).substr(0, 8) +
                                      "-" + std::to_string(i) + kExtension);
    if (!isTaken(file)) return file;
  }
}

void Forget(const Services& services, const std::string& file) {
  if (services.Files.FileExists(file)) services.Files.DeleteFile(file);
}

/** True if the run ended between the writing of the mission and the deletion of the edits. */
bool AreSaved(const Services& services, const Recovered& recovered) {
  bool saved = false;
  ResumeNext([&] {
    const std::string text = TextOf(services, recovered);
    saved = !text.empty() && services.Files.ReadFile(recovered.Path) == text;
    if (saved) Forget(services, recovered.File);
  });
  return saved;
}

/** The one mission in the folder of `recovered` whose file is what the edits were made on, also one
    on the way to a new name; "" for none, or several. */
std::string SameInFolder(const Services& services, const Recovered& recovered) {
  const FileSystem& files = services.Files;
  const LineArray& asRead = recovered.Mission.AsRead;
  const std::string folder = GetParentFolderName(recovered.Path);
  std::string same;
  if (asRead.empty()) return same;
  ResumeNext([&] {
    const auto names = files.ListFileNames(folder, [](const std::string& name) {
      const std::string wanted = WantedName(name);
      return FoldName(wanted.empty() ? name : wanted).ends_with(".mis");
    });
    std::size_t count = 0;
    for (const auto& name : names) {
      const std::string path = BuildPath(folder, name);
      // Reading may have repaired the ends of lines.
      const std::uint64_t size = files.Stamp(path).Size, was = asRead.FileText().size();
      if (std::max(size, was) - std::min(size, was) > asRead.size()) continue;
      if (!IsAsRead(recovered.Mission, files.ReadFile(path))) continue;
      same = ++count == 1 ? path : "";
    }
  });
  return same;
}

/** The name that the mission has by now: a rename that the run's end came into leaves the edits
    with one that is gone. */
std::string NameNow(const Services& services, const Recovered& recovered) {
  if (!recovered.Fault.empty() || !services.Files.IsGone(recovered.Path)) return recovered.Path;
  std::string now = WantedName(recovered.Path);
  if (now.empty() || !services.Files.FileExists(now)) now = SameInFolder(services, recovered);
  return now.empty() ? recovered.Path : now;
}

/** Where missions were alike, one that has edits of its own is no new name of another one. */
void FollowRenames(const Services& services, std::vector<Recovered>& found) {
  std::vector<std::string> was, now;
  for (const auto& edits : found) {
    was.push_back(edits.Path);
    now.push_back(NameNow(services, edits));
  }
  for (std::size_t i = 0; i < found.size(); ++i) {
    bool isOther = false;
    for (std::size_t j = 0; j < found.size(); ++j)
      isOther = isOther || (now[j] == now[i] && was[j] != was[i]);
    if (!isOther) found[i].Path = now[i];
  }
}

/** What is kept of missions that have gone, and whose names others get, goes: their edits are of
   the step now. No mission has the name that it waits by. */
void PutAside(RecoveryState& state, const std::vector<std::pair<std::string, std::string>>& moves) {
  for (const auto& [from, to] : moves) {
    const auto kept = state.Written.find(to);
    const auto leaves = [&path = to](const auto& move) { return move.first == path; };
    if (kept == state.Written.end() || std::any_of(moves.begin(), moves.end(), leaves)) continue;
    auto node = state.Written.extract(kept);
    node.key() = node.mapped().File;
    state.Written.insert(std::move(node));
  }
}

/** Renames of this run: a mission may have got the name that another one had. */
void TakeMoves(Session& session, RecoveryState& state) {
  const FileSystem& files = session.Services.Files;
  for (const auto& moves : std::exchange(session.History.Moves, {})) {
    PutAside(state, moves);
    MoveKeys(state.Written, moves);
    for (const auto& [from, to] : moves)
      if (const auto kept = state.Written.find(to); kept != state.Written.end())
        kept->second.Own = nullptr;
    for (auto& edits : state.Offered) {
      const std::string folder = GetParentFolderName(edits.Path);
      const auto move = std::find_if(moves.begin(), moves.end(), [&](const auto& names) {
        return GetFileName(names.first) == GetFileName(edits.Path) &&
               files.IsSameFile(GetParentFolderName(names.first), folder);
      });
      if (move == moves.end()) continue;
      edits.Path = BuildPath(folder, GetFileName(move->second));
      edits.Renamed = true;
    }
  }
}

void WriteName(const Services& services, Recovered& edits) {
  if (!edits.Renamed) return;
  services.Files.ReplaceFile(edits.File, Packed(edits.Time, edits.Path, edits.Mission));
  edits.Renamed = false;
}

void WriteChanged(Session& session, RecoveryState& state, const std::string& path) {
  const FrozenMission own = session.History.Known.at(path).Own;
  auto& kept = state.Written[path];
  if (kept.Own == own) return;
  if (kept.File.empty()) kept.File = NewFile(session.Services, state, path);
  const std::string time = TimeText(session.Services.System.Now());
  session.Services.Files.ReplaceFile(kept.File, Packed(time, path, Thaw(*own)));
  kept.Own = own;
}

void DeleteFiles(const Services& services, const RecoveryState::Kept& kept) {
  for (const auto& file : kept.Earlier) Forget(services, file);
  Forget(services, kept.File);
}

/** What the file holds is what the edits are taken back to. */
void ReadBefore(Session& session, const Recovered& recovered) {
  Document& doc = session.Doc;
  const std::size_t mission = RowFor(doc, recovered.Path);
  if (session.Services.Files.IsGone(recovered.Path)) return;
  if (!doc.Missions[mission].Loaded) LoadMission(doc, session.Services, mission);
  if (!session.History.Known.contains(recovered.Path)) NoteRead(session, mission);
}

void Restore(Session& session, const Recovered& recovered) {
  Document& doc = session.Doc;
  const std::size_t mission = RowFor(doc, recovered.Path);
  Mission& record = doc.Missions[mission];
  MissionState state;
  if (record.Loaded) state = session.History.Known[recovered.Path];
  Mission saved = record;
  record = recovered.Mission;
  NameMission(record, recovered.Path);
  if (record.KeepsLines) doc.UntouchedOf[PathOf(record)] = UntouchedLines::Keep;
  if (saved.Loaded && saved.KeepsLines != record.KeepsLines) {
    // Only what is read in one way can be compared.
    saved.KeepsLines = record.KeepsLines;
    saved = FreshlyRead(doc, session.Services, saved);
    state.Saved = Freeze(saved, nullptr);
  }
  if (!state.Saved) state.Saved = Freeze(saved, nullptr);
  Mission shadow = saved;
  FillShadow(record, shadow);
  state.Own = Freeze(record, state.Saved);
  state.Shadow = Freeze(shadow, state.Saved);
  if (mission < doc.MissionShadow.size()) doc.MissionShadow[mission] = std::move(shadow);
  state.Reading = ++session.History.Readings;
  session.History.Known[recovered.Path] = state;
}

}  // namespace

std::string KeepUnsaved(Session& session, RecoveryState& state) {
  std::string reason;
  const auto failed = [&](const Fault& caught) {
    LogError(session.Services, caught.Text, "KeepUnsaved");
    if (reason.empty()) reason = caught.Text;
  };
  TakeMoves(session, state);
  // They are safe under the old name, too.
  for (auto& edits : state.Offered)
    Trap([&] { WriteName(session.Services, edits); },
         [&](const Fault& caught) { LogError(session.Services, caught.Text, "KeepUnsaved"); });
  const auto unsaved = UnsavedMissions(session);
  for (const auto& path : unsaved) Trap([&] { WriteChanged(session, state, path); }, failed);
  std::erase_if(state.Written, [&](const auto& written) {
    const auto& [path, kept] = written;
    if (std::binary_search(unsaved.begin(), unsaved.end(), path)) return false;
    return Trap([&, &files = kept] { DeleteFiles(session.Services, files); }, failed);
  });
  return reason;
}

bool HoldRecovered(const Services& services, std::shared_ptr<void>& held) {
  bool isFree = true;
  const auto hold = [&] { held = services.Files.Hold(RecoveryFolder(services) + ".lock", 0); };
  Trap(hold, [&](const Fault& caught) { isFree = caught.Number != fault::FileOpen; });
  return isFree;
}

std::vector<Recovered> FindRecovered(const Services& services) {
  std::vector<Recovered> found;
  const std::string folder = RecoveryFolder(services);
  std::vector<std::string> names;
  ResumeNext([&] {
    if (services.Files.FolderExists(folder))
      names = services.Files.ListFileNames(
          folder, [](const std::string& name) { return name.ends_with(kExtension); });
  });
  for (const auto& name : names) {
    Recovered& recovered = found.emplace_back();
    recovered.File = BuildPath(folder, name);
    Trap([&] { Unpack(services.Files.ReadFile(recovered.File), recovered); },
         [&](const Fault& caught) { recovered.Fault = caught.Text; });
  }
  FollowRenames(services, found);
  std::erase_if(found, [&](const Recovered& edits) {
    return edits.Fault.empty() && AreSaved(services, edits);
  });
  std::stable_sort(found.begin(), found.end(), [](const auto& a, const auto& b) {
    return std::tie(a.Path, a.Time) < std::tie(b.Path, b.Time);
  });
  return found;
}

std::string TextOf(const Services& services, const Recovered& recovered) {
  Document doc;
  doc.Missions = {recovered.Mission};
  LineArray lines;
  if (recovered.Mission.KeepsLines)
    BuildKeptFile(doc, services, recovered.Mission, lines);
  else
    BuildMissionFile(doc, services, lines, 0, {});
  return lines.FileText();
}

std::vector<std::string> RestoreRecovered(Session& session, RecoveryState& state,
                                          const std::vector<Recovered>& recovered) {
  std::vector<std::string> all, paths;
  std::vector<const Recovered*> round, rest;
  for (const auto& edits : recovered)
    if (edits.Fault.empty()) rest.push_back(&edits);
  while (!rest.empty()) {
    paths.clear();
    round.clear();
    for (const auto* edits : rest) {
      if (std::find(paths.begin(), paths.end(), edits->Path) != paths.end()) continue;
      paths.push_back(edits->Path);
      round.push_back(edits);
      ReadBefore(session, *edits);
    }
    if (all.empty()) all = paths;
    std::erase_if(rest, [&](const auto* edits) {
      return std::find(round.begin(), round.end(), edits) != round.end();
    });
    RecordWhole(session, paths, "Restored edits", [&] {
      for (const auto* edits : round) {
        Restore(session, *edits);
        // From now on it is this run's file.
        auto& kept = state.Written[edits->Path];
        if (!kept.File.empty()) kept.Earlier.push_back(kept.File);
        // On top of this run's edits it is written anew: after a crash the latest comes last.
        const bool asWritten = kept.Earlier.empty() && !edits->Renamed;
        if (asWritten) kept.Own = session.History.Known[edits->Path].Own;
        kept.File = edits->File;
      }
    });
  }
  return all;
}

bool HasChangedSince(const Services& services, const Recovered& recovered) {
  bool changed = true;
  ResumeNext(
      [&] { changed = !IsAsRead(recovered.Mission, services.Files.ReadFile(recovered.Path)); });
  return changed;
}

void DiscardRecovered(const Services& services, const Recovered& recovered) {
  Forget(services, recovered.File);
}

}  // namespace rws
