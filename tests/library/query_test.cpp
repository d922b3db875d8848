#include "library/query.h"

#include <gtest/gtest.h>

#include "library/completion.h"
#include "library/filter.h"
#include "services/paths.h"
#include "tests/support/doubles.h"

namespace rws {
namespace {

/** Five missions. "d" is not read yet. */
class Queries : public testing::Test {
 protected:
  Queries() {
    Put("Alpha.mis",
        "[MAIN]|MAP Crimea/l.ini|TIME 5.5|CloudType 0|army 1|player JG5200|[Wing]|"
        "[JG5200]|Planes 4|Class air.BF_109G6|[JG5201]|Planes 2|Class air.I_16",
        "Dawn \xC4rger", MissionKind::Single);
    Put("beta one.mis",
        "[MAIN]|MAP Kuban/l.ini|TIME 23.0|CloudType 5|army 2|[Wing]|"
        "[1IAP00]|Planes 1|Class air.I_16",
        "", MissionKind::Coop);
    Put("\xD0\x91.mis", "[MAIN]|TIME 12:30", "two words", MissionKind::Dogfight);
    Put("c.mis", "", "", MissionKind::Unknown);
    index_.AddUnread("/m/d.mis");
  }

  static IndexNames Names() {
    const CodePage page;
    IndexNames names{ShownNames(page), ShownNames(page), ShownNames(page)};
    names.Maps.Add("CRIMEA/l.ini", "Schwarzes Meer");
    names.Aircraft.Add("bf_109g6", "Bf 109 G-6 1943");
    names.Squadrons.Add("JG52", "Jagdgeschwader 52");
    return names;
  }

  void Put(const std::string& name, const std::string& text, const std::string& briefing,
           MissionKind kind) {
    MissionFacts facts;
    FactsReader().Read(test::CrlfText(text), facts);
    facts.Folder = "/m";
    facts.FileName = name;
    facts.BriefingName = briefing;
    facts.Kind = kind;
    index_.Put(facts);
  }

  /** The first letters of the missions for which a query holds; "!at,length" for a fault. */
  std::string Found(std::string_view line) {
    const Query query = ParseQuery(line);
    if (query.Fault)
      return "!" + std::to_string(query.Fault->At) + "," + std::to_string(query.Fault->Length);
    Filter filter(query, index_);
    filter.Unsaved = {1, 4};
    // Texts are known for the first two; the first one has the first of them.
    filter.SetTexts(0, 1);
    filter.SetTexts(1, 0);
    std::string found;
    for (std::size_t row = 0; row < index_.size(); ++row)
      if (filter.Matches(row)) found += "abxcd"[row];
    return query.Unfinished ? found + "?" : found;
  }

  MissionIndex index_{Names(), CodePage()};
};

TEST_F(Queries, FindMissions) {
  const std::pair<const char*, const char*> cases[] = {
      {"", "abxcd"},
      {"   ", "abxcd"},
      {"alp", "a"},
      {"MIS", "abxcd"},
      {"mis -alpha -beta", "xcd"},
      {"dawn \xC3\xA4RGER", "a"},
      {"\xD0\xB1", "x"},
      {"-\xD0\xB1", "abcd"},
      {"\"beta one\"", "b"},
      {"two words", "x"},
      {"\"words two\"", ""},
      {"-", "abxcd?"},
      {"map:crimea", "a"},
      {"MAP:\"schwarzes meer\"", "a"},
      {"map:SchwarzesMeer", "a"},
      {"-map:crimea", "bxc"},
      {"map:", "abxcd?"},
      {"map:\xD0\x91", ""},
      {"aircraft:\"bf 109\"", "a"},
      {"aircraft:BF_109G", "a"},
      {"aircraft:g-6", "a"},
      {"aircraft:i-16", "ab"},
      {"aircraft:i-19", ""},
      {"aircraft:i-16 -aircraft:109", "b"},
      {"squadron:jg52", "a"},
      {"squadron:\"geschwader 52\"", "a"},
      {"squadron:1iap", "b"},
      {"player:yes", "a"},
      {"player:no", "bxc"},
      {"player:\"Bf 109\"", "a"},
      {"player:i-16", ""},
      {"army:blue", "b"},
      {"army:r", "axc"},
      {"kind:co", "b"},
      {"kind:s -player:no", "a"},
      {"-kind:single", "bxc"},
      {"time:5-8", "a"},
      {"time:5", "a"},
      {"time:6", ""},
      {"time:5:30", "a"},
      {"time:5:29", ""},
      {"time:5.5-23", "ab"},
      {"time:>5:30", "b"},
      {"time:>=5:30", "ab"},
      {"time:<23", "a"},
      {"time:22-6", "ab"},
      {"-time:5", "bxc"},
      {"weather:rain", "b"},
      {"weather:snow", "b"},
      {"weather:Clear", "a"},
      {"flights:2", "a"},
      {"flights:>1", "a"},
      {"flights:1-2", "ab"},
      {"flights:<=0", "xc"},
      {"flights:>", "abxcd?"},
      {"time:5-", "abxcd?"},
      {"flights:1-", "abxcd?"},
      {"text:x", "a"},
      {"-text:x", "b"},
      {"text:x text:y", ""},
      {"text:x -text:y", "a"},
      {"is:unsaved", "bd"},
      {"-is:uns",
       "axc"
       ""},
      {"is:broken", "xc"},
      {"-is:broken", "ab"},
      {"\"a:b\"", ""},
      {"al\"pha.m\"is", "a"},
      // Faults: nothing is hidden, the place is told.
      {"alpha \"beta", "!6,5"},
      {"map:\"cri", "!0,8"},
      {"x  -foo:bar", "!4,4"},
      {"12:30", "!0,3"},
      {":x", "!0,1"},
      {"army:green", "!5,5"},
      {"kind:x alpha", "!5,1"},
      {"is:x", "!3,1"},
      {"weather:fog", "!8,3"},
      {"time:25x", "!5,3"},
      {"time:5:60", "!5,4"},
      {"time:1--2", "!5,4"},
      {"flights:9-5", "!8,3"},
      {"flights:=>5", "!8,3"},
      {"flights:-5", "!8,2"},
  };
  for (const auto& [line, found] : cases) EXPECT_EQ(Found(line), found) << line;
}

TEST_F(Queries, TextsAreAskedForOnlyWhereTheyDecide) {
  Filter filter(ParseQuery("text:\"A B\" map:crimea -text:\xC3\x84"), index_);
  EXPECT_EQ(filter.Texts(), (std::vector<std::string>{"a b", "\xE4"}));
  EXPECT_TRUE(filter.MayMatch(0));
  EXPECT_FALSE(filter.MayMatch(1));
  filter.SetTexts(0, 3);
  EXPECT_FALSE(filter.MayMatch(0));
  std::string many;
  for (int i = 0; i < 32; ++i) many += "text:a ";
  EXPECT_FALSE(ParseQuery(many).Fault);
  EXPECT_TRUE(ParseQuery(many + "text:a").Fault);
}

TEST_F(Queries, AreCompletedFromTheIndex) {
  // "|" is the cursor; what would stand there afterwards.
  const std::pair<const char*, const char*> cases[] = {
      {"ma|", "map:"},
      {"x -S|", "x -squadron:"},
      {"map:|", "map:Kuban/l.ini,map:\"Schwarzes Meer\""},
      {"map:cr| x", "map:\"Schwarzes Meer\" x"},
      {"aircraft:109|", "aircraft:\"Bf 109 G-6 1943\""},
      {"kind:co|", "kind:coop"},
      {"-is:|", "-is:unsaved,-is:broken"},
      {"player:n|", "player:no"},
      {"text:|", ""},
      {"foo:|", ""},
  };
  for (const auto& [typed, expected] : cases) {
    SCOPED_TRACE(typed);
    std::string line = typed;
    const std::size_t cursor = line.find('|');
    line.erase(cursor, 1);
    std::vector<std::string> lines;
    for (const auto& offer : Complete(line, cursor, index_))
      lines.push_back(std::string(line).replace(offer.At, offer.Length, offer.Text));
    std::string joined;
    for (const auto& text : lines) joined += (joined.empty() ? "" : ",") + text;
    EXPECT_EQ(joined, expected);
  }
  EXPECT_EQ(Complete("", 0, index_).size(), QueryKeys().size());
  EXPECT_EQ(QuotedValue("\"-X\""), "\"-X\"");
}

TEST_F(Queries, FollowAMissionThatChangesOrGoes) {
  Filter filter(ParseQuery("aircraft:yak"), index_);
  EXPECT_FALSE(filter.Matches(1));
  Put("beta one.mis", "[a00]|Planes 1|Class air.YAK_1", "", MissionKind::Unknown);
  EXPECT_EQ(index_.Missions(), 5U);
  EXPECT_TRUE(filter.Matches(1));
  index_.Remove("/m/beta one.mis");
  EXPECT_FALSE(filter.Matches(1));
  EXPECT_EQ(index_.Find("/m/beta one.mis"), MissionIndex::npos);
  EXPECT_EQ(index_.AddUnread("/m/e.mis"), 5U) << "another mission has another row";
  EXPECT_EQ(index_.Path(index_.Find("/m/e.mis")), BuildPath("/m", "e.mis"));
  EXPECT_FALSE(filter.Matches(1));
}

}  // namespace
}  // namespace rws
