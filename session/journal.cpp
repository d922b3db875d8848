#include "session/journal.h"

#include <algorithm>
#include <iterator>
#include <unordered_set>

#include "mission/untouched.h"
#include "services/checksum.h"
#include "services/error_log.h"
#include "services/paths.h"
#include "session/file_store.h"
#include "session/file_undo.h"
#include "session/half_renamed.h"
#include "session/recording.h"

namespace rws {

namespace {

/** The program's own files are no part of the history. */
bool IsOwnFile(const Services& services, const std::string& path) {
  const std::string own = BuildPath(services.Files.Resolve(services.AppPath), "");
  if (!path.starts_with(own)) return false;
  const std::string rest = path.substr(own.size());
  const std::string first = rest.substr(0, rest.find_first_of("/\\"));
  return first.starts_with(kRecoveryFolder) || first == "RWS Backup" ||
         first.starts_with("$$$TEMP") || first == "Error.txt" || first == "Replaced Skins";
}

void TellNotKept(const Services& services, const std::string& path, const Fault& caught) {
  LogError(services, caught.Text, "Journaling");
  if (services.Ask.Notice)
    services.Ask.Notice("\"" + GetFileName(path) + "\" cannot be brought back by Undo. " +
                        caught.Text);
}

/** Keeps what stands at the path of the change, for `Stored` and `OldSum`. */
void Keep(const Services& services, FileChange& change) {
  Trap(
      [&] {
        change.OldSum = Sha1(services.Files.ReadFile(change.Path));
        change.Stored = KeepInStore(services, change.Path);
      },
      [&](const Fault& caught) { TellNotKept(services, change.Path, caught); });
}

/** What is noted of a deed, when it has been done. */
std::function<void()> NoteDeed(Session& session, const FileDeed& deed) {
  const Services& services = session.Services;
  FileJournal& journal = session.History.Journal;
  // What this does to files is no deed of the command's.
  if (journal.Paused || IsOwnFile(services, deed.Path)) return nullptr;
  journal.Paused = true;
  FileChange change{FileChange::Moved, deed.Path, deed.To, "", "", "", ""};
  const bool stood = services.Files.FileExists(deed.Path);
  if (deed.What == FileDeed::Delete) change.What = FileChange::Deleted;
  if (deed.What == FileDeed::Write)
    change.What = stood ? FileChange::Replaced : FileChange::Created;
  if (deed.What != FileDeed::Move && stood) Keep(services, change);
  journal.Paused = false;
  return [&services, &journal, change]() mutable {
    if (change.What == FileChange::Created || change.What == FileChange::Replaced)
      ResumeNext([&] { change.NewSum = Sha1(services.Files.ReadFile(change.Path)); });
    journal.Changes.push_back(change);
  };
}

bool TakesAway(const std::vector<FileChange>& changes, const std::string& path) {
  return std::any_of(changes.begin(), changes.end(), [&](const FileChange& change) {
    return (change.What == FileChange::Deleted || change.What == FileChange::Moved) &&
           change.Path == path;
  });
}

/** Missions whose files have gone, and whose names others get. */
std::vector<std::string> TakenOver(const Session& session,
                                   const std::vector<std::pair<std::string, std::string>>& moves) {
  const auto& known = session.History.Known;
  // What was not read may be the mission itself, on its way back to its name.
  const auto isOther = [&](const std::string& path) {
    bool is = false;
    ResumeNext(
        [&] { is = !IsAsRead(known.at(path).Own->Head, session.Services.Files.ReadFile(path)); });
    return is;
  };
  std::vector<std::string> paths;
  for (const auto& [from, to] : moves) {
    const auto leaves = [&path = to](const auto& move) { return move.first == path; };
    if (known.contains(to) && std::none_of(moves.begin(), moves.end(), leaves) &&
        (known.contains(from) || (WantedName(from).empty() && isOther(to))))
      paths.push_back(to);
  }
  return paths;
}

/** Where a command has given the name to a row, there are two of it; that of the mission which has
    gone holds nothing any more. */
void ForgetRecord(Document& doc, const std::string& path, const MissionState& gone) {
  const auto& rows = doc.MissionFiles;
  if (std::count(rows.begin(), rows.end(), path) < 2) return;
  for (std::size_t row = 0; row < doc.Missions.size(); ++row) {
    Mission& record = doc.Missions[row];
    const bool isIt =
        rows[row] == path && record.Loaded && SameContent(*Freeze(record, gone.Own), *gone.Own);
    if (!isIt) continue;
    NameMission(record = Mission(), path);
    return;
  }
}

/** Their edits go with the step. */
void ForgetTakenOver(Session& session, Step& step, const std::vector<std::string>& paths) {
  const auto unsaved = UnsavedMissions(session);
  for (const auto& path : paths) {
    const auto node = session.History.Known.extract(path);
    if (!node) continue;
    const MissionState& gone = node.mapped();
    if (std::binary_search(unsaved.begin(), unsaved.end(), path))
      step.Missions.push_back({path, gone, {}});
    ForgetRecord(session.Doc, path, gone);
  }
}

}  // namespace

Journaling::Journaling(Session& session) : session_(session) {
  if (session_.History.Journal.Open++ > 0) return;
  session_.History.Journal.Changes.clear();
  session_.Services.Files.OnDeed = [&session](const FileDeed& deed) {
    return NoteDeed(session, deed);
  };
}

Journaling::~Journaling() {
  if (--session_.History.Journal.Open == 0) session_.Services.Files.OnDeed = nullptr;
}

void AddFileStep(Session& session, const std::string& title, bool apart) {
  Step step;
  step.FilesApart = apart;
  step.Title = title;
  step.Files = std::exchange(session.History.Journal.Changes, {});
  if (step.Files.empty()) return;
  auto moves = NetRenames(step.Files);
  ForgetTakenOver(session, step, TakenOver(session, moves));
  NoteMoved(session, moves);
  // Most commands have moved the rows themselves; a new name may be the old one of another row.
  const auto& rows = session.Doc.MissionFiles;
  const std::unordered_set<std::string> listed(rows.begin(), rows.end());
  std::erase_if(moves, [&](const auto& move) { return listed.contains(move.second); });
  MoveRows(session.Doc, moves);
  // Edits of a mission that is deleted or moved away go with it.
  for (auto known = session.History.Known.begin(); known != session.History.Known.end();) {
    const auto& [path, state] = *known;
    const FileSystem& files = session.Services.Files;
    const bool stands = files.FileExists(path) && files.Resolve(path) == path;
    const bool gone = TakesAway(step.Files, path) && !stands;
    if (gone) step.Missions.push_back({path, state, {}});
    known = gone ? session.History.Known.erase(known) : std::next(known);
  }
  step.FlightBefore = step.FlightAfter = session.Doc.CurFlight;
  AddStep(session, std::move(step));
}

}  // namespace rws
