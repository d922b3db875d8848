#include "session/relist.h"

#include <algorithm>
#include <map>
#include <unordered_set>
#include <utility>

#include "mission/reader.h"
#include "services/code_page.h"
#include "services/paths.h"
#include "session/recording.h"

namespace rws {

namespace {

/** Missions with unsaved edits that are not on disk any more, put among the others by their names.
 */
std::vector<std::string> KeptFiles(const Session& session, const std::vector<std::string>& before,
                                   const std::vector<std::string>& stay,
                                   std::vector<std::string>& files) {
  std::vector<std::string> kept;
  const std::unordered_set<std::string> onDisk(files.begin(), files.end());
  for (std::size_t i = 0; i < before.size(); ++i) {
    const bool stays = std::find(stay.begin(), stay.end(), before[i]) != stay.end();
    if (onDisk.contains(before[i]) || !(stays || IsUnsaved(session, i))) continue;
    const auto sortsBefore = [](const std::string& one, const std::string& other) {
      return FoldName(GetFileName(one)) < FoldName(GetFileName(other));
    };
    files.insert(std::upper_bound(files.begin(), files.end(), before[i], sortsBefore), before[i]);
    kept.push_back(before[i]);
  }
  return kept;
}

/** Fills both arrays of the document for `MissionFiles` from the records that were in memory. */
void TakeOver(Session& session, std::map<std::string, std::pair<Mission, Mission>> records) {
  Document& doc = session.Doc;
  LoadMissionArray(doc, session.Services);
  doc.MissionShadow = doc.Missions;
  for (std::size_t i = 0; i < doc.MissionFiles.size(); ++i) {
    const auto record = records.find(doc.MissionFiles[i]);
    if (record == records.end()) continue;
    doc.Missions[i] = std::move(record->second.first);
    doc.MissionShadow[i] = std::move(record->second.second);
  }
  TakeWaiting(session);
}

}  // namespace

Relisted RelistFolder(Session& session, const std::vector<std::string>& stay) {
  Document& doc = session.Doc;
  const auto before = doc.MissionFiles;
  const auto index = static_cast<std::size_t>(doc.CurMission);
  const std::string current = index < before.size() ? before[index] : "";
  Document listed;
  listed.MissionDir = doc.MissionDir;
  listed.ExcludedNames = doc.ExcludedNames;
  GetMissionFiles(listed, session.Services);
  Relisted result;
  const auto kept = KeptFiles(session, before, stay, listed.MissionFiles);
  result.Changed = listed.MissionFiles != before || doc.Missions.size() != before.size();
  if (result.Changed) {
    std::map<std::string, std::pair<Mission, Mission>> records;
    if (doc.MissionShadow.size() != doc.Missions.size()) doc.MissionShadow = doc.Missions;
    for (std::size_t i = 0; i < before.size() && i < doc.Missions.size(); ++i)
      if (doc.Missions[i].Loaded)
        records[before[i]] = {std::move(doc.Missions[i]), std::move(doc.MissionShadow[i])};
    doc.MissionFiles = std::move(listed.MissionFiles);
    TakeOver(session, std::move(records));
  }
  for (const auto& path : kept)
    result.Gone.push_back(static_cast<std::size_t>(MissionAt(doc, path)));
  if (const auto found = MissionAt(doc, current); found >= 0) {
    doc.CurMission = static_cast<int>(found);
  } else {
    const int last = static_cast<int>(std::ssize(doc.MissionFiles)) - 1;
    doc.CurMission = std::clamp(doc.CurMission, 0, std::max(last, 0));
  }
  return result;
}

void OpenFolderKeeping(Session& session, const std::string& folder) {
  Record(session, nullptr);
  Document& doc = session.Doc;
  const auto unsaved = UnsavedMissions(session);
  std::erase_if(session.History.Known, [&](const auto& known) {
    return !std::binary_search(unsaved.begin(), unsaved.end(), known.first);
  });
  for (auto& [path, state] : session.History.Known) state.IsAway = true;
  doc.MissionDir = folder;
  // Those that wait in it are listed also where their files have gone.
  const std::string start = StripFileName(BuildPath(folder, "x"));
  doc.MissionFiles.clear();
  for (const auto& path : unsaved)
    if (StripFileName(path) == start) doc.MissionFiles.push_back(path);
  doc.Missions.clear();
  doc.MissionShadow.clear();
  RelistFolder(session, std::vector(doc.MissionFiles));
  doc.CurMission = 0;
  doc.CurFlight = 0;
}

}  // namespace rws
