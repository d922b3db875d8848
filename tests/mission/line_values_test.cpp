#include "mission/line_values.h"

#include <gtest/gtest.h>

#include "services/faults.h"
#include "services/paths.h"
#include "tests/support/doubles.h"

namespace rws {
namespace {

TEST(LineValues, GetValueTakesExactlyTwoWords) {
  const std::pair<const char*, const char*> rows[] = {{"key value", "value"},
                                                      {"   key value  ", "value"},
                                                      {"key  value", ""},
                                                      {"key", ""},
                                                      {"key ", ""},
                                                      {"key one two", ""},
                                                      {"", ""},
                                                      {"   ", ""},
                                                      {"key\tvalue", ""},
                                                      {"key \t", "\t"},
                                                      {"key &0", "&0"}};
  for (const auto& [line, value] : rows) {
    SCOPED_TRACE(line);
    EXPECT_EQ(GetValue(line), value);
  }
}

TEST(LineValues, GetNumberTakesTheFirstDigit) {
  const std::pair<const char*, int> rows[] = {
      {"skin0 a.bmp", 0}, {"Skill3 2", 3}, {"  no digit", -1}, {"", -1}, {"x97", 9}};
  for (const auto& [line, number] : rows) {
    SCOPED_TRACE(line);
    EXPECT_EQ(GetNumber(line), number);
  }
}

TEST(LineValues, IntegerPartCutsAtTheDecimalMark) {
  const std::pair<const char*, const char*> rows[] = {
      {"1500.0", "1500"}, {"1500", "1500"}, {"1500,5", "1500"}, {"1.234,5", "1.234"},
      {"1,234.5", "1"},   {".5", ""},       {"", ""},           {"-3.9.1", "-3"}};
  for (const auto& [text, whole] : rows) {
    SCOPED_TRACE(text);
    EXPECT_EQ(IntegerPart(text), whole);
  }
}

TEST(LineValues, GetMapNameTakesTheFirstRowOfThePath) {
  test::World world;
  world.Doc.Maps = {{"Moscow", "Moscow/sload.ini"},
                    {"Again", "moscow/sload.ini"},
                    {"\xD6land", " \xD6LAND/load.ini "}};
  const std::pair<const char*, const char*> rows[] = {{"MOSCOW/SLOAD.ini ", "Moscow"},
                                                      {"\xF6land/load.ini", "\xD6land"},
                                                      {"Moscow/load.ini", ""},
                                                      {"", ""}};
  for (const auto& [path, name] : rows) {
    SCOPED_TRACE(path);
    EXPECT_EQ(GetMapName(world.Doc, world.Services, path), name);
  }
}

TEST(LineValues, GetBriefSoundPathLiesInTheGameDirectory) {
  test::World world;
  world.Doc.GamePath = "Game Dir";
  const auto path = [&](const char* line) {
    return GetBriefSoundPath(world.Doc, world.Services, line);
  };
  EXPECT_EQ(path("  briefSound Music/in/a.wav more words"),
            BuildPath("Game Dir", "Music\\in\\a.wav"));
  // The code page's letter becomes the file system's spelling.
  EXPECT_EQ(path("briefSound M\xE9.wav"), BuildPath("Game Dir", "M\xC3\xA9.wav"));
  EXPECT_THROW(path("  briefSound  "), Fault);
}

}  // namespace
}  // namespace rws
