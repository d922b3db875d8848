#include "catalogues/paint_schemes.h"

#include <gtest/gtest.h>

#include "services/faults.h"
#include "services/setting_values.h"
#include "tests/support/doubles.h"
#include "tests/support/sandbox.h"

namespace rws::test {
namespace {

using Rows = std::vector<std::string>;

struct PaintSchemesTest : testing::Test {
  Sandbox Box;
  World W{Box.Path()};
  Catalogues Cat;

  PaintSchemesTest() { W.Doc.GamePath = Box.Path("game"); }
};

TEST_F(PaintSchemesTest, ListsTheSkinsOfEachFolder) {
  Box.Write("game/paintschemes/SKINS/Il-2_3.M/b.BMP", "");
  Box.Write("game/paintschemes/SKINS/Il-2_3.M/A.bmp", "");
  Box.Write("game/paintschemes/SKINS/Il-2_3.M/notes.txt", "");
  Box.MakeFolder("game/paintschemes/SKINS/bare");
  Box.Write("game/paintschemes/SKINS/loose.bmp", "");
  int pumps = 0;
  W.Services.System.PumpEvents = [&] { ++pumps; };
  LoadPlaneSkins(W.Doc, Cat, W.Services);
  ASSERT_EQ(Cat.Skins.size(), 2u);
  EXPECT_EQ(Cat.HighestSkin, 1);
  EXPECT_EQ(Cat.Skins[0].Files, Rows{"default"});
  EXPECT_EQ(Cat.Skins[1].Folder, "Il23.M");
  EXPECT_EQ(Cat.Skins[1].Path, Box.Path("game/paintschemes/SKINS/Il-2_3.M"));
  EXPECT_EQ(Cat.Skins[1].Files, (Rows{"default", "A.bmp", "b.BMP"}));
  EXPECT_EQ(pumps, 2);

  Box.Write("game/paintschemes/SKINS/bare/new.bmp", "");
  ReLoadSinglePlaneSkin(Cat, W.Services, 0);
  EXPECT_EQ(Cat.Skins[0].Files, (Rows{"default", "new.bmp"}));
  EXPECT_TRUE(W.Log.empty());
  ReLoadSinglePlaneSkin(Cat, W.Services, 2);
  EXPECT_EQ(W.Log, (Rows{"Subscript out of rangeReLoadSinglePlaneSkin"}));
}

TEST_F(PaintSchemesTest, KeepsDefaultForAFolderThatCannotBeRead) {
  Box.Write("game/PaintSchemes/Skins/a/x.bmp", "");
  Box.Write("game/PaintSchemes/Skins/b/y.bmp", "");
  W.Services.Files.BeforeStep = [](const FileStep& step) {
    if (step.Path.ends_with("/a")) throw Fault(fault::Permission, "no ");
  };
  LoadPlaneSkins(W.Doc, Cat, W.Services);
  ASSERT_EQ(Cat.Skins.size(), 2u);
  EXPECT_EQ(Cat.Skins[0].Files, Rows{"default"});
  EXPECT_EQ(Cat.Skins[1].Files, (Rows{"default", "y.bmp"}));
  EXPECT_EQ(W.Log, Rows{"no LoadPlaneSkins"});
  // A close that is asked for during the scan: nothing is filled.
  W.Services.System.PumpEvents = [&] { W.Doc.Closing = true; };
  LoadPlaneSkins(W.Doc, Cat, W.Services);
  EXPECT_TRUE(Cat.Skins.empty());
}

TEST_F(PaintSchemesTest, EndsTheProgramWithoutSkins) {
  WriteSetting(W.Services.Settings, setting::GamePath, W.Doc.GamePath);
  Cat.Skins.resize(3);
  W.Script.Expect("Check the error log file for errors.");
  LoadPlaneSkins(W.Doc, Cat, W.Services);
  EXPECT_EQ(W.Log, Rows{Box.Path("game/PaintSchemes/Skins") + "Path not found, RWS with not run!"});
  EXPECT_EQ(ReadSetting(W.Services.Settings, setting::GamePath), "");
  EXPECT_TRUE(W.Doc.Closing && Cat.Skins.empty());
  EXPECT_EQ(W.CloseRequests, 1);
  EXPECT_EQ(Cat.HighestSkin, -1);
}

TEST_F(PaintSchemesTest, ListsPilotsAndNoseArt) {
  Cat.NoseArts = {"old.bmp"};
  Box.Write("game/PaintSchemes/Pilots/Zed.bmp", "");
  Box.Write("game/PaintSchemes/Pilots/anna.bmp", "");
  LoadPilotSkins(W.Doc, Cat, W.Services);
  EXPECT_EQ(Cat.PilotSkins, (Rows{"anna.bmp", "Zed.bmp"}));
  EXPECT_TRUE(W.Log.empty());
  LoadNoseArt(W.Doc, Cat, W.Services);
  EXPECT_TRUE(Cat.NoseArts.empty());
  ASSERT_EQ(W.Log.size(), 1u);
  EXPECT_TRUE(W.Log[0].ends_with("LoadNoseArt")) << W.Log[0];
}

}  // namespace
}  // namespace rws::test
