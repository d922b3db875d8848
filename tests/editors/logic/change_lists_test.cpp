#include "editors/logic/change_lists.h"

#include <gtest/gtest.h>

#include "tests/support/doubles.h"

namespace rws::test {
namespace {

Catalogues MakeCatalogues() {
  Catalogues cat;
  cat.Aircraft = {
      {"Red", "I-16", "I_16", "", "", {}, true, false},
      {"Red", "TB-3", "TB_3", "", "", {}, false, false},
      {"Blue", "An aircraft whose name fills its row 1", "LONG", "", "", {}, true, false},
      {"Blue", "Mark F", "MARK", "", "", {}, false, false}};
  cat.Squadrons = {{"red", "USSR", "USSR", {{" r01 ", "First & best"}, {"2_IAP", "Second"}}},
                   {"blue", "Japan", "Japan Army", {{"ja", ""}}},
                   {"white", "usa", "US Navy", {{"VF", "Ship"}}},
                   {"green", "Mars", "Mars", {}}};
  cat.Countries = {{"USSR", "VVS", "ru", "red"},
                   {"Japan", "IJA", "ja", "blue"},
                   {"USA", "USAAF", "us", "red"},
                   {"US Navy", "USN", "us", "red"},
                   {"Default", "n", "null", ""}};
  return cat;
}

TEST(AircraftRows, CanBeReadBackAsNames) {
  const Catalogues cat = MakeCatalogues();
  const AircraftRows rows = MakeAircraftRows(cat, "TB_3");
  EXPECT_EQ(Joined(rows.Texts),
            "I-16 F                               Red|"
            "TB-3                                 Red|"
            "An aircraft whose name fills its row 1 F Blue|"
            "Mark F                              Blue");
  EXPECT_EQ(rows.Selected, 1);
  const char* const names[] = {"I-16", "TB-3", "An aircraft whose name fills its row 1", "Mark"};
  for (std::size_t i = 0; i < rows.Texts.size(); ++i)
    EXPECT_EQ(AircraftOfRow(rows.Texts[i]), names[i]);
  EXPECT_EQ(MakeAircraftRows(cat, "tb_3").Selected, 0) << "letter case counts";
  EXPECT_EQ(MakeAircraftRows({}, "TB_3").Selected, -1);
  EXPECT_EQ(AircraftOfRow(""), "");
}

TEST(GroupTree, SelectsWhereTheAircraftStandsAndGivesItsCodes) {
  const Catalogues cat = MakeCatalogues();
  const CodePage page;
  using enum ChangeMode;
  const struct {
    ChangeMode Mode;
    const char* Group;
    int SelectedGroup, SelectedRegiment;
    const char *Caption, *Squad, *Code;
  } cases[] = {
      {Flight, "r0100", 0, 0, " r01  - First & best", " r01 ", "red"},
      {Flight, "2_IAP13", 0, 1, "2 IAP - Second", "2_IAP", "red"},
      {Flight, "VF00", 2, 0, "VF - Ship", "VF", "red"},
      {Flight, "R0100", -1, -1, "None", "", ""},
      {Flight, "USSR", -1, -1, "None", "", ""},
      {Flight, " ", -1, -1, "None", "", ""},
      {Static, "ru", 0, -1, "VVS", "", "ru"},
      {Static, "ija", 1, -1, "IJA", "", "ja"},
      {Static, "us", -1, -1, "USAAF", "", "us"},
      {Static, "null", 4, -1, "Default", "", "null"},
      {Static, "n", 4, -1, "Default", "", "null"},
      {Static, "xx", -1, -1, "Default", "", "xx"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.Group);
    const GroupTree tree = MakeGroupTree(cat, page, c.Mode, c.Group);
    EXPECT_EQ(tree.Selected.Group, c.SelectedGroup);
    EXPECT_EQ(tree.Selected.Regiment, c.SelectedRegiment);
    EXPECT_EQ(StartCaption(tree, cat, page, c.Group), c.Caption);
    EXPECT_EQ(c.Mode == Flight ? SquadOf(tree, tree.Selected) : "", c.Squad);
    EXPECT_EQ(CodeOutOf(tree, cat, page, tree.Selected, c.Group), c.Code);
  }
  const GroupTree flights = MakeGroupTree(cat, page, Flight, "");
  EXPECT_EQ(SquadOf(flights, {0, -1}), " r01 ") << "a group stands for its first regiment";
  EXPECT_EQ(NodeCaption(flights, cat, page, {1, -1}), "ja - ");
  EXPECT_EQ(SquadOf(flights, {3, -1}), "Mars");
  EXPECT_EQ(CodeOutOf(flights, cat, page, {3, -1}, "x"), "");
  EXPECT_EQ(MakeGroupTree({}, page, Static, "null").Selected.Group, 0) << "without any table";
}

}  // namespace
}  // namespace rws::test
