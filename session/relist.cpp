#include "session/relist.h"

#include <algorithm>
#include <map>
#include <unordered_set>
#include <utility>

#include "mission/reader.h"
#include "session/recording.h"

namespace rws {

namespace {

/** Missions with unsaved edits that are not on disk any more, put where they stood. */
std::vector<std::string> KeptFiles(const Session& session, const std::vector<std::string>& before,
                                   const std::vector<std::string>& stay,
                                   std::vector<std::string>& files) {
  std::vector<std::string> kept;
  const std::unordered_set<std::string> onDisk(files.begin(), files.end());
  for (std::size_t i = 0; i < before.size(); ++i) {
    const bool stays = std::find(stay.begin(), stay.end(), before[i]) != stay.end();
    if (onDisk.contains(before[i]) || !(stays || IsUnsaved(session, i))) continue;
    files.insert(files.begin() + static_cast<std::ptrdiff_t>(std::min(i, files.size())), before[i]);
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
    const auto known = session.History.Known.find(doc.MissionFiles[i]);
    const auto record = records.find(doc.MissionFiles[i]);
    if (record != records.end()) {
      doc.Missions[i] = std::move(record->second.first);
      doc.MissionShadow[i] = std::move(record->second.second);
    } else if (known != session.History.Known.end() && known->second.IsAway) {
      doc.Missions[i] = Thaw(*known->second.Own);
      doc.MissionShadow[i] = Thaw(*known->second.Shadow);
      // They may have been renamed meanwhile.
      NameMission(doc.Missions[i], doc.MissionFiles[i]);
      NameMission(doc.MissionShadow[i], doc.MissionFiles[i]);
      known->second.IsAway = false;
    }
  }
}

}  // namespace

Relisted RelistFolder(Session& session, const std::vector<std::string>& stay) {
  Document& doc = session.Doc;
  const auto before = doc.MissionFiles;
  const auto index = static_cast<std::size_t>(doc.CurMission);
  const std::string current = index < before.size() ? before[index] : "";
  std::map<std::string, std::pair<Mission, Mission>> records;
  for (std::size_t i = 0; i < before.size() && i < doc.Missions.size(); ++i)
    if (doc.Missions[i].Loaded)
      records[before[i]] = {doc.Missions[i],
                            i < doc.MissionShadow.size() ? doc.MissionShadow[i] : doc.Missions[i]};
  Document listed;
  listed.MissionDir = doc.MissionDir;
  listed.ExcludedNames = doc.ExcludedNames;
  GetMissionFiles(listed, session.Services);
  Relisted result;
  const auto kept = KeptFiles(session, before, stay, listed.MissionFiles);
  result.Changed = listed.MissionFiles != before;
  if (result.Changed) {
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
  doc.MissionFiles.clear();
  doc.Missions.clear();
  doc.MissionShadow.clear();
  doc.CurMission = 0;
  doc.CurFlight = 0;
  RelistFolder(session);
}

}  // namespace rws
