#include "tools/frmEditMany.h"

#include <QClipboard>
#include <QGuiApplication>

#include "catalogues/aircraft.h"
#include "mission/reader.h"
#include "platform/qt_text.h"
#include "services/text.h"
#include "session/recording.h"
#include "session/undo.h"
#include "tests/support/form_test.h"
#include "tests/support/places.h"

namespace rws::test {
namespace {

const std::string kText = CrlfText(
    "[MAIN]|  TIME 12.0|  CloudType 1|  CloudHeight 1000.0|  player r0100|  army 1|  playerNum 0|"
    "[Wing]|  r0100|  g0100|[r0100]|  Planes 2|  Skill 1|  Class air.IL_2Type3|  Fuel 100|"
    "  weapons default|[r0100_Way]|  NORMFLY 3.00 4.00 500.00 300.00 &0|[g0100]|  Planes 1|"
    "  OnlyAI 1|  Skill 3|  Class air.BF_109G6Late|  Fuel 50|  weapons default|[g0100_Way]|"
    "  NORMFLY 7.00 8.00 900.00 350.00 &0");

struct EditManyForm : FormTest<frmEditMany> {
  EditManyForm() {
    World tables(SourceFolder() + "/data");
    Document doc;
    LoadAircraftArray(doc, Tables, tables.Services);
    W.Doc.Untouched = UntouchedLines::Keep;
    W.Services.Window.IsUp = [] { return true; };
    for (const char* name : {"a", "b", "c"}) {
      paths_.push_back(Box.Write(std::string("m/") + name + ".mis", kText));
      NameMission(W.Doc.Missions.emplace_back(), paths_.back());
    }
    W.Doc.MissionFiles = paths_;
    W.Doc.MissionDir = Box.Path("m/");
    LoadMission(W.Doc, W.Services, 0);
    W.Doc.MissionShadow = W.Doc.Missions;
    NoteRead(W, 0);
    Open([this](frmEditMany& form) {
      form.Scopes = {{"none", {}}, {"Missions of this folder", paths_}, {"one", {paths_[1]}}};
      form.Changed = [this](const auto& paths) { changed_ += paths.empty() ? 0 : 1; };
    });
  }
  /** Chooses the field of a row by its caption. */
  EditManyRow& Choose(int row, const char* caption) {
    while (static_cast<int>(Form->Rows().size()) <= row) Click(Form->cmdAdd);
    EditManyRow& line = *Form->Rows()[static_cast<std::size_t>(row)];
    line.cboField->setCurrentText(QLatin1String(caption));
    return line;
  }
  static void Click(QAbstractButton* button) { QTest::mouseClick(button, Qt::LeftButton); }
  QString Cell(int row, int column) {
    return Form->Model.data(Form->Model.index(row, column), Qt::DisplayRole).toString();
  }
  /** The rows of the preview, without their folders. */
  std::string Shown() {
    std::vector<std::string> rows;
    for (int row = 0; row < Form->Model.rowCount(); ++row) {
      std::string text;
      for (int column = 0; column < EditManyModel::kFolder; ++column)
        text += (column > 0 ? "," : "") + ToPath(Cell(row, column));
      rows.push_back(text);
    }
    return Joined(rows);
  }
  std::string State() { return ToPath(Form->lblState->text()); }
  std::string Disk(const std::string& from, const std::string& to) {
    std::string states;
    for (const std::string name : {"a", "b", "c"}) {
      const std::string now = Box.Read("m/" + name + ".mis");
      states += now == kText ? "o" : now == Replace(kText, from, to) ? "n" : "?";
    }
    return states;
  }

  std::vector<std::string> paths_;
  int changed_ = 0;
};

TEST_F(EditManyForm, OffersAnEditorForEachFieldWithTheBoundsOfTheWindow) {
  EXPECT_EQ(Form->cboScope->count(), 2);
  EXPECT_EQ(ToPath(Form->cboScope->itemText(0)), "Missions of this folder (3)");
  EditManyRow& row = Choose(0, "Cloud Height");
  EXPECT_EQ(row.spnValue->minimum(), 50);
  EXPECT_EQ(row.spnValue->maximum(), 2500);
  const std::pair<const char*, const char*> values[] = {
      {"Weather", "Rain/Snow"}, {"Army", "Blue"}, {"Skill Level", "Ace"}};
  for (const auto& [field, entry] : values) {
    Choose(0, field).cboValue->setCurrentText(QLatin1String(entry));
    EXPECT_TRUE(row.cboValue->isVisible());
  }
  EXPECT_EQ(row.Row().Value, "3");
  Choose(0, "Mission Time").dtValue->setTime(QTime(5, 30));
  EXPECT_EQ(row.Row().Value, "5.5");
  EXPECT_FALSE(row.cboFlights->isVisible());
  // The loadouts are those of the aircraft that is chosen.
  Choose(0, "Weapon Load").cboFlights->SelectRow(static_cast<int>(ManyFlights::Class));
  row.cboChosen->setEditText("il_2type3");
  EXPECT_GE(row.cboLoadout->findData("4xFAB100"), 0);
  row.cboLoadout->setEditText("own");
  EXPECT_EQ(row.Row().Value, "own");
  for (const ManyRow& same :
       {ManyRow{0, "5", ManyFlights::All, ""}, ManyRow{2, "13.25", ManyFlights::All, ""},
        ManyRow{8, "60", ManyFlights::Aircraft, "Bf 109*"},
        ManyRow{12, "0", ManyFlights::Army, "blue"},
        ManyRow{13, "a b.bmp", ManyFlights::Name, "r01*"},
        ManyRow{9, "4xFAB100", ManyFlights::Class, "IL_2Type3"}}) {
    row.SetRow(same);
    EXPECT_EQ(row.Row().Value, same.Value);
    EXPECT_EQ(row.Row().Chosen, same.Flights == ManyFlights::All ? "" : same.Chosen);
    EXPECT_EQ(OrderOf({row.Row()}).Sets[0].Path.Field, ManyFields()[same.Field].Field);
  }
}

TEST_F(EditManyForm, EveryEditOfARowIsTold) {
  EditManyRow& row = Choose(0, "Weather");
  int told = 0;
  QObject::connect(&row, &EditManyRow::Changed, [&] { ++told; });
  const std::function<void()> edits[] = {
      [&] { row.cboValue->setCurrentIndex(2); }, [&] { row.cboFlights->SelectRow(1); },
      [&] { row.cboChosen->setEditText("a"); },  [&] { row.cboField->setCurrentIndex(2); },
      [&] { row.spnValue->stepUp(); },           [&] { row.dtValue->setTime(QTime(6, 1)); },
      [&] { row.chkValue->toggle(); },           [&] { row.cboLoadout->setEditText("a"); },
      [&] { row.txtValue->setText("a"); }};
  for (const auto& edit : edits) {
    told = 0;
    edit();
    EXPECT_GT(told, 0) << &edit - edits;
  }
}

TEST_F(EditManyForm, ShowsWhatChangesAndWritesIt) {
  Edit(W, {"Test", "Fuel"}, [&] { W.Doc.Missions[0].Flights[0].Fuel = "70"; });
  Choose(0, "Weather").cboValue->setCurrentText("Rain/Snow");
  EditManyRow& fuel = Choose(1, "Fuel Load");
  fuel.cboFlights->SelectRow(static_cast<int>(ManyFlights::Aircraft));
  Click(Form->cmdPreview);
  EXPECT_EQ(State(),
            "Fuel Load: it is not said which flights are meant; \"*\" stands for any "
            "letters");
  fuel.cboChosen->setEditText("Bf 109*");
  fuel.spnValue->setValue(60);
  Click(Form->cmdPreview);
  EXPECT_EQ(Shown(),
            "a.mis,,,,,left out: it has unsaved edits|b.mis,,Weather,Good,Rain/Snow,|"
            "b.mis,g0100,Fuel Load,50,60,|c.mis,,Weather,Good,Rain/Snow,|c.mis,g0100,Fuel "
            "Load,50,60,");
  EXPECT_EQ(State(), "2 missions change, 1 left out.");
  Form->cboFilter->SelectRow(EditManyModel::kLeftOut);
  EXPECT_EQ(Form->Model.rowCount(), 1);
  Form->cboFilter->SelectRow(EditManyModel::kChanges);
  EXPECT_EQ(Form->Model.rowCount(), 4);
  // By the keyboard, on any cell of the mission.
  Form->lstPlan->setFocus();
  Form->lstPlan->setCurrentIndex(Form->Model.index(1, EditManyModel::kNew));
  QTest::keyClick(Form->lstPlan, Qt::Key_Space);
  EXPECT_EQ(State(), "2 missions change, 1 of them ticked, 1 left out.");
  Click(Form->cmd[frmEditMany::kCopy]);
  EXPECT_TRUE(QGuiApplication::clipboard()->text().contains(
      "b.mis\t\tWeather\tGood\tRain/Snow\tnot chosen\t"));
  Click(Form->cmd[frmEditMany::kApply]);
  EXPECT_EQ(changed_, 1);
  EXPECT_TRUE(Form->txtReport->isVisible());
  EXPECT_EQ(ToPath(Form->txtReport->toPlainText()),
            "1 done, 1 left out\n" + paths_[0] + ": it has unsaved edits\n");
  EXPECT_EQ(Disk("", ""), "oo?");
  EXPECT_EQ(Box.Read("m/c.mis"),
            Replace(Replace(kText, "CloudType 1", "CloudType 5"), "Fuel 50", "Fuel 60"));
  EXPECT_FALSE(Form->cmd[frmEditMany::kApply]->isEnabled());
  EXPECT_TRUE(UndoStep(W).Done);
  EXPECT_EQ(Disk("", ""), "ooo");
}

TEST_F(EditManyForm, LeavesOutTheMissionOrTheValueThatCannotBe) {
  Choose(0, "AI Only").chkValue->setChecked(true);
  Choose(1, "Fuel Load").spnValue->setValue(30);
  Click(Form->cmdPreview);
  EXPECT_EQ(State(), "0 missions change, 3 left out.");
  EXPECT_FALSE(Form->cmd[frmEditMany::kApply]->isEnabled());
  EXPECT_TRUE(Contains(Shown(), "a.mis,r0100,AI Only,off,on,cannot be: the player's flight"));
  Form->chkWhole->setChecked(false);
  EXPECT_EQ(Form->Model.rowCount(), 0);
  Click(Form->cmdPreview);
  EXPECT_EQ(State(), "3 missions change (3 of them not in all).");
  // A row that is gone, or changed, takes the preview with it.
  Click(Form->Rows()[0]->cmdRemove);
  EXPECT_EQ(Form->Rows().size(), 1U);
  EXPECT_FALSE(Form->Rows()[0]->cmdRemove->isEnabled());
  EXPECT_EQ(Form->Model.rowCount(), 0);
  Form->cboScope->SelectRow(1);
  Click(Form->cmdPreview);
  EXPECT_EQ(State(), "1 mission changes.");
}

TEST_F(EditManyForm, CancelEndsBetweenTwoMissions) {
  Choose(0, "Cloud Height").spnValue->setValue(700);
  int steps = 0;
  Form->Step = [&](QProgressDialog& dialog) {
    EXPECT_FALSE(Form->cmdPreview->isEnabled());
    // The form stays while it works.
    Form->reject();
    if (++steps == 2) dialog.cancel();
  };
  Click(Form->cmdPreview);
  EXPECT_EQ(Form->Model.Plan().Missions.size(), 1U);
  EXPECT_TRUE(State().starts_with("Cancelled; only these missions were looked at."));
  steps = -10;
  Click(Form->cmdPreview);
  steps = -1;
  Click(Form->cmd[frmEditMany::kApply]);
  EXPECT_TRUE(Form->isVisible());
  EXPECT_EQ(Disk("CloudHeight 1000.0", "CloudHeight 700.0"), "nno");
  EXPECT_TRUE(Form->txtReport->toPlainText().startsWith("2 done, 1 not tried\n"));
  EXPECT_TRUE(Form->txtReport->toPlainText().contains("c.mis: not tried"));
  // A click that comes between two missions lets no more of them through.
  QProgressDialog* shown = nullptr;
  Form->Step = [&](QProgressDialog& dialog) { shown = &dialog; };
  W.Services.System.PumpEvents = [&] { shown->cancel(); };
  Click(Form->cmdPreview);
  EXPECT_EQ(Form->Model.Plan().Missions.size(), 0U);
}

}  // namespace
}  // namespace rws::test
