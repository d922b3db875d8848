#include <gtest/gtest.h>

#include <random>

#include "mission/writer.h"
#include "session/current.h"
#include "session/doors.h"
#include "session/recording.h"
#include "session/saving.h"
#include "tests/support/session_desk.h"

namespace rws::test {
namespace {

constexpr std::size_t kMissions = 3;
#ifdef __SANITIZE_ADDRESS__
constexpr int kRounds = 20000;
#else
constexpr int kRounds = 100000;
#endif
const char* const kNames[kMissions] = {"a", "b", "c"};

/** What the user has, written down as the file texts of the missions and nothing else. */
struct Model {
  struct Step {
    std::size_t Mission;
    std::string Before, After;
    /** Done again, it gives the mission what its file holds then. */
    bool IsDrop = false;
  };
  std::string Own[kMissions], File[kMissions];
  std::vector<Step> Steps;
  std::size_t Done = 0;
  /** First and count of steps that are one of the history. */
  std::vector<std::pair<std::size_t, std::size_t>> Together;

  void ForgetUndone() {
    Steps.resize(Done);
    std::erase_if(Together, [&](const auto& steps) { return steps.first >= Done; });
  }
  void Push(std::size_t mission, const std::string& before, const std::string& after,
            bool isDrop = false) {
    Steps.push_back({mission, before, after, isDrop});
    ++Done;
    Own[mission] = after;
  }
};

class HistoryProperty : public ::testing::Test {
 protected:
  HistoryProperty() {
    for (std::size_t i = 0; i < kMissions; ++i)
      Model_.Own[i] = Model_.File[i] = TaggedMission(kNames[i]);
  }

  std::string Written(std::size_t mission) {
    Document copy = World_.Doc;
    if (!copy.Missions[mission].Loaded) return FileSystem().ReadFile(Desk_.Path(kNames[mission]));
    LineArray lines;
    BuildMissionFile(copy, World_.Services, lines, mission, {});
    return lines.FileText();
  }

  std::size_t Random(std::size_t count) { return Engine() % count; }

  /** One of the many edits; the text that it gives is the model's. */
  void EditSomething() {
    const auto mission = static_cast<std::size_t>(World_.Doc.CurMission);
    auto& flights = CurrentMission(World_).Flights;
    static constexpr EditKind kKinds[] = {{nullptr, "Fuel"},
                                          {nullptr, "Removal"},
                                          {nullptr, "Altitude"},
                                          {nullptr, "Object"},
                                          {nullptr, "Base", Lighting::None},
                                          {nullptr, "Weather"}};
    const std::size_t what =
        Random(20) == 0 ? 1 : std::vector<std::size_t>{0, 2, 3, 4, 5}[Random(5)];
    const std::string before = Written(mission);
    CloseStep(World_);
    Edit(World_, kKinds[what], [&] {
      const std::string number = std::to_string(Random(90) + 10);
      const std::size_t flight = flights.empty() ? 0 : Random(flights.size());
      LineArray& lines = CurrentMission(World_).Lines;
      if (what == 0 && !flights.empty()) flights[flight].Fuel = number;
      if (what == 1 && flights.size() > 1)
        flights.erase(flights.begin() + static_cast<std::ptrdiff_t>(flight));
      if (what == 2 && !flights.empty()) flights[flight].Waypoints[0].Alt = number + "0";
      if (what == 3)
        for (std::size_t i = 0; i < lines.size(); ++i)
          if (lines[i].starts_with("  0_Static"))
            lines.Set(i, "  0_Static vehicles.A 1 2 3 " + number);
      if (what == 4) CurrentMission(World_).BornPlaces[0].Radius = 1000 + std::stoi(number);
      if (what == 5) CurrentMission(World_).CloudType = std::to_string(Random(7));
    });
    const std::string after = Written(mission);
    if (after == before) return;
    Model_.ForgetUndone();
    Model_.Push(mission, before, after);
  }

  void Select() { Desk_.Show(World_.Doc.MissionFiles[Random(kMissions)], false); }

  void Save() {
    const auto mission = static_cast<std::size_t>(World_.Doc.CurMission);
    ASSERT_TRUE(SaveOne(World_, World_.Doc.MissionFiles[mission], {}));
    Model_.File[mission] = Model_.Own[mission];
  }

  /** As every command that reads the folder anew. */
  void RereadAll() {
    Desk_.Reread("Update");
    // One step for all that was dropped.
    std::size_t dropped = 0;
    for (std::size_t i = 0; i < kMissions; ++i) dropped += Model_.Own[i] != Model_.File[i];
    if (dropped == 0) return;
    Model_.ForgetUndone();
    Model_.Together.push_back({Model_.Done, dropped});
    for (std::size_t i = 0; i < kMissions; ++i)
      if (Model_.Own[i] != Model_.File[i]) Model_.Push(i, Model_.Own[i], Model_.File[i], true);
  }

  /** How many of the model's steps are one of the history. */
  std::size_t CountFrom(std::size_t first) const {
    for (const auto& [start, count] : Model_.Together)
      if (start == first) return count;
    return 1;
  }
  std::size_t CountBefore(std::size_t end) const {
    for (const auto& [start, count] : Model_.Together)
      if (start + count == end) return count;
    return 1;
  }

  void Undo() {
    Desk_.Run("undo");
    ASSERT_EQ(Desk_.Last.Done, Model_.Done > 0) << Desk_.Last.Reason;
    if (!Desk_.Last.Done) return;
    for (std::size_t count = CountBefore(Model_.Done); count > 0; --count) {
      const auto& step = Model_.Steps[--Model_.Done];
      Model_.Own[step.Mission] = step.Before;
    }
  }

  void Redo() {
    Desk_.Run("redo");
    ASSERT_EQ(Desk_.Last.Done, Model_.Done < Model_.Steps.size()) << Desk_.Last.Reason;
    if (!Desk_.Last.Done) return;
    for (std::size_t count = CountFrom(Model_.Done); count > 0; --count) {
      const auto& step = Model_.Steps[Model_.Done++];
      Model_.Own[step.Mission] = step.IsDrop ? Model_.File[step.Mission] : step.After;
    }
  }

  /** The text of one mission and the marks of all. */
  void Compare(std::size_t mission) {
    ASSERT_EQ(Written(mission), Model_.Own[mission]) << kNames[mission];
    for (std::size_t i = 0; i < kMissions; ++i) {
      ASSERT_EQ(IsUnsaved(World_, i), Model_.Own[i] != Model_.File[i]) << kNames[i];
    }
  }

  SessionDesk Desk_{{kNames[0], kNames[1], kNames[2]}};
  World& World_ = Desk_.World;
  Model Model_;
  std::mt19937 Engine{20261122};
};

TEST_F(HistoryProperty, RandomStepsAgreeWithAPlainModel) {
  World_.History.MostBytes = std::size_t{1} << 40;
  for (int round = 0; round < kRounds; ++round) {
    const std::size_t dice = Random(1000);
    SCOPED_TRACE("round " + std::to_string(round) + ", dice " + std::to_string(dice));
    if (dice < 400) {
      EditSomething();
    } else if (dice < 640) {
      Undo();
    } else if (dice < 840) {
      Redo();
    } else if (dice < 990) {
      Select();
    } else if (dice < 993) {
      Save();
    } else if (dice < 997) {
      RereadAll();
    }
    Compare(round % 4 == 0 ? Random(kMissions) : static_cast<std::size_t>(World_.Doc.CurMission));
    if (HasFatalFailure()) return;
  }
}

}  // namespace
}  // namespace rws::test
