#include "gamelists/game_names.h"

#include <gtest/gtest.h>

#include "catalogues/aircraft.h"
#include "catalogues/dogfight.h"
#include "catalogues/maps.h"
#include "catalogues/squadrons.h"
#include "services/faults.h"
#include "services/setting_values.h"
#include "services/text.h"
#include "tests/support/doubles.h"
#include "tests/support/sandbox.h"

namespace rws {
namespace {

class Names : public testing::Test {
 protected:
  Names() : world_(box_.Path("program")) {
    box_.Write(
        "program/RWS_Aircraft.txt",
        "F,A-20C 1941,A_20C,A20C,,*,A_20CP\r\n,Old Duck,DUCK,,GOOSE,,\r\nF,Bare 4.11,BARE,,,,"
        "\r\n,YP-80,YP_80,,,,\r\n,Fiat,FIAT,,,,\r\n");
    box_.Write("program/RWS_Weapons.txt",
               "2 x 100,2x100,A_20C\r\n4 x 250,4x250\r\nnone\r\n4 x SC,4xSC,DUCK\r\nnone\r\n");
    box_.Write("program/RWS_Squadron.txt",
               "none,None,NoNe,white,,None\r\nUSSR,USSR,r01,red,,USSR\r\nusa,US Navy,usn01,red,,USN"
               "\r\nGermany,Germany,g01,blue,,Luftwaffe\r\n");
    box_.Write("program/RWS_Maps.txt", "Crimea,Crimea/load.ini\r\nBerlin,Berlin/load.ini\r\n");
    box_.Write("program/RWS_DF.txt", ",A-20C 1941,A-20C\r\n");
    Pack("com/maddox/il2/objects/air.ini",
         "[AIR]\nBARE air.BARE 2\nHe-1/B air.HE_1B NOINFO g01\nA-20C air.A_20C 1 usa01\n"
         "DUCK air.DUCK\nTwin air.TWIN 1\nP-51 air.P51 1\n\xD6x air.\xD6X 1\n");
    Pack("i18n/plane.properties",
         "A-20C Boston, 1941\nTwin Boston, 1941\nDUCK fiat\nP-51 Racer\\t  Red F\nBARE \\u041D\n");
    Pack("i18n/weapons.properties",
         "A-20C.4x250 four\nA-20C.9x9 nine\nHe-1/B.1xX One\nHe-1/B.2xX One\nBARE.1xY Y\n");
    Pack("maps/all.ini", "[all]\nb BERLIN/load.ini\nn New/load.ini\n");
    Pack("i18n/maps.properties", "b Berlin, city\nn Crimea\n");
    Pack("PaintSchemes/regiments.ini",
         "[branch]\nUN "
         "US\n[NoNe]\nNoNe\n[Red]\nr01\nr0X\nusn01\nNavy2\nXx1\n[Blue]\nQ1\ng01\ng02\n");
    Pack("PaintSchemes/Red/usn01", "country = UN\n");
    Pack("PaintSchemes/Red/Navy2", "country = UN\n");
    Pack("PaintSchemes/Red/Xx1", "country = XX\n");
    Pack("i18n/country.properties", "xx Utopia\n");
    Pack("i18n/regShort.properties", "r0X Tenth, of many\n");
    world_.Services.System.Now = [] { return DateTime{2026, 11, 20, 1, 2, 3}; };
    world_.Services.Page = CodePage(1252);
  }
  void Pack(const std::string& path, const std::string& bytes) {
    box_.Write("game/#UP#/STD/" + path, bytes);
  }
  GameNames Find(ReadLists how = ReadLists::IfChanged) {
    return FindGameNames(world_.Services, box_.Path("game"), choices_, Kept(), {}, how);
  }
  std::string Kept() const { return box_.Path("program/kept.dat"); }
  Catalogues Apply(const GameNames& names) {
    Catalogues tables;
    LoadRegiments(tables, world_.Services);
    LoadMaps(world_.Doc, world_.Services);
    LoadAircraftArray(world_.Doc, tables, world_.Services);
    ApplyGameNames(world_.Doc, tables, world_.Services, names, choices_);
    ReadDogFight(tables, world_.Services);
    return tables;
  }
  static std::string Row(const Aircraft& a) {
    std::string text = a.Side + "," + a.Name + "," + a.Class + "," + a.Folder + "," + a.Companion +
                       "," + a.ParkedClass + (a.Flyable ? " F" : "") + (a.NoseArtOk ? " *" : "");
    for (std::size_t i = 1; i + 1 < a.Weapons.size(); ++i)
      text += " " + *a.Weapons[i].Key + "=" + a.Weapons[i].Text;
    return text;
  }

  test::Sandbox box_;
  test::World world_;
  NameChoices choices_;
};

TEST_F(Names, OfTheListsWinAndTheTablesFillThemUp) {
  const Catalogues tables = Apply(Find());
  const char* rows[] = {
      "Red,Boston, 1941,A_20C,A20C,,A_20CP F * 2x100=2 x 100 4x250=four 9x9=nine (uncertain)",
      "Red,fiat,DUCK,DUCK,GOOSE, 4xSC=4 x SC",
      "Red,Boston, 1941 (Twin),TWIN,Twin,, F",
      "Red,Racer\xA0Red\xA0"
      "F,P51,P51,, F",
      "Red,\xD6x,\xD6X,\xD6x,, F",
      "Blue,BARE,BARE,BARE,, F 1xY=Y",
      "Blue,He-1/B,HE_1B,He1B,, F 1xX=One 2xX=One (2xX)"};
  ASSERT_EQ(tables.Aircraft.size(), std::size(rows));
  for (std::size_t i = 0; i < std::size(rows); ++i) EXPECT_EQ(Row(tables.Aircraft[i]), rows[i]);
  ASSERT_EQ(tables.DogFightAircraft.size(), std::size(rows));
  EXPECT_EQ(tables.DogFightAircraft[6].InternalName, "He-1/B");
  EXPECT_TRUE(tables.DogFightAircraft[1].NotDefault) << "not flyable";
  std::string text;
  for (const auto& row : tables.Squadrons) {
    text += row.Color + "," + row.Country + "," + row.Name + ":";
    for (const auto& one : row.Regiments) text += " " + one.Code + "=" + one.UserData;
    text += "|";
  }
  EXPECT_EQ(text,
            "white,none,None: NoNe=None|red,USSR,USSR: r01=USSR r0X=Tenth, of many|"
            "red,usa,US Navy: usn01=USN Navy2=Navy2|blue,Germany,Germany: g01=Luftwaffe g02=g02|"
            "red,Utopia,Utopia: Xx1=Xx1|blue,usa,US Navy: Q1=Q1|");
  text.clear();
  for (const auto& map : world_.Doc.Maps) text += map.Name + "=" + map.Path + "|";
  EXPECT_EQ(text,
            "Berlin, city=BERLIN/load.ini|Crimea=New/load.ini|"
            "Crimea (Crimea/load.ini)=Crimea/load.ini|");
  choices_.UnlistedFlyable = false;
  EXPECT_FALSE(IsFlyable(Apply(Find()), "TWIN"));
  choices_.UseLists = false;
  EXPECT_EQ(Apply(Find()).Aircraft.size(), 5U);
  EXPECT_EQ(world_.Doc.Maps.size(), 2U);
}

TEST_F(Names, AreKeptUntilSomethingOfThemChanges) {
  int reads = 0;
  world_.Services.Files.BeforeStep = [&](const FileStep& step) {
    if (step.Path.ends_with("air.ini")) ++reads;
  };
  const auto read = [&](ReadLists how = ReadLists::IfChanged) {
    reads = 0;
    const GameNames names = Find(how);
    EXPECT_EQ(names.Kept ? names.Kept->ReadAt : "", "2026-11-20 01:02:03");
    EXPECT_TRUE(AreCurrent(world_.Services, box_.Path("game"), choices_, names));
    EXPECT_EQ(Apply(names).Aircraft.size(), 7U);
    return reads;
  };
  const auto write = [&](const char* path) {
    return [this, path] { box_.Write(std::string("game/") + path, "P-51 x\nsomething other\n"); };
  };
  Pack("maps/all.ini", "[all]\nbare\n");
  EXPECT_EQ(read(), 1);
  EXPECT_EQ(read(), 0);
  const GameLists kept = Find().Kept->Lists;
  EXPECT_EQ(kept.Troubles.size(), 1U);
  EXPECT_EQ(kept.Names.Countries.size(), 1U);
  EXPECT_EQ(kept.Sources.size(), 8U);
  EXPECT_EQ(read(ReadLists::Anew), 1);
  const std::pair<const char*, std::function<void()>> changes[] = {
      {"edited", write("#UP#/STD/i18n/plane.properties")},
      {"a better one", write("#UP#/STD/i18n/plane_us.properties")},
      {"a folder for one", write("#UP#/STD/maps/x.txt")},
      {"a mod ahead", write("#UP#/!A/i18n/maps.properties")},
      {"a folder in a mod", write("#UP#/!A/maps/x.txt")},
      {"of no pack", [this] { box_.Write("program/kept.dat", "RWS lists 1\n\nwhole\n"); }},
      {"the language", [this] { choices_.Language = "de"; }}};
  for (const auto& [what, change] : changes) {
    SCOPED_TRACE(what);
    const GameNames before = Find();
    change();
    const bool isSame = std::string(what) == "of no pack";
    EXPECT_EQ(AreCurrent(world_.Services, box_.Path("game"), choices_, before), isSame);
    EXPECT_EQ(read(), 1);
    EXPECT_EQ(read(), 0);
  }
  const GameNames before = Find();
  box_.Write("program/RWS_Own.txt", "[aircraft DUCK]\nname=Goose\n");
  EXPECT_FALSE(AreCurrent(world_.Services, box_.Path("game"), choices_, before));
  EXPECT_EQ(GetPlaneName(Apply(Find()), world_.Services, "DUCK"), "Goose");
  // Cut anywhere, or full of nonsense, it is no list.
  const std::string whole = box_.Read("program/kept.dat");
  ASSERT_TRUE(UnpackLists(whole));
  for (std::size_t at = 12; at + 8 < whole.size(); at += 7) {
    EXPECT_FALSE(UnpackLists(whole.substr(0, at) + "\nwhole\n")) << at;
    std::string bent = whole;
    bent[at] = '\xFF';
    UnpackLists(bent);
  }
  world_.Services.Files.BeforeStep = [](const FileStep& step) {
    if (step.Path.find("kept.dat") != step.Path.npos) throw Fault(fault::Permission, "no");
  };
  EXPECT_EQ(Apply(Find()).Aircraft.size(), 7U) << "that they cannot be kept costs no name";
}

TEST_F(Names, SayWhereTheyComeFrom) {
  EXPECT_EQ(NamesText(Find(), choices_),
            "#UP#: 7 aircraft, 5 loadouts, 2 maps, 9 squadrons; read 2026-11-20");
  box_.MakeFolder("game/MODS/X");
  const GameNames several = Find();
  EXPECT_TRUE(several.MustChoose && several.Packs.size() == 2);
  EXPECT_TRUE(Contains(NamesText(several, choices_), "the game has 2 packs, choose one"));
  EXPECT_EQ(Apply(several).Aircraft.size(), 5U);
  choices_.Pack = "#up#";
  EXPECT_TRUE(Find().Kept);
  const auto stop = [](const WorkStep&) { return false; };
  const GameNames given =
      FindGameNames(world_.Services, box_.Path("game"), choices_, Kept(), stop, ReadLists::Anew);
  EXPECT_TRUE(given.IsCancelled && !given.Kept);
  EXPECT_TRUE(Find().Kept) << "what was kept before still is";
  box_.Write("bare/#UP#/STD/maps/all.ini", std::string("\xFF\xFE[\0A\0", 6));
  const GameNames none = FindGameNames(world_.Services, box_.Path("bare"), choices_, "");
  EXPECT_TRUE(!none.Kept && none.Troubles.size() == 1) << "that nothing could be read is told";
}

}  // namespace
}  // namespace rws
