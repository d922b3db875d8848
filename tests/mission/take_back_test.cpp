#include "mission/take_back.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

#include "mission/carry_edits.h"
#include "mission/kept_merge.h"
#include "mission/kept_reader.h"
#include "mission/line_diff.h"
#include "mission/reader.h"
#include "services/text.h"
#include "tests/support/doubles.h"

namespace rws::test {
namespace {

const char kText[] =
    "[MAIN]|  MAP Smolensk/sload.ini|  TIME 12.5|  CloudType 2|  CloudHeight 1000.0|  army 1|"
    "  playerNum 0|[Wing]|  r0100|  r0101|[r0100]|  Planes 2|  Skill 1|  Class air.IL_2|  Fuel 100|"
    "  weapons default|  spawn0 7_Static|[r0100_Way]|  TAKEOFF 100.00 200.00 0 0 &0|"
    "  NORMFLY 200.00 300.00 500.00 300.00 &0|  LANDING 300.00 400.00 0 0 &0|[r0101]|  Planes 1|"
    "  Skill 2|  Class air.I_16|  Fuel 90|  weapons default|[r0101_Way]|"
    "  TAKEOFF 150.00 200.00 0 0 &0|[NStationary]|"
    "  0_Static vehicles.planes.Plane$I_16 1 10.00 20.00 360.00 0.0 null|[Buildings]|"
    "[BornPlace]|  1 3000 500 600|[BornPlace0]|  I-16|  U-2|[Roads]|";

/** A mission that is read in either way and edited, and what the edits alone make of its file. */
struct EditedMission {
  EditedMission(bool keeps, const std::string& text, const std::function<void(Mission&)>& edit) {
    Mission& record = W.Doc.Missions.emplace_back();
    if (keeps)
      ReadKeptMission(W.Doc, W.Services, record, text);
    else
      ReadMissionText(W.Doc, W.Services, 0, text);
    Saved = record;
    edit(record);
  }
  Mission& Record() { return W.Doc.Missions[0]; }
  std::string Kept() {
    LineArray lines;
    const Mission kept = ReadAs(W.Doc, W.Services, Record(), true, Saved);
    return BuildKeptFile(W.Doc, W.Services, kept, lines) ? lines.FileText() : "(none)";
  }
  /** The changed lines as "old>new", joined by "|". */
  std::string Changes() {
    const std::string after = Kept();
    std::string changes;
    ForEachChange(after, [&](const ChangedLine&, const std::string& was, const std::string& is) {
      changes += (changes.empty() ? "" : "|") + was + ">" + is;
    });
    return changes;
  }
  template <class Visit>
  void ForEachChange(const std::string& after, Visit visit) {
    const auto before = SplitLines(Saved.AsRead.FileText()), lines = SplitLines(after);
    for (const auto& hunk : DiffLines(before, lines))
      for (std::size_t i = 0; i < std::max(hunk.Old.Count, hunk.New.Count); ++i) {
        ChangedLine line;
        if (i < hunk.Old.Count) line.Old = hunk.Old.First + i;
        if (i < hunk.New.Count) line.New = hunk.New.First + i;
        const auto text = [](const auto& of, std::size_t index) {
          return index == ChangedLine::kNone ? std::string() : std::string(Trim(of[index]));
        };
        if (hunk.Kind != HunkKind::Same) visit(line, text(before, line.Old), text(lines, line.New));
      }
  }
  /** Takes back the change "old>new"; "cannot", or what has gone with it. */
  std::string Take(const std::string& change) {
    std::string result = "no such change";
    ForEachChange(Kept(), [&](const auto& line, const std::string& was, const std::string& is) {
      if (was + ">" + is != change) return;
      const TakenBack taken = TakeBack(W.Doc, W.Services, Record(), Saved, line);
      result = taken.Record ? std::to_string(taken.Others) : "cannot";
      if (taken.Record) Record() = *taken.Record;
    });
    return result;
  }

  World W;
  Mission Saved;
};

void Rename(Mission& mission) {
  mission.Flights[0].Name = mission.Player = "g0102";
  mission.Flights[0].Class = "P_39N";
}
void Copy(Mission& mission) {
  Flight copy = mission.Flights[0];
  copy.Name = "r0103";
  mission.Flights.push_back(copy);
}
void Remove(Mission& mission) {
  mission.Flights.erase(mission.Flights.begin());
  mission.Flights[0].Fuel = "40";
}

TEST(TakeBack, MakesOneLineTheFilesAgainWithWhatBelongsToIt) {
  const struct {
    const char* What;
    std::function<void(Mission&)> Edit;
    const char *Change, *Others, *Rest;
  } rows[] = {
      {"of lines in a row one",
       [](Mission& m) { m.Flights[0].Fuel = "50", m.Flights[0].Weapons = "x"; }, "Fuel 100>Fuel 50",
       "0", "weapons default>weapons x"},
      {"far from others", [](Mission& m) { m.Time = "3", m.Flights[1].Fuel = "5"; },
       "TIME 12.5>TIME 3", "0", "Fuel 90>Fuel 5"},
      {"a line that is new", [](Mission& m) { m.Flights[1].StartTime = "9", m.CloudType = "3"; },
       ">StartTime 9", "0", "CloudType 2>CloudType 3"},
      {"a waypoint that was removed",
       [](Mission& m) {
         auto& route = m.Flights[0].Waypoints;
         route[0].Speed = "77";
         route.erase(route.begin() + 1, route.end());
       },
       "LANDING 300.00 400.00 0 0 &0>", "2", ""},
      {"a parked aircraft",
       [](Mission& m) {
         for (std::size_t i = 0; i < m.Lines.size(); ++i)
           if (Contains(m.Lines[i], "0_Static v"))
             m.Lines.Set(i, Replace(m.Lines[i], "I_16", "U_2"));
         m.Flights[0].Fuel = "1";
       },
       "0_Static vehicles.planes.Plane$I_16 1 10.00 20.00 360.00 0.0 null>"
       "0_Static vehicles.planes.Plane$U_2 1 10.00 20.00 360.00 0.0 null",
       "0", "Fuel 100>Fuel 1"},
      {"an aircraft of a home base",
       [](Mission& m) {
         m.BornPlaces[0].Planes.push_back("Il-2");
         m.BornPlaces[0].Army = 2;
       },
       ">Il-2", "0", "1 3000 500 600>2 3000 500 600"},
      {"a flight's name", Rename, "r0100>g0102", "3", "Class air.IL_2>Class air.P_39N"},
      {"a flight's class alone", Rename, "Class air.IL_2>Class air.P_39N", "0",
       ">player g0102|r0100>g0102|[r0100]>[g0102]|[r0100_Way]>[g0102_Way]"},
      {"a flight's header", Rename, "[r0100_Way]>[g0102_Way]", "3",
       "Class air.IL_2>Class air.P_39N"},
      {"a removed flight by its name", Remove, "r0100>", "11", "Fuel 90>Fuel 40"},
      {"a removed flight by a line", Remove, "spawn0 7_Static>", "11", "Fuel 90>Fuel 40"},
      {"a copy by its name", Copy, ">r0103", "10", ""},
      {"a copy by a line", Copy, ">Fuel 100", "10", ""},
  };
  for (const bool keeps : {true, false})
    for (const auto& row : rows) {
      SCOPED_TRACE(::testing::Message() << row.What << (keeps ? ", kept" : ", made anew"));
      EditedMission mission(keeps, CrlfText(kText), row.Edit);
      EXPECT_EQ(mission.Take(row.Change), row.Others) << mission.Changes();
      EXPECT_EQ(mission.Changes(), row.Rest);
      EXPECT_EQ(mission.Record().KeepsLines, keeps);
    }
}

TEST(TakeBack, OfAllChangesGivesTheFileItsBytesBack) {
  const std::string texts[] = {CrlfText(kText), Replace(kText, "|", "\n") + "\n; \xC4",
                               Replace(Replace(kText, "|", "\r\n"), "  Skill", "\tSkill ")};
  for (const auto& text : texts) {
    EditedMission mission(true, text, [](Mission& m) {
      Rename(m);
      Copy(m);
      m.Flights.erase(m.Flights.begin() + 1);
      m.BornPlaces[0].Planes = {"U-2", "Yak-1"}, m.BornPlaces[0].Radius = 1;
      m.Time = "4", m.CloudHeight = "800", m.Army = "2";
      m.Flights[0].Waypoints.pop_back();
      m.Flights[0].Skill = "3", m.Flights[0].OnlyAI = "1",
      m.Flights[0].PlaneSlots[1].Skin = "a.bmp";
    });
    ASSERT_NE(mission.Kept(), text);
    for (int i = 0; i < 40 && mission.Kept() != text; ++i) {
      const std::string changes = mission.Changes();
      const auto all = SplitAt(changes, '|');
      const bool one = std::any_of(all.begin(), all.end(), [&](std::string_view change) {
        const std::string taken = mission.Take(std::string(change));
        return taken != "cannot" && taken != "no such change";
      });
      ASSERT_TRUE(one) << mission.Changes();
    }
    EXPECT_EQ(mission.Kept(), text);
  }
}

}  // namespace
}  // namespace rws::test
