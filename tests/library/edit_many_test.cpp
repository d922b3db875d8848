#include "library/edit_many.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <functional>
#include <set>

#include "catalogues/aircraft.h"
#include "catalogues/squadrons.h"
#include "mission/backup_index.h"
#include "mission/kept_text.h"
#include "mission/line_diff.h"
#include "services/faults.h"
#include "services/text.h"
#include "tests/support/doubles.h"
#include "tests/support/failing_step.h"
#include "tests/support/places.h"
#include "tests/support/sandbox.h"

namespace rws {
namespace {

namespace fs = std::filesystem;

const std::string kMission = test::CrlfText(
    "[MAIN]|  TIME 12.0|  CloudType 1|  player 4ShAPL00|  army 1|  playerNum 0|  WeatherX 1|"
    "[Wing]|  4ShAPL00|  I_JG5401|[4ShAPL00]|  Planes 2|  Skill 1|  Class air.IL_2Type3|"
    "  Fuel 100|  weapons default|  later 7|[4ShAPL00_Way]|  NORMFLY 3.00 4.00 500.00 300.00 &0|"
    "[I_JG5401]|  Planes 1|  OnlyAI 1|  Skill 3|  Class air.BF_109G6Late|  Fuel 50|"
    "  weapons default|[I_JG5401_Way]|  NORMFLY 7.00 8.00 900.00 350.00 &0");

EditOrder OrderOf(const std::string& joinedByBars) {
  EditOrder order;
  for (const auto text : SplitAt(joinedByBars, '|')) order.Sets.push_back(ParseAssignment(text));
  return order;
}

struct Tables {
  Tables() {
    test::World world(test::SourceFolder() + "/data");
    Document doc;
    LoadAircraftArray(doc, All, world.Services);
    LoadRegiments(All, world.Services);
  }
  Catalogues All;
};

class EditMany : public testing::Test {
 protected:
  EditMany() : world_(box_.Path("app")), context_{world_.Services, TablesOfAll(), {}} {
    box_.MakeFolder("app");
    context_.Base.Untouched = UntouchedLines::Keep;
    for (const std::string name : {"a", "b", "c"}) {
      paths_.push_back(box_.Write("in/" + name + ".mis", Text(name)));
      world_.Log.clear();
    }
  }
  static const Catalogues& TablesOfAll() {
    static const Tables tables;
    return tables.All;
  }
  static std::string Text(const std::string& name) {
    return Replace(kMission, "WeatherX", "Weather" + name);
  }
  EditPlan Plan(const std::string& order) {
    return PlanEdits(context_, OrderOf(order), paths_, hooks_);
  }
  EditReport Apply(const EditPlan& plan) {
    return ApplyEdits(context_, plan, {world_.Services, backup_}, hooks_);
  }
  /** "flight.plane.Field old>new" or "... !reason" of each value, then "!" and the mission's. */
  static std::string Shown(const PlannedMission& mission) {
    std::vector<std::string> rows;
    for (const auto& value : mission.Values) {
      std::string row = value.Flight.empty() ? "" : value.Flight + ".";
      if (value.Of == ValueOf::Plane) row += std::to_string(value.Index) + ".";
      row.append(value.Field).append(" ").append(value.Old).append(">").append(value.New);
      rows.push_back(row + (value.WhyNot.empty() ? "" : " !"));
    }
    if (!mission.WhyNot.empty()) rows.push_back("!" + mission.WhyNot);
    return test::Joined(rows);
  }
  std::string Left(const EditReport& report) {
    std::string text;
    for (const auto& [path, reason] : report.Left)
      text += path.substr(path.size() - 5, 1) + ": " + reason + "|";
    return text;
  }
  /** For each mission "old", "new" or "odd". */
  std::string States(const std::string& from, const std::string& to) const {
    std::string states;
    for (const std::string name : {"a", "b", "c"}) {
      const std::string now = box_.Read("in/" + name + ".mis");
      states += now == Text(name) ? "o" : now == Replace(Text(name), from, to) ? "n" : "?";
    }
    return states;
  }

  test::Sandbox box_;
  test::World world_;
  EditContext context_;
  EditHooks hooks_;
  std::vector<std::string> paths_;
  bool backup_ = true;
};

TEST_F(EditMany, PlansWhatChangesAndWhyNot) {
  struct Row {
    const char *Order, *Whole, *Partly;  // with impossible values leaving the mission out, or not
  };
  const Row rows[] = {
      {"Time=5.5|CloudType=1", "Time 12.0>5.5", nullptr},
      {"CloudHeight=900|TimeConstant=1", "CloudHeight >900|TimeConstant 0>1", nullptr},
      {"flight[*].Fuel=50", "4ShAPL00.Fuel 100>50", nullptr},
      {"flight[*].Fuel=50|flight[*].Fuel=60", "4ShAPL00.Fuel 100>60|I_JG5401.Fuel 50>60", nullptr},
      {"flight[army=blue].Skill=0", "I_JG5401.Skill 3>0", nullptr},
      {"flight[aircraft=bf 109*].Skill=0", "I_JG5401.Skill 3>0", nullptr},
      {"flight[squadron=4shap*].Parachute=0", "4ShAPL00.Parachute 1>0", nullptr},
      {"flight[class=il_2*].plane[*].Skin=A.bmp", "4ShAPL00.0.Skin >A.bmp|4ShAPL00.1.Skin >A.bmp",
       nullptr},
      {"flight[class=none*].Fuel=1", "", nullptr},
      {"flight[*].OnlyAI=0", "I_JG5401.OnlyAI 1>0", nullptr},
      {"Time=5|flight[*].OnlyAI=1",
       "4ShAPL00.OnlyAI 0>1 !|!flight[*].OnlyAI=1: the player's flight \"4ShAPL00\" is left to the "
       "computer",
       "Time 12.0>5|4ShAPL00.OnlyAI 0>1 !"},
      {"flight[*].Weapons=4xfab100|flight[*].Fuel=30",
       "I_JG5401.Weapons default>4xfab100 !|!flight[*].Weapons=4xfab100: the tables have no "
       "loadout "
       "\"4xfab100\" for class \"BF_109G6Late\"",
       "4ShAPL00.Weapons default>4xFAB100|4ShAPL00.Fuel 100>30|I_JG5401.Fuel 50>30|"
       "I_JG5401.Weapons default>4xfab100 !"},
      {"flight[*].plane[0].NoseArt=a.bmp|Army=2",
       "4ShAPL00.0.NoseArt >a.bmp !|I_JG5401.0.NoseArt >a.bmp !|!flight[*].plane[0].NoseArt=a.bmp: "
       "by the tables flight \"4ShAPL00\" carries no nose art",
       "Army 1>2|4ShAPL00.0.NoseArt >a.bmp !|I_JG5401.0.NoseArt >a.bmp !"}};
  for (const auto& row : rows)
    for (const bool partly : {false, true}) {
      SCOPED_TRACE(row.Order);
      context_.LeavesImpossible = partly;
      const EditPlan plan = Plan(row.Order);
      const std::string shown = partly && row.Partly ? row.Partly : row.Whole;
      for (const auto& mission : plan.Missions) EXPECT_EQ(Shown(mission), shown);
      EXPECT_EQ(plan.Missions[0].Changes(), !shown.empty() && (partly || !row.Partly));
    }
  EXPECT_EQ(States("", ""), "ooo");
}

TEST_F(EditMany, LeavesOutAndNamesWhatCannotBe) {
  box_.Write("in/brief.mis", "Name x");
  paths_.push_back(box_.Path("in/gone.mis"));
  paths_.push_back(box_.Path("in/brief.mis"));
  fs::permissions(test::ToFsPath(paths_[1]), fs::perms::owner_read);
  hooks_.Refuses = [&](const std::string& path) { return path == paths_[2] ? "unsaved" : ""; };
  const EditPlan plan = Plan("Time=5");
  const auto left = Left(Apply(plan));
  EXPECT_EQ(States("12.0", "5"), "noo");
  EXPECT_TRUE(Contains(left, "b: ") && Contains(left, "read-only")) << left;
  EXPECT_TRUE(Contains(left, "c: unsaved|e: ")) << left;
  EXPECT_TRUE(Contains(left, "f: this is no mission: it has")) << left;
  fs::permissions(test::ToFsPath(paths_[1]), fs::perms::owner_all);

  // All of them again, which then change between the preview and its application.
  hooks_.Refuses = nullptr;
  EditPlan next = Plan("Time=6");
  box_.Write("in/a.mis", Text("a"));
  fs::permissions(test::ToFsPath(paths_[1]), fs::perms::owner_read);
  box_.Remove("in/c.mis");
  const EditReport report = Apply(next);
  EXPECT_EQ(EndText(report), "0 done, 5 left out");
  EXPECT_TRUE(Contains(Left(report), "a: it has changed since the preview|b: ")) << Left(report);
  EXPECT_EQ(States("", "").substr(0, 2), "oo");
  fs::permissions(test::ToFsPath(paths_[1]), fs::perms::owner_all);
  box_.Write("in/c.mis", Text("c"));
  next = Plan("Time=7");
  next.Missions[0].IsWanted = false;
  EXPECT_EQ(EndText(Apply(next)), "2 done, 2 left out");
  EXPECT_EQ(States("12.0", "7"), "onn");
}

TEST_F(EditMany, ReachesAFileOfTwoNamesOnce) {
  if (!test::kPosixFiles) GTEST_SKIP() << test::kNeedsPosixFiles;
  box_.Link("in/link.mis", "in/a.mis");
  paths_ = {paths_[0], box_.Path("in/link.mis")};
  const EditReport report = Apply(Plan("Time=5"));
  EXPECT_EQ(EndText(report), "1 done, 1 left out");
  EXPECT_EQ(States("12.0", "5"), "noo");
  EXPECT_TRUE(fs::is_symlink(test::ToFsPath(paths_[1])));
}

TEST_F(EditMany, EndsWhereItIsCancelled) {
  const EditPlan plan = Plan("Time=5");
  for (std::size_t at = 0; at <= 3; ++at) {
    SCOPED_TRACE(at);
    for (const std::string name : {"a", "b", "c"}) box_.Write("in/" + name + ".mis", Text(name));
    hooks_.Going = [&](const WorkStep& step) {
      EXPECT_EQ(step.Name, step.Done < step.Of ? paths_[step.Done] : "");
      return step.Done < at;
    };
    EXPECT_EQ(PlanEdits(context_, plan.Order, paths_, hooks_).Missions.size(), at);
    const EditReport report = Apply(plan);
    EXPECT_EQ(States("12.0", "5"), std::string(at, 'n') + std::string(3 - at, 'o'));
    EXPECT_EQ(report.Done.size(), at);
    EXPECT_EQ(report.NotTried.size(), 3 - at);
    hooks_.Going = nullptr;
  }
}

TEST_F(EditMany, KeepsAsManyBackupsAsAreWanted) {
  for (const std::string time : {"5", "6", "7", "8"}) {
    ++world_.Clock.Hour;
    ApplyEdits(context_, Plan("Time=" + time), {world_.Services, true, "", 2}, hooks_);
  }
  EXPECT_EQ(ListBackups(world_.Services, paths_[0]).size(), 3U)
      << "the first one, and the last two";
}

TEST_F(EditMany, KeepsEachMissionWholeWhateverStepFails) {
  paths_.resize(2);
  for (const bool backup : {true, false}) {
    backup_ = backup;
    const int steps = test::ForEachFailingStep([&](test::FailingStep& step) {
      fs::remove_all(test::ToFsPath(box_.Path("app")));
      box_.MakeFolder("app");
      for (const std::string name : {"a", "b", "c"}) box_.Write("in/" + name + ".mis", Text(name));
      std::vector<std::string> before, after;
      hooks_.Before = [&](const std::string& path, const std::string&) { before.push_back(path); };
      hooks_.After = [&](const std::string& path, const std::string&, bool isWritten) {
        if (isWritten) after.push_back(path);
      };
      world_.Services.Ask.MsgBox = [](auto&&...) { return Answer::Ok; };
      const EditPlan plan = Plan("Time=5");
      EditReport report;
      step.During(world_.Services.Files, [&] { report = Apply(plan); });
      const std::string states = States("12.0", "5");
      EXPECT_EQ(states.find('?'), states.npos) << states;
      std::string told(2, '-');
      for (std::size_t i = 0; i < 2; ++i) {
        const auto has = [&](const auto& list) {
          return std::find(list.begin(), list.end(), paths_[i]) != list.end();
        };
        if (has(report.Done)) told[i] = 'n';
        if (has(report.NotTried)) told[i] = 'o';
        for (const auto& left : report.Left)
          if (left.Path == paths_[i] && !left.Reason.empty()) told[i] = 'o';
      }
      EXPECT_EQ(told + "o", states) << step.Action() << " " << step.Path();
      EXPECT_EQ(after, report.Done);
      if (!step.Failed()) return;
      // One mission alone is left out, unless the run ended, and that was told.
      EXPECT_TRUE(!report.Done.empty() || !report.Stopped.empty())
          << ReportText(world_.Services.Page, report);
      EXPECT_TRUE(report.Stopped.empty() || Contains(report.Stopped, "disk full"));
    });
    EXPECT_GT(steps, 2 * 8);
  }
}

TEST_F(EditMany, LeavesOutWhatCannotBeKept) {
  hooks_.Before = [&](const std::string& path, const std::string& old) {
    EXPECT_TRUE(old.starts_with("[MAIN]"));
    if (path == paths_[1]) throw FileFault(fault::FileIo, "write", path, "disk full");
  };
  const EditReport report = Apply(Plan("Time=5"));
  EXPECT_TRUE(Contains(Left(report), "b: ") && Contains(Left(report), "disk full"));
  EXPECT_EQ(States("12.0", "5"), "non");
}

TEST_F(EditMany, WritesAnewWhereThatIsChosen) {
  context_.Base.Untouched = UntouchedLines::Anew;
  context_.Base.UntouchedOf[paths_[1]] = UntouchedLines::Keep;
  const EditReport report = Apply(Plan("flight[4*].Fuel=7"));
  EXPECT_EQ(EndText(report), "3 done");
  EXPECT_FALSE(Contains(box_.Read("in/a.mis"), "later 7"));
  EXPECT_EQ(box_.Read("in/b.mis"), Replace(Text("b"), "Fuel 100", "Fuel 7"));
  // What has its values already is not made anew for that.
  box_.Write("in/c.mis", Text("c"));
  EXPECT_EQ(EndText(Apply(Plan("flight[4*].Fuel=100"))), "2 done");
  EXPECT_EQ(box_.Read("in/c.mis"), Text("c"));
}

/** The first word of each line that differs, in lower case. */
std::set<std::string> ChangedKeys(const std::string& before, const std::string& after) {
  const auto old = SplitLines(before), now = SplitLines(after);
  std::set<std::string> keys;
  const auto add = [&](const auto& lines, const LineSpan& span) {
    for (std::size_t i = span.First; i < span.First + span.Count; ++i)
      keys.insert(LowerKey(KeyOf(lines[i]).Key));
  };
  for (const auto& hunk : DiffLines(old, now)) {
    if (hunk.Kind == HunkKind::Same) continue;
    add(old, hunk.Old);
    add(now, hunk.New);
  }
  return keys;
}

TEST_F(EditMany, TouchesNothingElseInRealMissions) {
  paths_.clear();
  std::vector<std::string> folders = {test::SourceFolder() + "/samples"};
  if (const char* more = std::getenv("RWS_MISSIONS")) folders.emplace_back(more);
  std::vector<std::string> texts;
  for (const auto& folder : folders)
    for (const auto& entry : fs::recursive_directory_iterator(test::ToFsPath(folder))) {
      if (LowerKey(entry.path().extension().string()) != ".mis") continue;
      texts.push_back(test::FileBytes(entry.path()));
      paths_.push_back(box_.Write("real/" + std::to_string(texts.size()) + ".mis", texts.back()));
    }
  ASSERT_GE(paths_.size(), 5U);
  context_.LeavesImpossible = true;
  const EditPlan plan = Plan(
      "Time=3.25|CloudType=5|CloudHeight=777|TimeConstant=1|WeaponsConstant=1|Army=2|"
      "flight[*].Fuel=37|flight[*].Skill=2|flight[*].StartTime=9|flight[army=red].OnlyAI=1|"
      "flight[*].Parachute=0|flight[*].plane[*].Skin=Z z.bmp|flight[*].plane[*].NumberOn=0");
  const std::set<std::string> mayChange = {
      "time",   "cloudtype", "cloudheight", "timeconstant", "weaponsconstant", "army",
      "fuel",   "skill",     "skill0",      "skill1",       "skill2",          "skill3",
      "onlyai", "starttime", "parachute",   "skin0",        "skin1",           "skin2",
      "skin3",  "numberon0", "numberon1",   "numberon2",    "numberon3"};
  const EditReport report = Apply(plan);
  EXPECT_EQ(ReportText(world_.Services.Page, report), std::to_string(paths_.size()) + " done\n");
  for (std::size_t i = 0; i < paths_.size(); ++i) {
    SCOPED_TRACE(i);
    const std::string now = test::FileBytes(test::ToFsPath(paths_[i]));
    EXPECT_EQ(now.back(), texts[i].back());
    const auto changed = ChangedKeys(texts[i], now);
    EXPECT_TRUE(changed.contains("time"));
    for (const auto& key : changed) EXPECT_TRUE(mayChange.contains(key)) << key;
  }
  // Once is enough: what was refused is refused again, and all else has its value.
  for (const auto& mission : Plan("Time=3.25|flight[*].Fuel=37|CloudHeight=777|Army=2").Missions)
    EXPECT_EQ(Shown(mission), "");
}

}  // namespace
}  // namespace rws
