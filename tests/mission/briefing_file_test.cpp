#include "mission/briefing_file.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "editors/logic/briefing_inserts.h"
#include "editors/logic/briefing_letters.h"
#include "services/faults.h"
#include "tests/support/doubles.h"
#include "tests/support/sandbox.h"

namespace rws::test {
namespace {

const std::string kWritten = "Name n\r\nShort s\\n\r\nDescription d\\n\r\n";

TEST(BriefingFile, Parses) {
  struct Case {
    const char *File, *Name, *Short, *Description;
  };
  const Case cases[] = {
      {"", "", "", ""},
      {"Name A\nShort b\nDescription d", "A", "b", "d"},
      {"Name A\rShort b\r\rDescription d", "A", "b", "d"},
      {"lost\r\nDescription one\r\ntwo\r\n\r\n three", "", "", "onetwo three"},
      {"Description d\r\nShort_de x\r\nName A\r\n name b\r\nName C", "A name bC", "",
       "dShort_de x"},
      {"Name My Name is\r\nShort Name Short it\r\nDescription a Description b\r\n", "My is",
       "Name it", "a b"},
      {"Name a\\nb\r\nShort\r\nDescription \\\\n\r\n", "a\\nbShort", "", "\\\r\n"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.File);
    const Briefing briefing = ParseBriefing(c.File);
    EXPECT_EQ(briefing.Name, c.Name);
    EXPECT_EQ(briefing.Short, c.Short);
    EXPECT_EQ(briefing.Description, c.Description);
  }
  EXPECT_EQ(BriefingText({"A\r\nB", "", "x\r\n\r\ny\r\n"}),
            "Name A\r\nB\r\nShort \\n\r\nDescription x\\n\\ny\\n\\n\r\n");
}

TEST(BriefingFile, SaveTestsTheBackupAndNotTheFile) {
  const char* const first = "RWS Backup/a.properties.bak";
  const char* const second = "RWS Backup/a.properties.03-04-26 05-06-07.bak";
  Sandbox box;
  World w(box.Path());
  const std::string asked = box.Path("m/a.properties");
  const auto save = [&] {
    box.Write("m/A.properties", "old");
    SaveBriefing(w.Services, asked, {"n", "s", "d"});
  };
  save();
  EXPECT_EQ(box.Read("m/A.properties"), kWritten) << "under its own spelling";
  box.Write(first, "1");
  save();
  EXPECT_EQ(box.Read("m/A.properties"), kWritten);
  EXPECT_EQ(box.Names("m") + box.Names("RWS Backup"), "A.propertiesa.properties.bak");
  box.Write(second, "2");
  std::string reason;
  Trap(save, [&](const Fault& caught) { reason = caught.Text; });
  EXPECT_EQ(reason, "File already exists: \"" + box.Path(second) + "\"");
  EXPECT_EQ(box.Read("m/A.properties") + box.Read(first) + box.Read(second), "old12");
}

TEST(BriefingFile, AReadOnlyOneStays) {
  Sandbox box;
  World w(box.Path());
  const std::string path = box.Write("m/a.properties", "old");
  std::filesystem::permissions(ToFsPath(path), std::filesystem::perms::owner_read);
  EXPECT_FALSE(ResumeNext([&] { SaveBriefing(w.Services, path, {"n", "s", "d"}); }));
  EXPECT_EQ(box.Names("m") + box.Read("m/a.properties"), "a.propertiesold");
}

TEST(BriefingLetters, AreShownAndKeepTheirSpelling) {
  const struct {
    const char* Before;
    std::u16string Shown, Edited;
    const char* After;
  } rows[] = {
      {"a\xE9\x80", u"a\u00E9\u20AC", u"\u00E9\u0416", "\xE9\\u0416"},
      {"\\u0416\\u04AF\\u04af", u"\u0416\u04AF\u04AF", u"\u0416x\u04AF", "\\u0416x\\u04af"},
      // Both spellings of a letter, edited before, between and behind.
      {"\xE9 one \\u00e9 two \xE9", u"\u00E9 one \u00E9 two \u00E9", u"\u00E9 on \u00E9 to \u00E9s",
       "\xE9 on \\u00e9 to \xE9s"},
      {"\\u0041A\\u0041", u"AAA", u"AABAA", "\\u0041ABA\\u0041"},
      {"x\\u00E9", u"x\u00E9", u"\u00E9x\u00E9\u00E8", "\\u00E9x\\u00E9\xE8"},
      {"\\uD83D\\uDE00", u"\U0001F600", u"\U0001F600\U0001F601", "\\uD83D\\uDE00\\uD83D\\uDE01"},
      {"\\\\u0416", u"\\\u0416", u"\\\u0416!", "\\\\u0416!"},
      // No letters: halves, breaks, what is cut short.
      {"\\uD83Dx\\u000A\\u2028\\u041\\u04 6\\u", u"\\uD83Dx\\u000A\\u2028\\u041\\u04 6\\u",
       u"\\uD83D", "\\uD83D"},
      {"\\u0416", u"\u0416", u"", ""},
  };
  for (const CodePage page; const auto& row : rows) {
    SCOPED_TRACE(row.Before);
    EXPECT_EQ(BriefingLetters(page, row.Before), row.Shown);
    EXPECT_EQ(SpellBriefing(page, row.Before, row.Shown), row.Before);
    EXPECT_EQ(SpellBriefing(page, row.Before, row.Edited), row.After);
  }
  // Another text altogether.
  std::string all;
  for (int i = 0; i < 2000; ++i) all += "\\u0416";
  EXPECT_EQ(SpellBriefing(CodePage(1251), all, std::u16string(2000, u'x')), std::string(2000, 'x'));
}

TEST(BriefingInserts, ValuesAndClocks) {
  const BriefingValues values{"Smolensk", "Clear", "1000.0", "7:05"};
  const auto insert = [&](std::size_t index, bool us) { return BriefingInsert(values, index, us); };
  EXPECT_EQ(insert(0, true) + insert(1, true) + insert(3, true), "SmolenskClear07:05");
  EXPECT_EQ(insert(2, false), "1000.0 meters");
  EXPECT_EQ(insert(2, true), "3281 feet");
  for (const char* kept : {"", "1:60", "24:0", "7", "1:2:3", "-1:00", "7: 5"})
    EXPECT_EQ(TwoDigitClock(kept), kept);
}

}  // namespace
}  // namespace rws::test
