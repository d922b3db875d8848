#include "tests/support/session_desk.h"

#include <gtest/gtest.h>

#include "mission/reader.h"
#include "mission/update.h"
#include "services/text.h"
#include "session/current.h"
#include "session/doors.h"
#include "session/reading.h"
#include "session/recording.h"
#include "session/relist.h"
#include "session/saving.h"

namespace rws::test {

namespace {

std::string FilesOf(const std::vector<std::string>& names, const std::string& others) {
  std::string files = others;
  for (auto name : names) {
    const bool briefed = name.ends_with('+');
    if (briefed) name.pop_back();
    files += "|in/" + name + ".mis=" + TaggedMission(name);
    if (briefed) files += "|in/" + name + ".properties=Briefing of " + name;
  }
  return files;
}

constexpr EditKind kFuel{nullptr, "Fuel"}, kSkill{nullptr, "Skill"}, kWeather{nullptr, "Weather"},
    kBase{nullptr, "Home base"}, kLine{nullptr, "Object"}, kQuiet{nullptr, "Fuel", Lighting::None};

}  // namespace

std::string TaggedMission(const std::string& tag) {
  std::string text = CrlfText(
      "[MAIN]|  MAP Smolensk/sload.ini|  TIME 12.5|  CloudType 2|  CloudHeight 1000.0|"
      "  army 1|  playerNum 0|[SEASON]|  Year " +
      tag + "|[Wing]|  r0100|  r0101|  r0102");
  for (const std::string name : {"r0100", "r0101", "r0102"})
    text += CrlfText("[" + name + "]|  Planes 1|  Skill 1|  Class air.IL_2|  Fuel 100|" +
                     "  weapons default|[" + name + "_Way]|  TAKEOFF 100.00 200.00 0 0 &0");
  return text + CrlfText(
                    "[Chiefs]|[NStationary]|  0_Static vehicles.A 1 2 3 4|[BornPlace]|"
                    "  1 3000 100 200|[StaticCamera]|  last");
}

SessionDesk::SessionDesk(const std::vector<std::string>& names, const std::string& files)
    : Desk(FilesOf(names, files)) {
  World.Services.AppPath = Box.Path("program");
  Box.MakeFolder("program");
  Box.MakeFolder("from");
  World.Prefs.bBackup = false;
  if (!names.empty()) Show(World.Doc.MissionFiles[0], false);
}

std::size_t SessionDesk::Row(const std::string& name) const {
  const auto row = MissionAt(World.Doc, Path(name));
  if (row < 0) ADD_FAILURE() << "not listed: " << name;
  return row < 0 ? 0 : static_cast<std::size_t>(row);
}

void SessionDesk::Show(const std::string& path, bool keepsShadow) {
  if (const auto row = MissionAt(World.Doc, path); row >= 0)
    World.Doc.CurMission = static_cast<int>(row);
  if (World.Doc.MissionFiles.empty()) return;
  const bool gone =
      World.Services.Files.IsGone(CurrentMission(World).DirPath + CurrentMission(World).FileName);
  ReadCurrent(World, keepsShadow ? Baseline::Keep : Baseline::Take,
              gone && CurrentMission(World).Loaded);
  rws::Record(World, nullptr);
}

void SessionDesk::Reread(const std::string& by) {
  Document& doc = World.Doc;
  const std::string current = doc.MissionFiles.empty() ? "" : At(doc.MissionFiles, doc.CurMission);
  GetMissionFiles(doc, World.Services);
  LoadMissionArray(doc, World.Services);
  doc.MissionShadow = doc.Missions;
  NoteDrops(World, by);
  doc.CurMission = 0;
  Show(current, false);
}

void SessionDesk::Change(const std::string& what, const std::string& value) {
  const auto flight = [&](std::size_t digit) -> Flight& {
    return FlightAt(World, std::stoi(what.substr(digit)));
  };
  Mission& mission = CurrentMission(World);
  if (what.starts_with("fuel"))
    Edit(World, kFuel, [&] { flight(4).Fuel = value; });
  else if (what.starts_with("quiet"))
    Edit(World, kQuiet, [&] { flight(5).Fuel = value; });
  else if (what.starts_with("show"))
    rws::Show(World, [&] { Edit(World, kFuel, [&] { flight(4).Fuel = value; }); });
  else if (what == "skills")
    Edit(World, kSkill, [&] {
      for (auto& each : mission.Flights) each.Skill = value;
    });
  else if (what == "weather")
    Edit(World, kWeather, [&] { mission.CloudType = value; });
  else if (what == "base")
    Edit(World, kBase, [&] { mission.BornPlaces[0].Planes = {value}; });
  else if (what == "line")
    Edit(World, kLine, [&] { mission.Lines.Set(mission.Lines.size() - 1, value); });
  else
    ADD_FAILURE() << "no such word: " << what;
}

void SessionDesk::Run(const std::string& words) {
  for (const auto part : SplitAt(words, ' ')) {
    const std::string word(part), what = word.substr(0, word.find('='));
    const std::string value = what == word ? "" : word.substr(what.size() + 1);
    if (word.empty()) continue;
    if (word == "undo" || word == "redo") {
      Last = word == "undo" ? UndoStep(World) : RedoStep(World);
      if (Last.Done) Show(Last.Mission, true);
    } else if (what == "go") {
      Show(Path(value), false);
    } else if (word == "close") {
      CloseStep(World);
    } else if (word == "compare") {
      SetModify(World);
      rws::Record(World, nullptr);
    } else if (word == "skip") {
      SkipStep(World);
    } else if (word == "save") {
      SaveOne(World, World.Doc.MissionFiles[static_cast<std::size_t>(World.Doc.CurMission)], {});
    } else if (word == "drop") {
      DropEdits(World.Doc, static_cast<std::size_t>(World.Doc.CurMission));
      NoteDrops(World, "leaving");
      Show("", false);
    } else if (word == "reread") {
      Reread("Update");
    } else if (word == "relist") {
      RelistFolder(World);
    } else if (what == "gone") {
      Box.Remove("in/" + value + ".mis");
    } else if (word == "keep") {
      EXPECT_EQ(KeepUnsaved(World, Recovery), "");
    } else {
      Change(what, value);
    }
  }
}

std::string SessionDesk::Steps() const {
  std::vector<std::string> titles;
  for (const auto& step : World.History.Steps)
    titles.push_back(titles.size() < World.History.Done ? step.Title : "(" + step.Title + ")");
  return Joined(titles);
}

std::string SessionDesk::State(const std::string& name) const {
  const std::size_t row = Row(name);
  const Mission& mission = World.Doc.Missions[row];
  if (!mission.Loaded) return "unread";
  std::string state;
  for (const auto& flight : mission.Flights) state += (state.empty() ? "" : ",") + flight.Fuel;
  state += "/" + mission.CloudType + "^" + World.Doc.MissionShadow[row].Flights[0].Fuel;
  return state + (IsUnsaved(World, row) ? "*" : "") + (mission.Modified ? "!" : "");
}

std::string SessionDesk::Files() const {
  return Disk("in") + "\nout: " + Disk("out") + "\nfrom: " + Disk("from");
}

}  // namespace rws::test
