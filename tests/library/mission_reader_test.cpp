#include "library/mission_reader.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <future>
#include <map>

#include "library/briefings.h"
#include "library/text_finder.h"
#include "services/faults.h"
#include "services/paths.h"
#include "services/text.h"
#include "tests/support/doubles.h"
#include "tests/support/sandbox.h"

namespace rws {
namespace {

const std::string kMission = test::CrlfText("[MAIN]|MAP a/b.ini|[Wing]|r0100|[r0100]|Planes 1");

class ReadingMissions : public testing::Test {
 protected:
  /** The missions of a request as "folder/name" below the sandbox, sorted. */
  std::string Read(MissionReader& reader, ReadRequest request) {
    reader.Add(std::move(request));
    std::vector<std::string> names;
    for (auto batch = reader.Wait(); !batch.empty(); batch = reader.Wait())
      for (auto& facts : batch) {
        std::string path = BuildPath(facts.Folder, facts.FileName).substr(box_.Path().size() + 1);
        names.push_back(Replace(path, "\\", "/"));
        last_[names.back()] = std::move(facts);
      }
    std::sort(names.begin(), names.end());
    return test::Joined(names);
  }
  std::string ReadTree(MissionReader& reader) {
    ReadRequest request{{box_.Path()}};
    request.Tree = true;
    return Read(reader, request);
  }

  test::Sandbox box_;
  FileSystem files_;
  std::map<std::string, MissionFacts> last_;
};

TEST_F(ReadingMissions, TakesAFolderOrATree) {
  box_.Write("b.mis", kMission);
  box_.Write("A.MIS", kMission + "[BornPlace]\r\n1 3000 1 1\r\n");
  box_.Write("quick.mis", kMission);
  box_.Write("a.txt", kMission);
  box_.Write("b.properties", "Name The name\r\nShort Says much\\n\r\n");
  box_.Write("Missions/Net/Coop/x/c.mis", kMission);
  box_.Write("empty/a.properties", "Name no mission\r\n");
  MissionReader reader(files_, CodePage(), 3);
  ReadRequest folder{{box_.Path()}};
  folder.Excluded = "QUICK,,~";
  EXPECT_EQ(Read(reader, folder), "A.MIS|b.mis");
  EXPECT_EQ(last_["b.mis"].BriefingName, "The name");
  EXPECT_EQ(last_["b.mis"].BriefingShort, "Says much\r\n");
  EXPECT_EQ(last_["b.mis"].Stamp, files_.Stamp(box_.Path("b.mis")));
  EXPECT_EQ(last_["b.mis"].Kind, MissionKind::Coop);
  EXPECT_TRUE(last_["b.mis"].KindGuessed);
  EXPECT_EQ(last_["A.MIS"].Kind, MissionKind::Dogfight);
  EXPECT_EQ(ReadTree(reader), "A.MIS|Missions/Net/Coop/x/c.mis|b.mis|quick.mis");
  EXPECT_EQ(last_["Missions/Net/Coop/x/c.mis"].Kind, MissionKind::Coop);
  EXPECT_FALSE(last_["Missions/Net/Coop/x/c.mis"].KindGuessed);
  const ReadProgress progress = reader.Progress();
  EXPECT_EQ(progress.Found, 4U);
  EXPECT_EQ(progress.Read, 4U);
  EXPECT_TRUE(progress.Idle);
}

TEST_F(ReadingMissions, RereadsSingleMissions) {
  const std::string path = box_.Write("b.mis", kMission), gone = box_.Path("gone.mis");
  box_.Write("b_ru.properties", "Name Russian\r\n");
  MissionReader reader(files_, CodePage());
  const std::string away = box_.Path("no folder/x.mis");
  EXPECT_EQ(Read(reader, {{}, {path, gone, away}}), "b.mis|gone.mis|no folder/x.mis");
  EXPECT_EQ(last_["b.mis"].BriefingName, "Russian");
  EXPECT_FALSE(last_["gone.mis"].Stamp.Exists);
  EXPECT_FALSE(last_["no folder/x.mis"].Stamp.Exists);
  ReadRequest request{{}, {path}};
  request.Texts = {"r0100", "no such", "RUSS", "russian", "map a/b"};
  Read(reader, request);
  EXPECT_EQ(last_["b.mis"].TextsFound, 0b11001U);
}

TEST_F(ReadingMissions, GoesOnWhereSomethingCannotBeRead) {
  for (const char* name : {"a.mis", "b.mis", "down/c.mis", "shut/d.mis", "shut/deep/e.mis"})
    box_.Write(name, kMission);
  files_.BeforeStep = [](const FileStep& step) {
    if (step.Action == "list" && step.Path.ends_with("shut"))
      throw FileFault(fault::Permission, "list", step.Path, "no right");
    if (step.Action == "read" && step.Path.ends_with("b.mis"))
      throw FileFault(fault::FileIo, "read", step.Path, "bad disk");
    // Goes between the list and its turn.
    if (step.Action == "read" && step.Path.ends_with("c.mis")) throw FileNotFoundFault(step.Path);
  };
  MissionReader reader(files_, CodePage());
  EXPECT_EQ(ReadTree(reader), "a.mis|b.mis|down/c.mis");
  EXPECT_EQ(last_["b.mis"].Fault, MissionFault::Unreadable);
  EXPECT_NE(last_["b.mis"].FaultText.find("bad disk"), std::string::npos);
  EXPECT_TRUE(last_["b.mis"].Stamp.Exists);
  EXPECT_FALSE(last_["down/c.mis"].Stamp.Exists);
  const auto troubles = reader.TakeTroubles();
  ASSERT_EQ(troubles.size(), 1U);
  EXPECT_NE(troubles[0].find("shut"), std::string::npos);
  EXPECT_EQ(Read(reader, {{box_.Path("none")}}), "");
  EXPECT_EQ(reader.TakeTroubles().size(), 1U);
}

TEST_F(ReadingMissions, FollowsEachLinkOnce) {
  if (!test::kPosixFiles) GTEST_SKIP() << test::kNeedsPosixFiles;
  box_.Write("a/a.mis", kMission);
  box_.Link("a/up", "");
  box_.Link("a/self", "a");
  box_.Link("b", "a");
  box_.Link("dangling.mis", "nothing");
  box_.Link("link.mis", "a/a.mis");
  MissionReader reader(files_, CodePage());
  EXPECT_EQ(ReadTree(reader), "a/a.mis|link.mis");
  // The same folder by two names.
  EXPECT_EQ(Read(reader, {{box_.Path("a"), box_.Path("b")}}).size(), std::string("a/a.mis").size());
}

TEST_F(ReadingMissions, StopsAtEveryMoment) {
  constexpr int kMissions = 200;
  for (int i = 0; i < kMissions; ++i) box_.Write("m" + std::to_string(i) + ".mis", kMission);
  for (int stopAt = 1; stopAt < 250; stopAt += 31) {
    SCOPED_TRACE(stopAt);
    std::atomic<int> steps = 0;
    // Not by an atomic's own wait: libraries without a call of the system for it lose a wake-up.
    std::promise<void> reached;
    files_.BeforeStep = [&](const FileStep&) {
      if (++steps == stopAt) reached.set_value();
    };
    MissionReader reader(files_, CodePage(), 2);
    ReadRequest request{{box_.Path()}};
    reader.Add(request);
    // A round of all missions takes 201 steps.
    if (stopAt <= kMissions + 1) reached.get_future().wait();
    reader.Stop();
    EXPECT_TRUE(reader.Progress().Idle);
    EXPECT_TRUE(reader.Take(1).empty());
    // What was under way does not get among what is asked for now.
    const std::uint32_t number = reader.Add({{}, {box_.Path("m7.mis")}});
    const auto facts = reader.Wait();
    ASSERT_EQ(facts.size(), 1U);
    EXPECT_EQ(facts[0].Request, number);
    reader.Add(request);
  }
}

TEST(TextFinder, FindsWhatStandsThereInAnyCase) {
  const std::string text = "abcabcd \xC4rger 1_Static\r\nEND";
  const std::pair<const char*, bool> cases[] = {
      {"abcd", true},    {"abca", true}, {"abcb", false},   {"\xE4rger", true},
      {"e4rger", false}, {"end", true},  {"d\r\ne", false}, {"c\r\nend", true},
      {"", true},        {"x", false},   {"static", true},  {"1_staticc", false},
      {"a", true},       {"dd", false}};
  for (const auto& [sought, isThere] : cases)
    EXPECT_EQ(TextFinder(CodePage(1252), sought).IsIn(text), isThere) << sought;
  EXPECT_FALSE(TextFinder(CodePage(), "long").IsIn("lon"));
}

TEST(Briefings, AreThoseOfTheMissionsOwnName) {
  struct Case {
    const char* Names;
    const char* Found;
  };
  const Case cases[] = {
      {"a.mis|a.properties|a_ru.properties", "a.properties"},
      {"a.mis|a_ru.properties|a_de.properties", "a_de.properties"},
      {"a.mis|A_RU.Properties", "A_RU.Properties"},
      {"a.mis|a_rus.properties|b.properties|_ru.properties", ""},
      {"a.MIS|A.PROPERTIES", "A.PROPERTIES"},
      {"a.mis|A.properties|A.mis", "|A.properties"},
      {"a.mis|b.mis|B.properties", "|B.properties"},
      {"x.mis.mis|x.mis.properties|x.properties", "x.mis.properties"},
  };
  for (const auto& [names, found] : cases) {
    SCOPED_TRACE(names);
    std::vector<FolderEntry> entries;
    for (const auto name : SplitAt(names, '|')) entries.push_back({std::string(name), false});
    entries.push_back({"folder.mis", true, false});
    std::vector<std::string> briefings;
    for (const auto& mission : ListedMissions(entries)) briefings.push_back(mission.Briefing);
    EXPECT_EQ(test::Joined(briefings), found);
  }
}

}  // namespace
}  // namespace rws
