#include "session/file_undo.h"

#include <gtest/gtest.h>

#include <functional>

#include "services/paths.h"
#include "services/text.h"
#include "session/half_renamed.h"
#include "session/journal.h"
#include "session/recording.h"
#include "session/relist.h"
#include "tests/support/failing_step.h"
#include "tests/support/session_desk.h"
#include "tools/logic/folder_tools.h"
#include "tools/logic/mission_files.h"

namespace rws::test {
namespace {

/** A command on files with the user's answers, as the window runs it. */
struct Command {
  const char* Title;
  /** Missions of "in", joined by ",", and other files. */
  const char *Missions, *Others;
  std::function<void(SessionDesk&)> Run;
  /** Tried with each step failing. */
  bool Fails = false;
};

void Rename(SessionDesk& desk, const std::string& name) {
  desk.World.Script.ExpectInput("Enter the new name", name);
  RenameCase(desk.World.Doc, desk.World.Services, 0);
}

void NumberAll(SessionDesk& desk, const std::string& name) {
  desk.World.Script.ExpectInput("Enter the new mission name", name);
  desk.World.Script.ExpectInput("starting number", "1");
  RenameAll(desk.World.Doc, desk.World.Services);
}

void SaveAs(SessionDesk& desk, const std::string& target) {
  desk.World.Script.ExpectPath("SaveAs", desk.Box.Path(target));
  SaveMissionAs(desk.World.Doc, desk.World.Services);
}

void Delete(SessionDesk& desk) {
  desk.World.Script.Expect("sure you want to delete", Answer::Yes);
  DeleteMission(desk.World.Doc, desk.World.Services);
}

void Move(SessionDesk& desk) {
  desk.World.Script.ExpectPath("directory to move", desk.Box.Path("out"));
  MoveMission(desk.World.Doc, desk.World.Services);
}

void Convert(SessionDesk& desk) {
  desk.World.Script.ExpectPath("campaign directory", desk.Box.Path("from"));
  desk.World.Script.ExpectPath("destination directory", desk.Box.Path("out"));
  desk.World.Script.ExpectInput("", "c");
  ConvertMissionFolder(desk.World.Doc, desk.World.Services);
}

void Copy(SessionDesk& desk) {
  desk.World.Script.ExpectPath("Select files to copy",
                               desk.Box.Path("from/x.mis") + "|" + desk.Box.Path("from/y.mis"));
  CopyFrom(desk.World.Doc, desk.World.Services);
}

const std::vector<Command>& Commands() {
  static const std::vector<Command> kCommands = {
      {"Rename All", "a+,b,c+", "", [](auto& desk) { NumberAll(desk, "n"); }},
      // New names are the old ones of others.
      {"Rename All of a chain", "n00,n01+", "", [](auto& desk) { NumberAll(desk, "n"); }, true},
      {"Rename All of a swap", "n02+,N01+", "", [](auto& desk) { NumberAll(desk, "n"); }},
      {"Rename All stopped by a file", "a,b+,c", "in/n02.mistmp=X",
       [](auto& desk) { NumberAll(desk, "n"); }},
      {"Rename", "a+,b", "", [](auto& desk) { Rename(desk, "z"); }},
      {"Rename by case", "a+,b", "", [](auto& desk) { Rename(desk, "A"); }},
      {"Rename half done", "a,b", "", [](auto& desk) { Rename(desk, "z"); }},
      {"Delete", "a+,b", "", Delete, true},
      {"Move", "a+,b", "", Move},
      {"Move half done", "a+,b", "out/a.properties=X", Move},
      {"Save As", "a+,b", "", [](auto& desk) { SaveAs(desk, "in/new.mis"); }},
      {"Save As over", "a+,b+", "", [](auto& desk) { SaveAs(desk, "in/b.mis"); }, true},
      {"Convert", "a", "from/x.mis=  player\r\nX\r\n|from/y.mis=Y\r\n|from/y.properties=P",
       Convert},
      {"Convert over", "a",
       "from/x.mis=X\r\n|from/x.properties=P|out/c-01.mis=O|out/c-01.properties=O", Convert},
      {"Copy From", "a", "from/x.mis=X|from/x.properties=P|from/y.mis=Y", Copy},
      {"Copy From half done", "a", "from/x.mis=X|from/y.mis=Y|in/y.mis=Z\r\n", Copy},
  };
  return kCommands;
}

/** The desk of a command, with its first mission edited. */
struct CommandDesk : SessionDesk {
  explicit CommandDesk(const Command& command)
      : SessionDesk(Names(command.Missions), command.Others), Done(command) {
    // All have been read.
    for (const auto& path : std::vector(World.Doc.MissionFiles)) Show(path, false);
    Show(World.Doc.MissionFiles[0], false);
    SessionDesk::Run("base=IL-2");
  }
  static std::vector<std::string> Names(const std::string& joined) {
    std::vector<std::string> names;
    for (const auto name : SplitAt(joined, ',')) names.emplace_back(name);
    return names;
  }
  void Execute() {
    RecordFiles(World, Done.Title, [&] { Done.Run(*this); });
  }
  /** No record leads to a file that is another mission's. */
  void ExpectFollowed(bool reread = true) {
    for (std::size_t i = 0; i < World.Doc.MissionFiles.size(); ++i) {
      const std::string& path = World.Doc.MissionFiles[i];
      const Mission& mission = World.Doc.Missions[i];
      EXPECT_EQ(mission.DirPath + mission.FileName, path);
      if (!reread || !mission.Loaded || !FileSystem().FileExists(path)) continue;
      EXPECT_EQ(FileSystem().ReadFile(path), mission.AsRead.FileText()) << path;
    }
  }
  std::vector<std::string> Unsaved() const { return UnsavedMissions(World); }

  const Command& Done;
};

TEST(FileUndo, EachCommandIsTakenBackAndDoneAgainToTheByte) {
  for (const auto& command : Commands()) {
    SCOPED_TRACE(command.Title);
    CommandDesk desk(command);
    const std::string before = desk.Files();
    const auto unsaved = desk.Unsaved();
    desk.Execute();
    const std::string after = desk.Files();
    const auto unsavedAfter = desk.Unsaved();
    ASSERT_NE(before, after);
    desk.ExpectFollowed(std::string(command.Title) != "Save As over");
    for (int round = 0; round < 2; ++round) {
      ASSERT_EQ(UndoTitle(desk.World), command.Title);
      desk.Run("undo");
      ASSERT_TRUE(desk.Last.Done) << desk.Last.Reason;
      EXPECT_EQ(desk.Files(), before);
      EXPECT_EQ(desk.Unsaved(), unsaved);
      desk.ExpectFollowed();
      desk.Run("redo");
      ASSERT_TRUE(desk.Last.Done) << desk.Last.Reason;
      EXPECT_EQ(desk.Files(), after);
      EXPECT_EQ(desk.Unsaved(), unsavedAfter);
      desk.ExpectFollowed();
    }
    // The edits are still there, and can be taken back in their turn.
    desk.Run("undo undo");
    EXPECT_EQ(desk.Steps(),
              "(Home base of " + GetBaseName(desk.Last.Mission) + ")|(" + command.Title + ")");
    EXPECT_EQ(desk.Unsaved(), std::vector<std::string>());
    EXPECT_FALSE(desk.World.Doc.Closing);
  }
}

/** Whatever fails on the way back: all is as it was, or all is done. */
TEST(FileUndo, AFailingStepLeavesAllAsItWas) {
  for (const auto& command : Commands()) {
    if (!command.Fails) continue;
    for (const bool redo : {false, true}) {
      SCOPED_TRACE(std::string(redo ? "redo " : "undo ") + command.Title);
      const int steps = ForEachFailingStep([&](FailingStep& step) {
        CommandDesk desk(command);
        const std::string before = desk.Files();
        desk.Execute();
        const std::string after = desk.Files();
        if (redo) desk.Run("undo");
        step.During(desk.World.Services.Files, [&] { desk.Run(redo ? "redo" : "undo"); });
        if (!step.Failed()) return;
        SCOPED_TRACE(step.Action() + " " + step.Path());
        EXPECT_EQ(desk.Files(), desk.Last.Done == redo ? after : before);
        const bool told = desk.Last.Reason.find(step.Path()) != std::string::npos;
        EXPECT_TRUE(desk.Last.Done || told) << desk.Last.Reason;
        desk.Run(desk.Last.Done == redo ? "undo redo" : "redo");
        EXPECT_TRUE(desk.Last.Done) << desk.Last.Reason;
        EXPECT_EQ(desk.Files(), after);
      });
      EXPECT_GE(steps, 2);
    }
  }
}

TEST(FileUndo, NothingAtAllIsDoneWhenTheDiskHasChangedSince) {
  struct Row {
    const char *Command, *File, *Bytes, *Reason;
    bool Redo = false;
  };
  const Row rows[] = {
      {"Rename All", "in/n03.mis", nullptr, "n03.mis\" is no longer there"},
      {"Rename All", "in/c.properties", "New", "c.properties\" is there again"},
      {"Rename All of a chain", "in/n02.properties", nullptr, "n02.properties\" is no longer"},
      {"Rename All", "in/n02.mis", "New", "n02.mis\" is there again", true},
      {"Delete", "in/a.properties", "New", "a.properties\" is there again"},
      {"Delete", "in/a.mis", "New", "a.mis\" has changed", true},
      {"Delete", "in/a.properties", nullptr, "a.properties\" has changed since, or has gone", true},
      {"Move", "out/a.properties", nullptr, "a.properties\" is no longer there"},
      {"Save As over", "in/b.mis", "New", "b.mis\" has changed"},
      {"Save As over", "in/b.properties", nullptr, "b.properties\" has changed since, or has gone"},
      {"Save As", "in/new.properties", "New", "new.properties\" has changed"},
      {"Convert", "out/c-01.mis", "New", "c-01.mis\" has changed"},
      {"Delete", "program/Recovery/Files/2026-03-04 05-06-07 001 a.mis", "New",
       "a.mis\" has no copy any more"},
      {"Save As", "program/Recovery/Files/2026-03-04 05-06-07 001 new.mis", "New",
       "new.mis\" has no copy any more", true},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(std::string(row.Command) + " " + row.File + (row.Redo ? " again" : ""));
    const auto& all = Commands();
    const auto command = std::find_if(all.begin(), all.end(), [&](const Command& each) {
      return std::string(each.Title) == row.Command;
    });
    CommandDesk desk(*command);
    desk.Execute();
    if (row.Redo) desk.Run("undo");
    if (row.Bytes)
      desk.Box.Write(row.File, row.Bytes);
    else
      desk.Box.Remove(row.File);
    const std::string stands = desk.Files(), store = desk.Box.Names("program/Recovery/Files");
    desk.Run(row.Redo ? "redo" : "undo");
    EXPECT_FALSE(desk.Last.Done);
    EXPECT_NE(desk.Last.Reason.find(row.Reason), std::string::npos) << desk.Last.Reason;
    EXPECT_EQ(desk.Files(), stands);
    EXPECT_EQ(desk.Box.Names("program/Recovery/Files"), store);
  }
}

/** Each step of keeping them fails in turn. */
TEST(FileUndo, AStoreThatFailsNeverStopsADelete) {
  ForEachFailingStep([](FailingStep& step) {
    SessionDesk desk({"a+", "b"});
    const auto run = [&] { RecordFiles(desk.World, "Delete", [&] { Delete(desk); }); };
    step.During(desk.World.Services.Files, run);
    const bool keeping = step.Path().find("Recovery") != std::string::npos ||
                         step.Action() == "read" || step.Action() == "link";
    if (!step.Failed() || !keeping) return;
    EXPECT_EQ(desk.Box.Names("in"), "b.mis") << step.Action() << step.Path();
    const bool told = desk.Notices().find("cannot be brought back by Undo") != std::string::npos;
    desk.Run("relist undo");
    EXPECT_EQ(desk.Last.Done, !told) << step.Action() << step.Path();
  });
}

/** Where names differ in letter case only, each is a mission of its own; but none is made beside
    the other. */
TEST(FileUndo, ADeletedMissionWithATwinKeepsItsEdits) {
  if (!kPosixFiles) GTEST_SKIP() << kNeedsPosixFiles;
  SessionDesk desk({"a", "A"});
  desk.Run("go=a fuel0=5");
  RecordFiles(desk.World, "Delete", [&] { Delete(desk); });
  desk.Reread("Delete");
  desk.Run("undo");
  EXPECT_NE(desk.Last.Reason.find("already exists"), std::string::npos) << desk.Last.Reason;
  EXPECT_EQ(desk.Steps(), "Fuel of r0100|Delete");
  EXPECT_EQ(desk.Box.Read("in/A.mis"), TaggedMission("A"));
  desk.Run("gone=A undo");
  EXPECT_EQ(desk.Steps(), "Fuel of r0100|(Delete)") << desk.Last.Reason;
  EXPECT_EQ(desk.State("a"), "5,100,100/2^100*!");
}

TEST(FileUndo, EditsStayWithTheirMissionUnderTheNameOfAGoneTwin) {
  if (!kPosixFiles) GTEST_SKIP() << kNeedsPosixFiles;
  SessionDesk desk({"a+", "A"});
  desk.Run("go=A fuel0=5 go=a fuel0=7 gone=A relist go=a");
  RecordFiles(desk.World, "Rename", [&] { RenameCase(desk.World.Doc, desk.World.Services, 3); });
  desk.Run("relist");
  EXPECT_EQ(desk.State("A"), "7,100,100/2^7*!");
  desk.Run("undo");
  EXPECT_EQ(desk.State("a") + " " + desk.State("A"), "7,100,100/2^7*! 5,100,100/2^100*!");
}

TEST(FileUndo, EditsOfAMissionThatHasGoneComeBackFromUnderItsNewNamesake) {
  for (const bool isRead : {true, false}) {
    SessionDesk desk({"a", "b"});
    desk.Run(std::string("fuel0=5 gone=a") + (isRead ? " go=b" : ""));
    RecordFiles(desk.World, "Rename",
                [&] { desk.World.Services.Files.MoveFile(desk.Path("b"), desk.Path("a")); });
    EXPECT_EQ(UnsavedMissions(desk.World), std::vector<std::string>());
    desk.Reread("Rename");
    desk.Run("undo redo");
    EXPECT_EQ(desk.State("a"), "100,100,100/2^100");
    desk.Run("undo go=b");
    EXPECT_EQ(desk.State("a") + " " + desk.State("b"), "5,100,100/2^100*! 100,100,100/2^100");
  }
}

TEST(FileUndo, AGoneMissionIsNotShownForItsNewNamesake) {
  SessionDesk desk({"a", "b"});
  desk.Run("gone=a");
  RecordFiles(desk.World, "Rename", [&] {
    desk.World.Services.Files.MoveFile(desk.Path("b"), desk.Path("a"));
    desk.World.Doc.MissionFiles[1] = desk.Path("a");
  });
  desk.Run("relist go=a fuel0=5 save");
  EXPECT_TRUE(Contains(desk.Box.Read("in/a.mis"), "  Year b\r\n"));
}

/** Steps before a rename that was left out follow the names. */
TEST(FileUndo, ARenameThatIsLeftOutHandsItsNamesOn) {
  SessionDesk desk({"n00", "n01", "n02"});
  desk.Run("fuel0=5 go=n01 fuel0=6 go=n02 fuel0=7");
  RecordFiles(desk.World, "Rename All", [&] { NumberAll(desk, "n"); });
  desk.Run("skip undo undo undo");
  EXPECT_EQ(desk.Steps(), "(Fuel of r0100)|(Fuel of r0100)|(Fuel of r0100)") << desk.Last.Reason;
  for (const char* name : {"n01", "n02", "n03"})
    EXPECT_EQ(desk.State(name).substr(0, 4), "100,") << name;
  EXPECT_EQ(UnsavedMissions(desk.World), std::vector<std::string>());
}

/** Edits of a mission whose name has changed go to the file of the new name. */
TEST(FileUndo, EditsOfARenamedMissionAreWrittenToItsNewName) {
  SessionDesk desk({"n00", "n01"});
  desk.Run("fuel0=5 go=n01");
  RecordFiles(desk.World, "Rename All", [&] { NumberAll(desk, "n"); });
  const std::string other = desk.Box.Read("in/n02.mis");
  for (const bool away : {true, false}) {
    if (away) OpenFolderKeeping(desk.World, desk.Box.Path("out"));
    if (!away) OpenFolderKeeping(desk.World, desk.Box.Path("in"));
    ASSERT_EQ(UnsavedMissions(desk.World), std::vector{desk.Path("n01")});
  }
  desk.Run("go=n01 save");
  EXPECT_NE(desk.Box.Read("in/n01.mis").find("  Fuel 5\r\n"), std::string::npos);
  EXPECT_EQ(desk.Box.Read("in/n02.mis"), other);
  EXPECT_EQ(desk.Box.Names("in"), "n01.mis,n02.mis");
  // Without a briefing it stays on the detour until the files are given their names.
  desk.Run("fuel0=6");
  RecordFiles(desk.World, "Rename", [&] { Rename(desk, "z"); });
  const auto found = FindHalfRenamed(desk.World.Services, desk.Box.Path("in"));
  RecordFiles(desk.World, "Names", [&] { FinishRenames(desk.World.Services, found); });
  desk.Run("relist save");
  EXPECT_NE(desk.Box.Read("in/z.mis").find("  Fuel 6\r\n"), std::string::npos);
}

}  // namespace
}  // namespace rws::test
