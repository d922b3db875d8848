#include "mainwindow/plane_panels.h"

#include "services/paths.h"
#include "tests/mainwindow/window_fixture.h"

namespace rws::test {
namespace {

/** The panels over a game with two skins, a pilot and a nose art. Flight 0 is American with two
    planes, flight 1 Soviet with two. */
class PlanePanelsTest : public WindowTest {
 protected:
  PlanePanelsTest() {
    Doc().ImagesPath = Box.Path("images");
    Doc().bLoading = false;
    AddPainted(
        "P-40", "P_40", "p40",
        {"Skins/P-40/Shark.bmp", "Skins/P-40/Tom & Co.bmp", "Pilots/Ace.bmp", "Noseart/Lady.bmp"});
    Tables.Squadrons = {{"red", "usa", "USAAF", {{"usa01", ""}}},
                        {"red", "ru", "USSR", {{"r01", ""}}}};
    Mission mission;
    mission.Flights.resize(2);
    for (auto& flight : mission.Flights) {
      flight.Class = "P_40";
      flight.Skill = flight.Planes = "2";
    }
    mission.Flights[0].Name = "usa0100";
    mission.Flights[1].Name = "r0100";
    Doc().Missions = {mission};
    Panels.mnuSkin = &Menu;
    Menu.addAction("None");
    Panels.FillFixedLists();
    QObject::connect(&Panels, &PlanePanels::PlanesChanged, [this] { LoadPlanes(); });
    QObject::connect(&Panels, &PlanePanels::ImageWanted,
                     [this](const std::string& path, const QString& caption) {
                       Viewed.push_back(GetFileName(path) + " as " + caption.toStdString());
                     });
    QObject::connect(&Panels, &PlanePanels::MarkingsShown, [this](bool on) { MenuChecked = on; });
    Panels.show();
  }

  Flight& Flight_() { return Doc().Missions[0].Flights[static_cast<std::size_t>(Doc().CurFlight)]; }
  PlaneSlot& Slot(std::size_t i = 0) { return Flight_().PlaneSlots[i]; }
  PlanePanel& Panel(std::size_t i = 0) { return *Panels.fraPlane[i]; }
  void Wear(std::size_t i, const char* skin, const char* pilot, const char* noseArt) {
    Slot(i).Skin = skin;
    Slot(i).Pilot = pilot;
    Slot(i).NoseArt = noseArt;
  }
  void LoadPlanes() {
    Panels.ClearFrames(false);
    for (int i = 0; i < std::stoi(Flight_().Planes); ++i) Panels.FillPanel(i);
  }
  /** Shows the flight as it is in the record, without an edit. */
  void Show(int flight = 0) {
    Doc().CurFlight = flight;
    Doc().MissionShadow = Doc().Missions;
    LoadPlanes();
    World_.Lit = false;
  }
  /** The labels of a panel and its image, a letter each: k, b, r; i when the image shows. */
  std::string Colors(std::size_t i = 0) {
    std::string letters;
    for (auto* label : {Panel(i).lbl2, Panel(i).lbl3, Panel(i).lbl4})
      letters += label->Color() == LabelColor::Black  ? 'k'
                 : label->Color() == LabelColor::Blue ? 'b'
                                                      : 'r';
    return letters + (Panel(i).img->isHidden() ? "" : "i");
  }

  QMenu Menu;
  PlanePanels Panels{World_, nullptr};
  std::vector<std::string> Viewed;
  bool MenuChecked = false;
};

TEST_F(PlanePanelsTest, ShowsWhatARecordNames) {
  const struct {
    const char *Skin, *Pilot, *NoseArt;
    int Flight;
    const char *Colors, *Shown;
  } cases[] = {
      {"", "", "", 0, "kkk", "default|default|default"},
      {"SHARK.BMP", "ace.bmp", "lady.bmp", 0, "bbbi", "Shark|Ace|Lady"},
      {"gone.bmp", "", "lady.bmp", 0, "rkbi", "default|default|Lady"},
      {"", "gone.bmp", "", 0, "krr", "default|default|default"},
      {"", "gone.bmp", "gone.bmp", 0, "krr", "default|default|default"},
      // The pilot that was found speaks for the nose art that was not.
      {"", "ace.bmp", "gone.bmp", 0, "kbki", "default|Ace|default"},
      {"shark.bmp", "gone.bmp", "lady.bmp", 1, "brki", "Shark|default|default"},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(std::string(row.Skin) + "," + row.Pilot + "," + row.NoseArt);
    Doc().CurFlight = row.Flight;
    Wear(0, row.Skin, row.Pilot, row.NoseArt);
    Show(row.Flight);
    EXPECT_EQ(Colors(), row.Colors);
    std::string shown;
    for (auto* list : {Panel().cboAPSkin, Panel().cboPSkin, Panel().cboPNoseArt})
      shown += list->currentText().toStdString() + "|";
    EXPECT_EQ(shown, row.Shown + std::string("|"));
    EXPECT_EQ(Panel().cboPNoseArt->isEnabled(), row.Flight == 0);
    EXPECT_EQ(Slot().Skin, row.Skin);
    EXPECT_FALSE(World_.Lit || Doc().bLoading);
  }
}

TEST_F(PlanePanelsTest, FramesFollowTheSkill) {
  Slot(1).Skill = "3";
  Flight_().Skill = "Custom";
  Flight_().OnlyAI = "1";
  Show();
  EXPECT_EQ(Panel(0).cboSL->currentIndex(), -1);
  EXPECT_EQ(Panel(1).cboSL->currentIndex(), 3);
  EXPECT_FALSE(Panel(1).chkPlayer->isEnabled());
  Panel(1).cboSL->SelectRow(0);
  EXPECT_EQ(Slot(1).Skill, "0");
  EXPECT_TRUE(World_.Lit);
  Panel(1).cboSL->SelectRow(3);
  EXPECT_FALSE(World_.Lit) << "the old value again";
  EXPECT_THROW(Panels.FillPanel(4), Fault);
  Panels.DisableAll();
  EXPECT_FALSE(Panel(0).isEnabled() || Panel(1).cboSL->isEnabled());
}

TEST_F(PlanePanelsTest, ChoosingWritesTheFieldAndClearsTheRed) {
  Wear(0, "gone.bmp", "gone.bmp", "");
  Show();
  // Nose art clears the skin's label instead of its own.
  Panel().cboPNoseArt->SelectRow(1);
  EXPECT_EQ(Slot().NoseArt, "Lady.bmp");
  EXPECT_EQ(Colors(), "krr");
  Panel().cboAPSkin->SelectRow(2);
  Panel().cboPSkin->SelectRow(1);
  EXPECT_EQ(Slot().Skin + "," + Slot().Pilot, "Tom & Co.bmp,Ace.bmp");
  EXPECT_EQ(Colors(), "bbri");
  EXPECT_TRUE(World_.Lit);

  // A missing file shows as "default" and can be given up by choosing that.
  Slot().Skin = "gone.bmp";
  Show();
  Q_EMIT Panel().cboAPSkin->activated(0);
  EXPECT_EQ(Slot().Skin, "");
  EXPECT_EQ(Colors()[0], 'k');
}

TEST_F(PlanePanelsTest, TypedTexts) {
  Show();
  const auto type = [](QComboBox* list, const char* text) {
    list->lineEdit()->selectAll();
    for (const QChar c : QString::fromUtf8(text)) list->lineEdit()->insert(c);
  };
  const auto leave = [](QComboBox* list) {
    QFocusEvent out(QEvent::FocusOut, Qt::TabFocusReason);
    QCoreApplication::sendEvent(list, &out);
    return list->currentText().toStdString();
  };
  Panel().cboPNoseArt->setEditText("Moon");
  EXPECT_TRUE(World_.Lit);
  Panel().cboPNoseArt->setEditText("default");
  EXPECT_FALSE(World_.Lit);
  type(Panel().cboAPSkin, "sharK");
  EXPECT_EQ(Slot().Skin, "Shark.bmp");
  type(Panel().cboAPSkin, "other");
  EXPECT_EQ(leave(Panel().cboAPSkin), "Shark");
  type(Panel().cboPNoseArt, "M\xC3\xB6we\xD0\x96");  // the last one is not of the code page
  EXPECT_EQ(Slot().NoseArt, "M\xF6we.bmp");
  EXPECT_EQ(leave(Panel().cboPNoseArt), "M\xC3\xB6we");
  Panel().cboPNoseArt->lineEdit()->selectAll();
  QTest::keyClick(Panel().cboPNoseArt->lineEdit(), Qt::Key_Delete);
  EXPECT_EQ(leave(Panel().cboPNoseArt), "default");
  EXPECT_EQ(Slot().NoseArt, "");
}

TEST_F(PlanePanelsTest, MarkingsAndPlayer) {
  Slot(0).NumberOn = "0";
  Show();
  EXPECT_TRUE(Panel().IsMarkRed());
  Panel().cboAPSkin->SelectRow(1);
  EXPECT_FALSE(Panel().IsMarkRed());
  Panel().chkMark->setChecked(true);
  EXPECT_EQ(Slot().NumberOn, "");
  EXPECT_TRUE(MenuChecked);
  Panel(1).chkMark->setChecked(false);
  EXPECT_EQ(Slot(1).NumberOn, "0");
  EXPECT_TRUE(MenuChecked && Panel(1).IsMarkRed());

  Mission& mission = Doc().Missions[0];
  mission.Player = "r0100";
  mission.PlayerNum = "0";
  Show();
  Panel(1).chkPlayer->setFocus();
  Panel(1).chkPlayer->click();
  EXPECT_EQ(mission.Player + mission.PlayerNum, "usa01001");
  EXPECT_TRUE(World_.Lit && Panel(1).IsHighlighted() && !Panel(0).IsHighlighted());
  EXPECT_EQ(Panels.focusWidget(), Panel(1).chkPlayer);
  Panel(0).chkPlayer->click();
  EXPECT_FALSE(Panel(1).IsHighlighted() || Panel(1).chkPlayer->isChecked());
  Panel(0).chkPlayer->click();
  EXPECT_EQ(mission.Player + mission.PlayerNum, "");
}

TEST_F(PlanePanelsTest, LabelsShowFilesOrTellWhatIsMissing) {
  Wear(0, "shark.bmp", "ace.bmp", "lady.bmp");
  Wear(1, "gone.bmp", "gone.bmp", "gone.bmp");
  Show();
  Click(Panel().lbl2);
  Box.Write("images/Shark.jpg", "");
  Panel().lbl2->setFocus();
  QTest::keyClick(Panel().lbl2, Qt::Key_Space);
  QTest::keyClick(Panel().lbl3, Qt::Key_Return);
  Click(Panel().lbl4);
  EXPECT_EQ(Joined(Viewed),
            "Shark.bmp as RWS Edit - Shark|Shark.jpg as RWS Edit - Shark|"
            "Ace.bmp as RWS Edit - Ace|Lady.bmp as RWS Edit - Lady");
  for (const char* text : {"Plane skin gone.bmp doesn't exist.", "Pilot skin gone.bmp doesn't",
                           "Nose Art gone.bmp doesn't exist."})
    World_.Script.Expect(text);
  for (auto* label : {Panel(1).lbl2, Panel(1).lbl3, Panel(1).lbl4}) Click(label);
  EXPECT_EQ(Slot(1).Skin, "gone.bmp");

  Box.Remove("game/PaintSchemes/Pilots/Ace.bmp");
  World_.Script.Expect("The file is not valid and it's reference will be removed.");
  Panel().lbl3->setFocus();
  QTest::keyClick(Panel().lbl3, Qt::Key_Space);
  EXPECT_EQ(Slot().Pilot, "");
  EXPECT_EQ(Colors(), "bkbi");
  EXPECT_TRUE(World_.Lit);
  EXPECT_EQ(Panels.focusWidget(), Panel().cboPSkin);
}

TEST_F(PlanePanelsTest, RightClickBringsASkinIntoTheGame) {
  Show();
  const std::string skins = "game/PaintSchemes/Skins/P-40/";
  const auto choose = [&](const std::string& path, const char* told = nullptr) {
    World_.Script.ExpectPath("Plane Skins", path);
    if (told) World_.Script.Expect(told);
    QTest::keyClick(Panel(1).lbl2, Qt::Key_F10, Qt::ShiftModifier);
  };
  choose(Box.Path(skins + "Tom & Co.bmp"));
  EXPECT_EQ(Slot(1).Skin, "Tom & Co.bmp");
  EXPECT_EQ(GetFileName(World_.Script.StartFolders[0]), "P-40");
  choose(Box.Write("new/Zebra.bmp", "new"));
  EXPECT_EQ(Box.Read(skins + "Zebra.bmp"), "new");
  EXPECT_EQ(Slot(1).Skin, "Zebra.bmp");
  EXPECT_EQ(Colors(1), "bkki");
  for (std::size_t i : {0, 2, 3}) {
    EXPECT_TRUE(Panel(i).cboAPSkin->HasText("Zebra"));
    EXPECT_EQ(Panel(i).cboAPSkin->currentText(), i == 0 ? "default" : "");
  }
  EXPECT_EQ(Menu.actions().back()->text(), "Zebra");
  choose(Box.Write("newer/Zebra.bmp", "newer"));
  EXPECT_EQ(Box.Read(skins + "Zebra.bmp"), "newer");
  const std::string kept = "program/Replaced Skins/P-40/Zebra 03-04-26 05-06-07.bmp";
  EXPECT_EQ(Box.Read(kept), "new");
  EXPECT_NE(Joined(World_.Script.Notices).find(Box.Path(kept)), std::string::npos);
  World_.Services.Files.BeforeStep = [](const FileStep& step) {
    if (step.Path.find("Replaced") != std::string::npos) throw Fault(57, "no room");
  };
  choose(Box.Write("last/Zebra.bmp", "last"), "no room");
  EXPECT_EQ(Box.Read(skins + "Zebra.bmp"), "newer") << "what cannot be kept is not replaced";

  World_.Services.Files.BeforeStep = [](const FileStep& step) {
    if (step.Path.find("other") != std::string::npos) throw Fault(57, "disk full");
  };
  choose(Box.Write("other/Shark.bmp", "other"), "disk full");
  EXPECT_EQ(Box.Read(skins + "Shark.bmp"), "Skins/P-40/Shark.bmp");
  EXPECT_EQ(Slot(1).Skin, "Zebra.bmp");
  // Names that no mission can hold are told before anything is copied.
  choose(Box.Write("new/\xD0\x96.bmp", ""), "cannot be a skin");
  auto rows = Tables.Aircraft.Rows();
  rows[0].Folder = "none";
  Tables.Aircraft = rows;
  Show();
  World_.Script.Expect("no skin directory");
  QTest::mouseClick(Panel(1).lbl2, Qt::RightButton);
  EXPECT_EQ(Box.Names(skins), "Shark.bmp,Tom & Co.bmp,Zebra.bmp");
}

}  // namespace
}  // namespace rws::test
