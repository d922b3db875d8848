#include "session/relist.h"

#include <gtest/gtest.h>

#include "session/recording.h"
#include "tests/support/session_desk.h"

namespace rws::test {
namespace {

/** The rows of the list: names, ">" before the current one, "*" behind unsaved ones. */
std::string Rows(const SessionDesk& desk) {
  std::vector<std::string> rows;
  const Document& doc = desk.World.Doc;
  for (std::size_t i = 0; i < doc.MissionFiles.size(); ++i) {
    const Mission& mission = doc.Missions[i];
    EXPECT_EQ(mission.DirPath + mission.FileName, doc.MissionFiles[i]);
    rows.push_back((std::cmp_equal(doc.CurMission, i) ? ">" : "") + mission.BaseName +
                   (IsUnsaved(desk.World, i) ? "*" : ""));
  }
  EXPECT_EQ(doc.Missions.size(), doc.MissionFiles.size());
  EXPECT_EQ(doc.MissionShadow.size(), doc.MissionFiles.size());
  return Joined(rows);
}

TEST(Relist, RowsComeAndGoAndTheSelectionStaysByName) {
  struct Row {
    const char *Words, *Come, *Rows, *Gone;
    bool Changed = true;
    const char* Stay = "";
  };
  const Row rows[] = {
      {"go=b", "", "a|>b|c", "", false},
      {"go=b", "aa", "a|aa|>b|c", ""},
      {"go=b gone=a", "", ">b|c", ""},
      {"go=b gone=a", "d", ">b|c|d", ""},
      {"go=b gone=b", "", "a|>c", ""},
      {"go=c gone=c", "", "a|>b", ""},
      {"go=c gone=a gone=b gone=c", "", "", ""},
      {"go=c gone=a gone=b gone=c", "0", ">0", ""},
      // Unsaved edits stay, and so does what a command has left.
      {"go=b fuel0=5", "aa", "a|aa|>b*|c", ""},
      {"go=b fuel0=5 gone=b", "", "a|>b*|c", "b", false},
      {"go=b fuel0=5 gone=a gone=b", "", ">b*|c", "b"},
      {"go=b fuel0=5 go=c gone=b gone=c", "d", "a|b*|>d", "b"},
      {"base=x go=b base=x gone=a gone=b gone=c", "", "a*|>b*", "a|b"},
      {"go=b gone=b", "", "a|>b|c", "b", false, "b"},
      {"go=c gone=b gone=a", "", "b|>c", "b", true, "b"},
      {"go=b fuel0=5 gone=b relist save", "", "a|>b|c", "", false},
      {"go=b fuel0=5 gone=b relist undo", "", "a|>c", ""},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(std::string(row.Words) + " +" + row.Come);
    SessionDesk desk({"a", "b", "c"});
    desk.Run(row.Words);
    if (*row.Come) desk.Box.Write(std::string("in/") + row.Come + ".mis", TaggedMission("new"));
    std::vector<std::string> stay;
    if (*row.Stay) stay.push_back(desk.Path(row.Stay));
    const Relisted result = RelistFolder(desk.World, stay);
    EXPECT_EQ(Rows(desk), row.Rows);
    EXPECT_EQ(result.Changed, row.Changed);
    std::vector<std::string> gone;
    for (const auto i : result.Gone) gone.push_back(desk.World.Doc.Missions[i].BaseName);
    EXPECT_EQ(Joined(gone), row.Gone);
    EXPECT_FALSE(RelistFolder(desk.World, stay).Changed);
  }
}

/** Another folder is opened and left again, in each way that there is. */
TEST(Relist, UnsavedEditsOfAnotherFolderWaitThere) {
  for (const bool byCommand : {false, true}) {
    for (const bool gone : {false, true}) {
      SCOPED_TRACE(std::string(byCommand ? "by command" : "by undo") + (gone ? ", gone" : ""));
      SessionDesk desk({"a", "b"}, "out/x.mis=" + TaggedMission("x"));
      desk.Run("go=b fuel0=5");
      OpenFolderKeeping(desk.World, desk.Box.Path("out"));
      EXPECT_EQ(Rows(desk), ">x");
      ASSERT_EQ(UnsavedMissions(desk.World), std::vector{desk.Path("b")});
      if (gone) desk.Run("gone=b");
      if (byCommand) {
        desk.World.Doc.MissionDir = desk.Box.Path("in");
        desk.Reread("leaving");
        if (!gone) desk.Run("go=b");
      } else {
        OpenFolderKeeping(desk.World, desk.Box.Path("in"));
      }
      EXPECT_EQ(UnsavedMissions(desk.World), std::vector{desk.Path("b")});
      if (!gone || !byCommand) {
        // A click takes the shadow anew.
        EXPECT_EQ(desk.State("b"), byCommand ? "5,100,100/2^5*!" : "5,100,100/2^100*!");
        desk.Run("go=b save");
        EXPECT_NE(desk.Box.Read("in/b.mis").find("  Fuel 5\r\n"), std::string::npos);
      }
    }
  }
}

}  // namespace
}  // namespace rws::test
