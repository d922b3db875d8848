#include <QRegularExpression>

#include "tests/app/form_record.h"
#include "tests/app/forms_fixture.h"
#include "tests/app/records.h"

namespace rws::test {
namespace {

class FormRecordTest : public AllFormsTest {
 protected:
  /** Without what differs from run to run. */
  std::string Timeless(const std::string& record) const {
    QString text = QString::fromStdString(record);
    text.replace(QString::fromStdString(Box.Path()), "BOX");
    text.replace(QRegularExpression(R"(\d{4}-\d\d-\d\d \d\d:\d\d(:\d\d)?)"), "WHEN");
    return text.toStdString();
  }
};

TEST_F(FormRecordTest, EachIsAsItsRecord) {
  ForEachForm([this](QWidget& form) {
    ExpectRecord("tests/app/records/" + form.objectName().toStdString() + ".txt",
                 [&] { return Timeless(RecordOf(form)); });
  });
}

TEST_F(FormRecordTest, PanelsOfEachKindOfMissionAndFlight) {
  Doc().Maps = {{"Smolensk Summer", "smolensk/sload.ini"}};
  Box.Write("game/Quick/go.wav", "x");
  const auto show = [this](const char* lines) {
    Box.Write("missions/b.mis", CrlfText(lines));
    Window->Start();
    ClickRow(1);
  };
  const std::pair<const char*, std::function<void()>> rows[] = {
      {"bomber", [&] { ClickFlight(kBomber); }},
      {"unknown", [&] { ClickFlight(kMystery); }},
      {"group", [&] { SelectFighters(); }},
      {"odd",
       [&] {
         show(
             "[MAIN]|  TIME x|  CloudType 7|  CloudHeight 9000|  weaponsConstant 2|  player r0100|"
             "  playerNum 3|[Wing]|  r0100|[r0100]|  Planes 3|  Skill 2|  Skill1 3|  OnlyAI 1|"
             "  Class air.I_16|  Fuel 30|  weapons none|  StartTime 20|  Parachute 0|"
             "  skin0 Red.bmp|  skin1 gone.bmp|  pilot0 gone.bmp|  numberOn1 0|[r0100_Way]|"
             "  NORMFLY 1.00 2.00 500.0 300.0 &0|[BornPlace]|[Chiefs]");
       }},
      {"without_flights",
       [&] {
         show(
             "[MAIN]|  briefSound Quick/go.wav|  MAP Smolensk/sload.ini|  TIME 7.25|  CloudType 6|"
             "  CloudHeight 1500.0|  WEAPONSCONSTANT 1|[Wing]|[NStationary]|"
             "  0_Static vehicles.planes.Plane$IL_2 1 1.00 2.00 90.00 0.0 null|"
             "  1_Static vehicles.planes.plane$IL_2 1 1.00 2.00 90.00 0.0 null");
       }},
      {"none", [&] { Window->OpenPath(Box.Path("program")); }}};
  for (const auto& [name, go] : rows) {
    go();
    EXPECT_FALSE(Lit()) << "looking is no edit";
    ExpectRecord("tests/app/records/panels_" + std::string(name) + ".txt", [&] {
      return Timeless(RecordOf(*Window->missionPanel) + RecordOf(*Window->flightArea) +
                      RecordOf(*Window->staBar));
    });
  }
}

}  // namespace
}  // namespace rws::test
