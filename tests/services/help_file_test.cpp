#include "services/help_file.h"

#include <gtest/gtest.h>

#include "tests/support/doubles.h"
#include "tests/support/failing_step.h"
#include "tests/support/sandbox.h"

namespace rws::test {
namespace {

TEST(HelpFile, OpensAtASectionByAPageThatLeadsThere) {
  const Sandbox box;
  World world(box.Path("own"));
  world.Services.ProgramPath = "/opt/my edit/bin";
  box.Write("own/RWS.HLP.html", "help");
  OpenHelp(world.Services, "frmSkins");
  EXPECT_EQ(Joined(world.ShellCalls), "open " + box.Path("own/RWS.HLP.at.html"));
  const std::string page = box.Read("own/RWS.HLP.at.html");
  EXPECT_NE(page.find("/own/RWS.HLP.html#frmSkins\""), std::string::npos) << page;
  EXPECT_EQ(page.find(box.Path()), std::string::npos) << "blanks and odd bytes are encoded";
  world.ShellCalls.clear();
  FailSteps(world.Services.Files, "", "at.html");
  OpenHelp(world.Services, "frmSkins");
  EXPECT_EQ(Joined(world.ShellCalls), "open " + box.Path("own/RWS.HLP.html"));
}

TEST(DataFile, TheUsersOwnThenBesideTheProgramThenTheSharedFolder) {
  const Sandbox box;
  World world(box.Path("own"));
  world.Services.ProgramPath = box.Path("bin");
  const auto found = [&] { return DataFile(world.Services, "T.txt"); };
  EXPECT_EQ(found(), box.Path("bin/T.txt")) << "the one that messages name";
  for (const char* place : {"share/rws-edit/T.txt", "bin/T.txt", "own/T.txt"}) {
    box.Write(place, "");
    EXPECT_EQ(found(), box.Path(place));
  }
  EXPECT_EQ(ShippedFile(world.Services, "T.txt"), box.Path("bin/T.txt"));
}

}  // namespace
}  // namespace rws::test
