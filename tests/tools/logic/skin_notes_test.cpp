#include "tools/logic/skin_notes.h"

#include <gtest/gtest.h>

#include "services/faults.h"
#include "services/text.h"
#include "tests/support/doubles.h"
#include "tests/support/sandbox.h"
#include "tools/logic/skin_images.h"

namespace rws::test {
namespace {

TEST(SkinNotes, ListsTheSchemesOfAnAircraft) {
  Catalogues tables;
  tables.Aircraft = {{"Red", "P-39N", "P_39N", "p39n", "", {}, true, false},
                     {"Red", "U-2", "U_2", "U2", "", {}, false, false},
                     {"Red", "Glider", "G", "", "", {}, false, false}};
  tables.Skins = {{"", "/x", {"default", "other.bmp"}},
                  {"P39N", "/p", {"default", "Default.bmp", "Void.BMP", "void.bmp", "a.b.bmp"}},
                  {"U2", "/u", {"default", "Void.bmp"}}};
  const auto list = ListSchemes(tables, "P_39N");
  EXPECT_EQ(list.Folder, "/p");
  EXPECT_EQ(Joined(list.Names), "Default|void|a.b");
  EXPECT_EQ(ListSchemes(tables, "U_2").Folder, "/u");
  EXPECT_TRUE(ListSchemes(tables, "U_2").Names.empty());
  for (const char* none : {"G", "unknown"}) EXPECT_EQ(ListSchemes(tables, none).Folder, "") << none;
}

TEST(SkinNotes, AreKeptInASectionForEachScheme) {
  const Sandbox box;
  World world;
  EXPECT_EQ(SideFile(world.Services, box.Path(), "Bf-109G-6/AS \xC4:?"),
            box.Path("Bf-109G-6_AS \xC3\x84__.ini"));
  const std::string file =
      box.Write("a.ini", "; by hand\r\n[Red \xC4]\r\nSkinner=Empty\r\nOwn=1\r\nComments=" +
                             std::string(300, 'c') + "\r\n");
  const auto read = [&](const char* scheme) { return ReadSkinNotes(world.Services, file, scheme); };
  const std::string shown(255, 'c');
  EXPECT_EQ(read("Red \xC3\x84"), (SkinNotes{"", "", shown}));

  SaveSkinNotes(world.Services, file, "Red \xC3\x84", {"J\xFCrgen", " ", shown});
  // Cyrillic letters, which the code page lacks; then a line break, which no section can hold.
  SaveSkinNotes(world.Services, file, "\xD0\x96", {"x", "", ""});
  SaveSkinNotes(world.Services, file, "a\nb", {"", "", "n"});
  EXPECT_EQ(box.Read("a.ini"), Crlf({"; by hand", "[Red \xC4]", "Skinner=J\xFCrgen", "Own=1",
                                     "Comments=" + std::string(300, 'c'), "Country=Empty",
                                     "[\xD0\x96]", "Skinner=x", "Country=Empty", "Comments=Empty",
                                     "[a_b]", "Skinner=Empty", "Country=Empty", "Comments=n"}));
  EXPECT_EQ(read("Red \xC3\x84"), (SkinNotes{"J\xFCrgen", "", shown}));
  EXPECT_EQ(read("\xD0\x96")[0], "x");
}

TEST(SkinImages, LinkAndClearLoseNoPicture) {
  const struct {
    const char *Work, *Before, *After;
  } rows[] = {
      {"link", "p.jpg=1", "p.jpg=1|S.jpg=1"},
      {"link", "p.jpg=1|S.jpg=2", "p.jpg=1|S.jpg=1"},
      {"link", "S.jpg=2", "S.jpg=2"},
      {"clear", "S.jpg=1", "S-bak.jpg=1"},
      {"clear", "S.jpg=1|S-bak.jpg=0", "S-bak.jpg=1"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(std::string(row.Work) + ": " + row.Before);
    const Sandbox box;
    World world;
    for (const auto pair : SplitAt(row.Before, '|'))
      box.Write(pair.substr(0, pair.find('=')), pair.substr(pair.find('=') + 1));
    const std::string target = LinkTarget(box.Path(), "S");
    const bool done = ResumeNext([&] {
      if (row.Work == std::string_view("link"))
        LinkImage(world.Services, box.Path("p.jpg"), target);
      else
        ClearLink(world.Services, target, target);
    });
    EXPECT_EQ(done, std::string_view(row.Before) != row.After);
    std::vector<std::string> after;
    for (const char* name : {"p.jpg", "S.jpg", "S-bak.jpg"})
      if (box.Exists(name)) after.push_back(name + ("=" + box.Read(name)));
    EXPECT_EQ(Joined(after), row.After);
  }
}

}  // namespace
}  // namespace rws::test
