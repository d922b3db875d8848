#include "gamelists/game_lists.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include "gamelists/properties.h"
#include "gamelists/sect_text.h"
#include "services/faults.h"
#include "services/paths.h"
#include "services/text.h"
#include "tests/support/doubles.h"
#include "tests/support/sandbox.h"

namespace rws {
namespace {

std::string Sections(std::string_view bytes) {
  std::string text;
  for (const auto& line : SectLines(bytes)) {
    text.append(line.Section).append(":").append(line.Key).append("=").append(line.Value);
    text += "@" + std::to_string(line.Line) + "|";
  }
  return text;
}

TEST(SectText, IsTakenApartAsTheGameDoes) {
  const std::pair<const char*, const char*> rows[] = {
      {"A 1\n[AIR]\nA-20C air.A_20C 1\r\n", "AIR:A-20C=air.A_20C 1@3|"},
      {"[x]\n\t Key \t a\tb  # more\n", "x:Key=a\tb@2|"},
      {"[x]\nBf-109E-4/B air.X//no\n;no\n//no\n#no\nk;no\n", "x:Bf-109E-4/B=air.X@2|x:k=@6|"},
      {"[x]\na 1\n[]\nb 2\n[y] ;\nc 3\n[x]\na 4", "x:a=1@2|x:b=2@4|y:c=3@6|x:a=4@8|"},
      {"[x]\na\x01"
       "b 1\n",
       "x:a=@2|"},
      {"[ x]y\na 1\n", ""},
      {"", ""}};
  for (const auto& [bytes, lines] : rows) EXPECT_EQ(Sections(bytes), lines) << bytes;
  const std::string_view nul("[x]\na\0b 1\nc 2\n", 14);
  EXPECT_EQ(Sections(nul), "x:a=@2|x:c=2@3|");
  const auto lines = SectLines("[X]\na 1\n[y]\nb 1\n[x]\nc 1\n");
  EXPECT_EQ(FirstSection(lines, "x").size(), 1U) << "the first of two of one name";
}

TEST(Properties, AreTakenApartAsTheGameDoes) {
  struct Row {
    const char *Bytes, *Texts;
    std::size_t Malformed = 0;
  };
  for (const Row& row :
       {Row{"a b c  \r\n#x y\n!x y\n\n  k=v\n", "a=b c|k=v|"}, Row{"a : = b\nc\n", "a== b|c=|"},
        Row{"//Lvov Lvov\n", "//Lvov=Lvov|"}, Row{"a one \\\n   two\\\\\nb x", "a=one two\\|b=x|"},
        Row{"a\\ b\\=c d\\\\e\\x\\t.\n", "a b=c=d\\ex\t.|"},
        Row{"r \\u041D\\u0435\\u0442\n", "r=\xD0\x9D\xD0\xB5\xD1\x82|"},
        Row{"s \\uD83D\\uDE00\\uD83D\n", "s=\xF0\x9F\x98\x80\xEF\xBF\xBD|"},
        Row{"x y\nr \\u04 and \\u12G4\n", "x=y|r=\\u04 and \\u12G4|", 2},
        Row{"f Vend\xE9"
            "e \x84\n",
            "f=Vend\xC3\xA9"
            "e \xE2\x80\x9E|"},
        Row{"\xEF\xBB\xBF"
            "f Vend\xC3\xA9"
            "e\n",
            "f=Vend\xC3\xA9"
            "e|"},
        Row{"a 1\nb 2\na 3\n", "a=3|b=2|"}, Row{"a 1\\", "a=1|"}}) {
    std::string texts;
    const Properties read(row.Bytes);
    for (const auto& property : read.All()) texts += property.Key + "=" + property.Text + "|";
    EXPECT_EQ(texts, row.Texts) << row.Bytes;
    EXPECT_EQ(read.MalformedLine(), row.Malformed) << row.Bytes;
  }
}

class GamePacks : public testing::Test {
 protected:
  /** "Name: roots" of each pack, below the game's folder. */
  std::string Packs() {
    std::string text;
    for (const auto& pack : FindPacks(world_.Services, box_.Path("game")).Packs) {
      text += pack.Name + ":";
      for (const auto& root : pack.Roots)
        text += " " + Replace(root.substr(box_.Path("game").size() + 1), "\\", "/");
      text += "|";
    }
    return text;
  }

  test::World world_;
  test::Sandbox box_;
};

TEST_F(GamePacks, AreThoseThatTheGameSwitchesOn) {
  for (const char* folder : {"MODS/b", "MODS/A", "MODS/-off", "MODS/_c", "Files/i18n", "#UP#/STD"})
    box_.MakeFolder(std::string("game/") + folder);
  box_.Write("game/MODS/file.txt", "");
  struct Row {
    const char *Settings, *Packs;
  };
  for (const Row& row :
       {Row{"[Settings]\nModType=6\n[Modtype_06]\nName=Ultrapack\nFiles=none\nMods=#up#\n",
            "Ultrapack: #UP#/STD|"},
        Row{"[Settings]\r\nModType = 06\r\n", ""},
        Row{"[Settings]\nModType=3\n", "#UP#: #UP#/STD|"},
        Row{"[Settings]\n", "MODS, Files: MODS/A MODS/b MODS/_c Files|"},
        Row{"[Settings]\nModType=2\nModsFolder=#UP#\nFilesFolder=FILES\n",
            "#UP#, Files: #UP#/STD Files|"},
        Row{"[Settings]\nModType=0\n[Modtype_00]\nName=Stock\nFiles=NONE\nMods=none\n", ""},
        Row{"[Settings]\nModType=nonsense\n[Modtype_01]\nFiles=Files\n", "Files: Files|"},
        Row{"[Settings]\nModType=-4\n", ""},
        Row{"", "MODS, Files: MODS/A MODS/b MODS/_c Files|"}}) {
    box_.Write("game/il2fb.ini", row.Settings);
    EXPECT_EQ(Packs(), row.Packs) << row.Settings;
  }
  world_.Services.Files.BeforeStep = [](const FileStep& step) {
    if (step.Path.ends_with("il2fb.ini")) throw Fault(fault::Permission, "no");
  };
  EXPECT_EQ(FindPacks(world_.Services, box_.Path("game")).Troubles.size(), 1U);
  world_.Services.Files.BeforeStep = {};
  box_.Remove("game/il2fb.ini");
  EXPECT_EQ(Packs(), "MODS, Files: MODS/A MODS/b MODS/_c Files|#UP#: #UP#/STD|")
      << "the player must choose";
  EXPECT_TRUE(FindPacks(world_.Services, "").Packs.empty());
  EXPECT_TRUE(FindPacks(world_.Services, box_.Path("nowhere")).Packs.empty());
}

class Lists : public testing::Test {
 protected:
  GameLists Read(const std::string& language = "us") {
    const auto packs = FindPacks(world_.Services, box_.Path("game")).Packs;
    return packs.empty() ? GameLists() : ReadGameLists(world_.Services, packs[0], language);
  }
  void Write(const std::string& path, const std::string& bytes) {
    box_.Write("game/#UP#/STD/" + path, bytes);
  }
  static std::string Aircraft(const GameLists& lists) {
    std::string text;
    for (const auto& one : lists.Names.Aircraft) {
      text += one.Key + "," + one.Class + "," + one.Name + "," +
              std::to_string(static_cast<int>(one.Army)) + one.DefaultCode;
      for (const auto& [key, shown] : one.Loadouts) text += " " + key + "=" + shown;
      text += "|";
    }
    return text;
  }

  test::World world_;
  test::Sandbox box_;
};

TEST_F(Lists, TellTheAircraftAndTheirLoadouts) {
  Write("com/maddox/il2/objects/air.ini",
        "[AIR]\n**** Fighters\nA-20C air.A_20C 1 usa01 SUMMER\nBF-109F-4 air.BF_109F4 2 g01\n"
        "BF-109F-4_1.3ATA air.BF_109F4_13 2\nF-86E10 air.F_86E_10 NOINFO usa01\n"
        "Sep air.Placeholder3 1\nbad com.X 1\n[MORE]\nLate air.LATE 2\nA-20Cx air.A_20C 2\n");
  Write("i18n/Plane.Properties", "A-20C first\nBF-109F-4 Bf 109 F-4, 1941\nA-20Cx A-20C other\n");
  Write("i18n/plane_us.properties", "BF-109F-4 Bf one-oh-nine\n");
  Write("i18n/plane_ru.properties", "Late \\u041D\\u0435\\u0442\nF-86E10 Sabre\n");
  // A later mod counts for what no earlier one has, in any letter case.
  box_.Write("game/#UP#/Zed/I18N/plane.properties", "A-20C later\nA-20Cx later\n");
  box_.Write(
      "game/#UP#/Zed/I18N/Weapons.properties",
      "BF-109F-4.default Default\nBF-109F-4_1.3ATA.default Default\nBF-109F-4_1.3ATA.2xR 2 x R\n"
      "BF-109F-4.1xSC.50 One bomb\nBF-109F-4.none Empty\nUnknown.x y\nnodot z\nA-20Cx. w\n");
  const GameLists lists = Read();
  EXPECT_EQ(
      Aircraft(lists),
      "A-20Cx,A_20C,A-20C other,2|BF-109F-4,BF_109F4,Bf one-oh-nine,2g01 1xSC.50=One bomb|"
      "BF-109F-4_1.3ATA,BF_109F4_13,,2 2xR=2 x R|F-86E10,F_86E_10,Sabre,0usa01|Late,LATE,,2|");
  ASSERT_EQ(lists.Troubles.size(), 1U);
  EXPECT_EQ(lists.Troubles[0].Line, 8U);
  EXPECT_EQ(lists.Sources[0].List + std::to_string(lists.Sources[0].Entries), "aircraft5");
  EXPECT_NE(Aircraft(Read("ru")).find("Late,LATE,\xD0\x9D"), std::string::npos);
}

TEST_F(Lists, TellMapsSquadronsAndParkedAircraft) {
  Write("maps/all.ini",
        "[all]\n****E**** Net1/load.ini\nOnline Net1/load.ini\nCrimea(LAL) LAL/load.ini\n"
        "again LAL/load.ini\nbare\n[all]\nsecond x/y.ini\n");
  Write("i18n/maps.properties", "Online Online Map\n****E**** EAST\n");
  Write("PaintSchemes/regiments.ini",
        "[branch]\nUN US\n[NoNe]\nNoNe\n[Red]\nusa01\nr01\nr01\n[Blue]\ng01\n[Other]\nx\n");
  Write("i18n/regShort.properties", "r01 1st IAP\n");
  Write("i18n/regInfo.properties", "r01 <none>\n");
  Write("PaintSchemes/Red/USA01", "country = UN\nid = 12\n");
  Write("PaintSchemes/Blue/g01", "country = de\n");
  Write("com/maddox/il2/objects/stationary.ini",
        "[StationaryPlanes]\nA_20G vehicles.planes.Plane$A_20G 1\nodd x.Y\n");
  const GameLists lists = Read();
  std::string text;
  for (const auto& map : lists.Names.Maps) text += map.Path + "=" + map.Name + "|";
  EXPECT_EQ(text, "Net1/load.ini=Online Map|LAL/load.ini=Crimea(LAL)|");
  text.clear();
  for (const auto& one : lists.Names.Regiments)
    text += one.Code + "," + one.Name + "," + one.Info + "," + one.Branch + one.Country + "," +
            std::to_string(static_cast<int>(one.Army)) + "|";
  EXPECT_EQ(text, "usa01,,,unus,1|r01,1st IAP,<none>,,1|g01,,,dede,2|NoNe,,,,0|");
  ASSERT_EQ(lists.Names.Parked.size(), 1U);
  EXPECT_EQ(lists.Names.Parked[0].Class, "A_20G");
  EXPECT_EQ(lists.Troubles.size(), 2U) << "a map without a path, and what is no plane";
}

TEST_F(Lists, OfBadFilesAreToldAndNothingFails) {
  EXPECT_TRUE(Read().IsEmpty());
  Write("com/maddox/il2/objects/air.ini", std::string("\xFF\xFE[\0A\0", 6));
  Write("maps/all.ini", "");
  std::string many = "r01 first\n";
  for (int i = 0; i < 10'000; ++i) many += "dup " + std::to_string(i) + "\n";
  Write("i18n/regShort.properties", many + "broken \\u12\n");
  Write("PaintSchemes/regiments.ini", "[Red]\ndup\n");
  world_.Services.Files.BeforeStep = [](const FileStep& step) {
    if (step.Path.ends_with("all.ini")) throw Fault(fault::FileNotFound, "gone");
  };
  GameLists lists = Read();
  std::string told;
  for (const auto& trouble : lists.Troubles)
    told += GetFileName(trouble.Path) + ":" + std::to_string(trouble.Line) + "|";
  EXPECT_EQ(told, "air.ini:0|all.ini:0|regShort.properties:10002|");
  ASSERT_EQ(lists.Names.Regiments.size(), 1U);
  EXPECT_EQ(lists.Names.Regiments[0].Name, "9999");
  // Given up, what was read until then is there, and it says so.
  std::size_t steps = 0;
  const GamePack pack = FindPacks(world_.Services, box_.Path("game")).Packs[0];
  lists = ReadGameLists(world_.Services, pack, "us", [&](const WorkStep&) { return ++steps < 2; });
  EXPECT_TRUE(lists.IsCancelled);
  EXPECT_TRUE(lists.Names.Regiments.empty());
}

TEST_F(Lists, LanguageIsThatOfTheGame) {
  for (const auto& [bytes, language] : {std::pair{"[rts]\nlocale=ru\n", "ru"},
                                        {"[rts]\nlocale=DE\n", "de"},
                                        {"", "us"},
                                        {"[rts]\nlocale=../x\n", "us"}}) {
    box_.Write("game/conf.ini", bytes);
    EXPECT_EQ(GameLanguage(world_.Services, box_.Path("game")), language) << bytes;
  }
}

/** Lists of a real pack, where a folder with them is named. */
TEST(RealLists, AreReadWhole) {
  const char* folder = std::getenv("RWS_LOOSE");
  if (!folder) GTEST_SKIP() << "RWS_LOOSE names no folder";
  test::World world;
  const auto found = FindPacks(world.Services, BuildPath(folder, "modpack"));
  ASSERT_EQ(found.Packs.size(), 1U);
  const GameLists lists = ReadGameLists(world.Services, found.Packs[0], "us");
  std::size_t loadouts = 0;
  for (const auto& one : lists.Names.Aircraft) {
    loadouts += one.Loadouts.size();
    EXPECT_NE(one.Name, "") << one.Class;
  }
  EXPECT_TRUE(loadouts > 4000 && lists.Names.Maps.size() > 230);
  EXPECT_TRUE(lists.Names.Aircraft.size() > 600 && lists.Names.Regiments.size() > 4100);
  EXPECT_EQ(lists.Troubles.size(), 0U);
}

}  // namespace
}  // namespace rws
