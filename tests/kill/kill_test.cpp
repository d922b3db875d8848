// Kills the program at every system call of the operations that write, move or delete missions, and
// looks at what stands on disk.

#include <gtest/gtest.h>
#include <unistd.h>

#include <iostream>

#include "mission/interrupted.h"
#include "mission/reader.h"
#include "mission/update.h"
#include "services/paths.h"
#include "tests/kill/killed_child.h"
#include "tests/support/doubles.h"
#include "tests/support/sandbox.h"
#include "tools/logic/folder_tools.h"
#include "tools/logic/mission_files.h"

namespace rws {
namespace {

using test::ChildEnd;
using test::CrlfText;
using test::World;

const std::string kStamp = "03-04-26 05-06-07";

/** A folder with missions, open in a program that is about to do something. */
struct Game {
  Game(int missions, int lines) : World_(Box.Path("app")) {
    Box.MakeFolder("app");
    std::string tail = CrlfText("[NStationary]");
    for (int i = 0; i < lines; ++i) tail += "  " + std::string(250, 'x') + "\r\n";
    Old = CrlfText("[MAIN]|  army 1|[Wing]|[x_Way]") + tail;
    New = CrlfText("[MAIN]|  army 1|  player r01|[Wing]") + tail;
    for (int i = 0; i < missions; ++i) {
      const std::string name = "m/m0" + std::to_string(i);
      World_.Doc.MissionFiles.push_back(Box.Write(name + ".mis", Old + std::to_string(i)));
      Box.Write(name + ".properties", "Name Briefing " + std::to_string(i));
    }
    if (missions == 1) Box.Write("m/m00.mis", Old);
    World_.Doc.MissionDir = Box.Path("m");
    LoadMissionArray(World_.Doc, World_.Services);
    auto& ask = World_.Services.Ask;
    ask.MsgBox = [](auto&&...) { return Answer::Yes; };
    ask.Folder = [this](auto&&...) { return Target; };
    ask.InputBox = [this](auto&&...) { return Typed[Questions++ % Typed.size()]; };
    ask.Notice = [](auto&&...) { ::_exit(1); };
  }

  void Edit() {
    LoadMission(World_.Doc, World_.Services, 0);
    World_.Doc.Missions[0].Player = "r01";
    World_.Doc.Missions[0].Modified = true;
  }
  /** The child must do all that it can, so that no rule is kept by doing nothing. */
  static void Must(bool done) {
    if (!done) ::_exit(1);
  }
  bool Update() { return UpdateChanges(World_.Doc, World_.Services, World_.Prefs, World_.Shown); }
  bool Save() { return SaveMission(World_.Doc, World_.Services, World_.Prefs, World_.Shown, 0); }

  std::string Mission() {
    const std::string bytes = Box.Read("m/m00.mis");
    Missing += bytes == "<none>";
    return bytes;
  }
  /** The mission is whole, and the next start tidies up without a word. */
  void ExpectOldOrNew() {
    const std::string mission = Mission();
    EXPECT_TRUE(mission == Old || mission == New) << mission.size() << " bytes";
    ExpectNothingFound();
  }
  void ExpectNothingFound() {
    EXPECT_TRUE(FindInterrupted(World_.Services).empty());
    EXPECT_FALSE(Box.Exists("app/$$$TEMP") || Box.Exists("app/$$$TEMP.note"));
    EXPECT_FALSE(World_.Services.Files.IsSameFile(Box.Path("m/m00.mis"),
                                                  Box.Path("app/RWS Backup/m00.mis.bak")));
  }
  void ExpectBackup(const std::string& name) {
    const std::string backup = Box.Read("app/RWS Backup/" + name);
    EXPECT_TRUE(backup == Old || (backup == "<none>" && Box.Read("m/m00.mis") == Old));
  }
  /** Each of these bytes stands whole under just one of these names. */
  void ExpectAtOneOf(const std::string& bytes, const std::vector<std::string>& names) {
    int found = 0;
    for (const auto& name : names) found += Box.Read(name) == bytes;
    EXPECT_EQ(found, 1) << names[0];
    Missing += found == 0;
  }

  test::Sandbox Box;
  World World_;
  std::string Old, New, Target;
  std::vector<std::string> Typed;
  std::size_t Questions = 0;
  std::vector<Interrupted> Found;
  /** How often nothing stood where a mission must stand. */
  int Missing = 0;
};

/** So many lines of a mission are more than is written in one piece. */
constexpr int kTwoPieces = 270, kOnePiece = 5;

struct Operation {
  const char* Name;
  int Missions;
  int Lines;
  /** Runs before the child is made. */
  void (*Prepare)(Game& game);
  void (*Run)(Game& game);
  /** Looks at what the kill has left. */
  void (*Check)(Game& game);
};

void PrintTo(const Operation& operation, std::ostream* out) { *out << operation.Name; }

void CheckTaken(Game& game) {
  const std::string mission = game.Box.Read("m/m00.mis"), brief = game.Box.Read("m/m00.properties");
  EXPECT_TRUE(mission == game.Old || mission == "<none>");
  EXPECT_TRUE(brief == "Name Briefing 0" || (brief == "<none>" && mission == "<none>"));
}

void CheckMoved(Game& game) {
  game.ExpectAtOneOf(game.Old, {"m/m00.mis", "n/m00.mis"});
  game.ExpectAtOneOf("Name Briefing 0", {"m/m00.properties", "n/m00.properties"});
}

void CheckRenamed(Game& game) {
  game.ExpectAtOneOf(game.Old, {"m/m00.mis", "m/Other.mistmp", "m/Other.mis"});
  game.ExpectAtOneOf("Name Briefing 0",
                     {"m/m00.properties", "m/Other.propertiestmp", "m/Other.properties"});
}

void CheckAllRenamed(Game& game) {
  for (int i = 0; i < 5; ++i) {
    const std::string own = std::to_string(i), old = "m/m0" + own,
                      now = "m/m0" + std::to_string(i + 1);
    game.ExpectAtOneOf(game.Old + own, {old + ".mis", now + ".mistmp", now + ".mis"});
    game.ExpectAtOneOf("Name Briefing " + own,
                       {old + ".properties", now + ".propertiestmp", now + ".properties"});
  }
}

/** What an Update that was cut off has left, with other bytes or nothing at the path. */
void LeaveInterrupted(Game& game, const std::string& stands) {
  game.Edit();
  game.World_.Services.Files.BeforeStep = [](const FileStep& step) {
    if (step.Action == "link") ::_exit(0);
  };
  test::RunAndKill([&] { game.Update(); }, test::kNoCall);
  game.World_.Services.Files.BeforeStep = nullptr;
  game.Box.Remove("m/m00.mis");
  if (!stands.empty()) game.Box.Write("m/m00.mis", stands);
  game.Box.Write("app/RWS Backup/m00.mis.bak", "earlier");
  game.Found = FindInterrupted(game.World_.Services);
  ASSERT_EQ(game.Found.size(), 1U);
}

void CheckGivenBack(Game& game, const std::string& stood) {
  const std::string mission = game.Box.Read("m/m00.mis");
  EXPECT_TRUE(mission == game.Old || mission == stood);
  game.Missing += mission == "<none>" && stood != "<none>";
  EXPECT_EQ(game.Box.Read("app/RWS Backup/m00.mis.bak"), "earlier");
  const std::string aside = game.Box.Read("app/RWS Backup/m00.mis." + kStamp + ".bak");
  EXPECT_TRUE(mission == stood || aside == stood);
  const auto found = FindInterrupted(game.World_.Services);
  EXPECT_EQ(found.size(), mission == game.Old ? 0U : 1U);
  // And what is found then can still be given back.
  for (const auto& one : found) GiveBack(game.World_.Services, one);
  EXPECT_TRUE(game.Box.Read("m/m00.mis") == game.Old);
  game.ExpectNothingFound();
}

const Operation kOperations[] = {
    {"Update", 1, kTwoPieces, [](Game& game) { game.Edit(); },
     [](Game& game) { Game::Must(game.Update()); },
     [](Game& game) { game.ExpectOldOrNew(), game.ExpectBackup("m00.mis.bak"); }},
    {"UpdateWithoutBackup", 1, kOnePiece,
     [](Game& game) { game.Edit(), game.World_.Prefs.bBackup = false; },
     [](Game& game) { Game::Must(game.Update()); }, [](Game& game) { game.ExpectOldOrNew(); }},
    {"UpdateWithSecondBackup", 1, kOnePiece,
     [](Game& game) { game.Edit(), game.Box.Write("app/RWS Backup/m00.mis.bak", "earlier"); },
     [](Game& game) { Game::Must(game.Update()); },
     [](Game& game) {
       game.ExpectOldOrNew();
       EXPECT_EQ(game.Box.Read("app/RWS Backup/m00.mis.bak"), "earlier");
       game.ExpectBackup("m00.mis." + kStamp + ".bak");
     }},
    {"Save", 1, kOnePiece,
     [](Game& game) { game.Edit(), game.World_.Doc.Missions[0].Modified = false; },
     [](Game& game) { Game::Must(game.Save()); }, [](Game& game) { game.ExpectOldOrNew(); }},
    {"SaveWhereTheFileHasGone", 1, kTwoPieces,
     [](Game& game) { game.Edit(), game.Box.Remove("m/m00.mis"); },
     [](Game& game) { Game::Must(game.Save()); },
     [](Game& game) {
       const std::string mission = game.Box.Read("m/m00.mis");
       EXPECT_TRUE(mission == "<none>" || mission == game.New);
       game.ExpectNothingFound();
     }},
    {"Delete", 1, kOnePiece, [](Game&) {},
     [](Game& game) {
       Game::Must(DeleteMission(game.World_.Doc, game.World_.Services) == ToolOutcome::Reread);
     },
     CheckTaken},
    {"Move", 1, kOnePiece,
     [](Game& game) { game.Target = game.Box.Path("n"), game.Box.MakeFolder("n"); },
     [](Game& game) {
       Game::Must(MoveMission(game.World_.Doc, game.World_.Services) == ToolOutcome::Reread);
     },
     CheckMoved},
    {"Rename", 1, kOnePiece, [](Game& game) { game.Typed = {"Other"}; },
     [](Game& game) {
       Game::Must(RenameCase(game.World_.Doc, game.World_.Services, 0).Outcome ==
                  ToolOutcome::Reread);
     },
     CheckRenamed},
    {"RenameAll", 5, kOnePiece,
     [](Game& game) {
       game.Typed = {"m", "1"};
     },
     [](Game& game) {
       Game::Must(RenameAll(game.World_.Doc, game.World_.Services).Outcome == ToolOutcome::Reread);
     },
     CheckAllRenamed},
    {"GiveBackMissing", 1, kOnePiece, [](Game& game) { LeaveInterrupted(game, ""); },
     [](Game& game) { GiveBack(game.World_.Services, game.Found[0]); },
     [](Game& game) { CheckGivenBack(game, "<none>"); }},
    {"GiveBackTorn", 1, kOnePiece, [](Game& game) { LeaveInterrupted(game, "torn"); },
     [](Game& game) { GiveBack(game.World_.Services, game.Found[0]); },
     [](Game& game) { CheckGivenBack(game, "torn"); }},
};

class Killed : public testing::TestWithParam<Operation> {};

TEST_P(Killed, AtEverySystemCall) {
  test::UseQuickFolder();
  const Operation& operation = GetParam();
  int points = 0, missing = 0;
  for (ChildEnd end = ChildEnd::Killed; end == ChildEnd::Killed && !HasFailure(); ++points) {
    SCOPED_TRACE("killed before system call " + std::to_string(points));
    Game game(operation.Missions, operation.Lines);
    operation.Prepare(game);
    end = test::RunAndKill([&] { operation.Run(game); }, points);
    if (end == ChildEnd::Refused) GTEST_SKIP() << "no process may watch another here (ptrace)";
    ASSERT_NE(end, ChildEnd::Crashed);
    operation.Check(game);
    missing += game.Missing;
  }
  std::cout << operation.Name << ": " << points - 1 << " points, " << missing
            << " with nothing where a mission must stand\n";
  EXPECT_EQ(missing, 0);
  EXPECT_GT(points, 10);
}

INSTANTIATE_TEST_SUITE_P(During, Killed, testing::ValuesIn(kOperations),
                         [](const auto& operation) { return operation.param.Name; });

}  // namespace
}  // namespace rws
