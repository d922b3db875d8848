#include "catalogues/own_names.h"

#include <gtest/gtest.h>

#include "catalogues/listed_names.h"
#include "tests/support/doubles.h"

namespace rws {
namespace {

struct OwnNames : testing::Test {
  OwnNames() {
    W.Tables.Aircraft = {{"Red", "P-40E", "P_40E", "", "", {}, true},
                         {"Red", "Hurri, late", "P-51D", "", "", {}, true}};
    W.Doc.Maps = {{"Crimea", "Crimea/load.ini"}, {"Malta Winter", "Malta/old.ini"}};
  }

  test::World W;
};

TEST_F(OwnNames, AreProposed) {
  struct Row {
    const char *Class, *Name;
  };
  for (const Row& row : {Row{"F4U_1D", "F4U-1D"},
                         {"BF_109G_6_Late", "BF-109G-6-Late"},
                         {"p_40E", "p-40E (p_40E)"},  // taken by a name
                         {"P_51D", "P-51D (P_51D)"},  // taken by a class
                         {"X_", "X"},
                         {"\xC4_1", "\xC3\x84-1"},
                         {"_", "_"}}) {
    SCOPED_TRACE(row.Class);
    EXPECT_EQ(ProposedAircraftName(W.Tables, W.Services, row.Class), row.Name);
    EXPECT_EQ(WhyNotAircraftName(W.Tables, W.Services, row.Class, row.Name), "");
    EXPECT_TRUE(CanAddAircraft(W.Tables, W.Services, row.Class));
  }
  for (const Row& row : {Row{"Isle_of_X/wload.ini", "Isle of X Winter"},
                         {"Isle/load.ini", "Isle"},
                         {"a/b/2_load.ini", "b 2 load"},
                         {"crimea/Load_.ini", "crimea Load"},
                         {" MALTA/load_w.ini ", "MALTA Winter (MALTA/load_w.ini)"},
                         {"only.ini", "only"}}) {
    SCOPED_TRACE(row.Class);
    EXPECT_EQ(ProposedMapName(W.Doc, W.Services, row.Class), row.Name);
    EXPECT_EQ(WhyNotMapName(W.Doc, W.Services, row.Class, row.Name), "");
    EXPECT_TRUE(CanAddMap(W.Doc, W.Services, row.Class));
  }
  EXPECT_EQ(ProposedAircraftKey(W.Tables, W.Services, "F4U1D"), "");
  auto listed = std::make_shared<ListedNames>();
  listed->Parked = {{"F4U-1D", "F4U1D"}};
  W.Tables.Listed = listed;
  EXPECT_EQ(ProposedAircraftKey(W.Tables, W.Services, "F4U1d"), "F4U-1D");
}

TEST_F(OwnNames, ThatCannotBeAreRefusedWithTheReason) {
  struct Row {
    const char *Name, *Why;
  };
  for (const Row& row : {Row{"  ", "is empty"},
                         {"a\tb", "tab"},
                         {"a\r\nb", "line end"},
                         {"Ha \xE2\x98\x83", "\"\xE2\x98\x83\", which missions cannot spell"},
                         {"p-40e", "class \"P_40E\""},
                         {"HURRI,  late", "class \"P-51D\""},
                         {"p-51d", "class \"P-51D\""}}) {
    SCOPED_TRACE(row.Name);
    const std::string why = WhyNotAircraftName(W.Tables, W.Services, "NEW", row.Name);
    EXPECT_NE(why.find(row.Why), why.npos) << why;
  }
  EXPECT_EQ(WhyNotAircraftName(W.Tables, W.Services, "P_40E", "P-40e"), "") << "its own";
  EXPECT_EQ(WhyNotAircraftName(W.Tables, W.Services, "N", "\xC5\x81o\xC5\x9B, 2"), "") << "L and s";
  EXPECT_NE(WhyNotMapName(W.Doc, W.Services, "x", "crimea"), "");
  EXPECT_EQ(WhyNotMapName(W.Doc, W.Services, "CRIMEA/load.ini", "crimea"), "");
  EXPECT_NE(WhyNotMapName(W.Doc, W.Services, "x", ""), "");
  for (const char* word : {"", "a b", "a\tb", "\xE2\x98\x83"})
    EXPECT_NE(WhyNotWord(W.Services, "key", word), "") << word;
  EXPECT_EQ(WhyNotWord(W.Services, "key", "F4U-1D"), "");
}

TEST_F(OwnNames, AreForWhatIsUnknownAlone) {
  EXPECT_FALSE(CanAddAircraft(W.Tables, W.Services, "P_40E"));
  EXPECT_FALSE(CanAddAircraft(W.Tables, W.Services, ""));
  EXPECT_FALSE(CanAddAircraft(W.Tables, W.Services, "A B")) << "no line could name it";
  EXPECT_FALSE(CanAddMap(W.Doc, W.Services, "CRIMEA/load.ini"));
  EXPECT_FALSE(CanAddMap(W.Doc, W.Services, " "));
}

}  // namespace
}  // namespace rws
