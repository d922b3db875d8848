#include "editors/logic/stationary_aircraft.h"

#include <gtest/gtest.h>

#include "tests/support/doubles.h"

namespace rws::test {
namespace {

Catalogues MakeTables() {
  Catalogues tables;
  tables.Aircraft = {{"Red", "I-16", "I_16", "", "", {}, true, false},
                     {"Blue", "Bf 109", "BF_109", "", "", {}, false, false},
                     {"Red", "Fulmar", "Fulmar1", "", "", {}, false, false, "FULMAR"}};
  tables.Countries = {{"USSR", "VVS", "ru", "RED"},
                      {"None", "No air force", "nn", "white"},
                      {"Mars", "MAF", "ma", "zz"},
                      {"Default", "n", "null", ""}};
  return tables;
}

LineArray Lines(const std::string& joinedByBars) {
  return LineArray::FromFile(CrlfText(joinedByBars));
}

TEST(StaticRows, TellClassCountryAndColour) {
  World world;
  const struct {
    const char *Line, *Row;
  } cases[] = {
      {"  0_Static v.planes.Plane$I_16 1 1.0 2.0 3.0 0.0 ru 2 1.0", "I_16,ru,I-16,F,USSR,red"},
      {"0_Static v.planes.Plane$I_16 1 1.0 2.0 3.0 0.0", "I_16,null,I-16,F,Default,red"},
      {"0_Static v.planes.Plane$bf_109 1 1 2 3 0 nn", "bf_109,nn,Bf 109,-,None,not"},
      {"0_Static v.planes.Plane$BF_109 1 1 2 3 0 ma", "BF_109,ma,Bf 109,-,Mars,blue"},
      {"0_Static v.planes.Plane$BF_109 1 1 2 3 0 nn", "BF_109,nn,Bf 109,-,None,white"},
      {"0_Static v.planes.Plane$X$Y 1 1 2 3 0  ru", "X$Y,null,X$Y,-,Default,not"},
      {"0_Static v.planes.Plane$FULMAR 1 1 2 3 0 ma", "FULMAR,ma,Fulmar,-,Mars,red"},
      {"planes.Plane", ",null,,-,Default,not"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.Line);
    const auto planes = FindStaticPlanes(Lines(std::string("a|v.ships.Ship$I_16|") + c.Line));
    ASSERT_EQ(planes.size(), 1u);
    EXPECT_EQ(planes[0].LineIndex, 2u);
    const auto rows = MakeStaticRows(planes, MakeTables(), world.Services);
    const auto& row = rows.at(0);
    EXPECT_EQ(planes[0].PlaneClass + "," + planes[0].Country + "," + row.PlaneName + "," +
                  (row.Flyable ? "F" : "-") + "," + row.Country + "," + row.ColorWord,
              c.Row);
    EXPECT_EQ(row.SortKey, row.Country + "  " + row.PlaneName);
  }
}

TEST(StaticPlanes, AreWrittenBackByPlace) {
  const struct {
    const char *Before, *Name, *Code, *After;
  } cases[] = {
      {"1_I_16 p.planes.Plane$I_16 1 1 2 3 0.0 ru 2 ru", "Bf 109", "de",
       "  1_BF_109 p.planes.Plane$BF_109 1 1 2 3 0.0 de 2 ru"},
      {"1 p.planes.Plane$I_16 1 1 2 3 0 ru", "Fulmar", "gb",
       "  1 p.planes.Plane$Fulmar1 1 1 2 3 0 gb"},
      {"1 p.planes.Plane$FULMAR 1 1 2 3 0 ru", "Fulmar", "gb",
       "  1 p.planes.Plane$FULMAR 1 1 2 3 0 gb"},
      {" 1 p.planes.Plane$I_16 ru 1 2 3 0 ru", "I-16", "de",
       "  1 p.planes.Plane$I_16 ru 1 2 3 0 de"},
      {"1 p.planes.Plane$I_16 1 1 2 3 0", "Bf 109     x", "ru",
       "  1 p.planes.Plane$BF_109 1 1 2 3 0 ru"},
      {"1 p.planes.Plane$I_16 1 1 2 3 0 ru", "I-16", "", "  1 p.planes.Plane$I_16 1 1 2 3 0 null"},
      {"1 p.planes.Plane$I_16 1 1 2 3 0", "Cancel", "de", "  1 p.planes.Plane$I_16 1 1 2 3 0 null"},
      {"1 p.planes.Plane$I_16 1 1 2 3 0 ru", "  ", "", "  1 p.planes.Plane$I_16 1 1 2 3 0 ru"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.Before);
    // The line without "$" is as it was whatever is chosen, and so is the last one.
    const std::string head = "\t planes.Plane 1 2 3 4 5 6 7 |";
    LineArray lines = Lines(head + c.Before + "|end ");
    auto planes = FindStaticPlanes(lines);
    const std::string name = c.Name;
    EXPECT_EQ(ChangeStaticPlanes(planes, {0, 1}, MakeTables(), name, c.Code),
              name != "Cancel" && name != "  ");
    EXPECT_TRUE(ApplyStaticPlanes(planes, lines));
    EXPECT_EQ(lines.FileText(), CrlfText(head + c.After + "|end "));
  }
  LineArray none = Lines("x|planes.Plane 1");
  EXPECT_FALSE(ApplyStaticPlanes({}, none));
  EXPECT_FALSE(ApplyStaticPlanes(FindStaticPlanes(none), none));
}

TEST(StaticPlanes, AreWrittenWordByWordWhereLinesAreKept) {
  const std::string file =
      "\t0_Static  v.planes.Plane$I_16 1 1.0\t2.0 3 0.0 ru 2 \n"
      "1 v.planes.Plane$I_16 1 1 2 3 0\r\n 2 v.planes.Plane$I_16 I_16\n"
      "//3 v.planes.Plane$I_16 1 2 3 4 5 ru\n# v.planes.Plane$I_16\n";
  LineArray lines = LineArray::FromFileAsIs(file);
  auto planes = FindStaticPlanes(lines);
  EXPECT_FALSE(ApplyKeptStaticPlanes(planes, lines));
  EXPECT_EQ(lines.FileText(), file);
  ASSERT_EQ(planes.size(), 5U);
  planes[0].PlaneClass = planes[3].PlaneClass = planes[4].PlaneClass = "BF_109";
  planes[1].Country = "de";
  EXPECT_TRUE(ApplyKeptStaticPlanes(planes, lines));
  EXPECT_EQ(lines.FileText(),
            "\t0_Static  v.planes.Plane$BF_109 1 1.0\t2.0 3 0.0 ru 2 \n"
            "1 v.planes.Plane$I_16 1 1 2 3 0 de\r\n 2 v.planes.Plane$I_16 I_16\n"
            "//3 v.planes.Plane$BF_109 1 2 3 4 5 ru\n# v.planes.Plane$BF_109 null\n");
}

}  // namespace
}  // namespace rws::test
