#include "services/update_check.h"

#include <gtest/gtest.h>

#include "services/version.h"
#include "tests/support/doubles.h"

namespace rws::test {
namespace {

TEST(UpdateCheck, ComparesAsTextAndTellsWhatItFound) {
  ASSERT_EQ(VersionText(), "2.0.0");
  struct Row {
    const char* What;
    std::optional<std::string> Body;
    std::string Box;
    rws::Icon Icon;
    Answer Chosen;
    std::string Opened;
  };
  const std::string offer = " is available at https://host/rws/.\nWould you like to go there now?";
  const Row rows[] = {
      {"none", {}, "Unable to make connection.", Icon::Information, Answer::Ok, ""},
      {"equal", "2.0.0 \r\n \n", "Your version: 2.0.0\n\nCurrent version: 2.0.0", Icon::Information,
       Answer::Ok, ""},
      {"newer", "2.0.1\n", "Version 2.0.1" + offer, Icon::Question, Answer::Yes,
       "open https://host/rws/"},
      {"newer, not now", "2.0.0.1", "Version 2.0.0.1" + offer, Icon::Question, Answer::No, ""},
      {"older", "1.9.9", "", Icon::None, Answer::Ok, ""},
      {"sorts before", "10.0.0", "", Icon::None, Answer::Ok, ""},
      {"empty", "\r\n", "", Icon::None, Answer::Ok, ""},
      {"no version", "\xE9t\xE9", "Version \xC3\xA9t\xC3\xA9" + offer, Icon::Question, Answer::No,
       ""},
      {"no site", "2.0.1",
       "Unable to make connection.\n\nThis build knows no place to ask for updates.",
       Icon::Information, Answer::Ok, ""}};
  for (const Row& row : rows) {
    SCOPED_TRACE(row.What);
    World world;
    if (row.What != std::string("no site")) world.Services.UpdateSite = "https://host";
    world.Services.System.Fetch = [&](const std::string& url) {
      EXPECT_EQ(url, "https://host/rws/version.txt");
      return row.Body;
    };
    if (!row.Box.empty()) world.Script.Expect(row.Box, row.Chosen);
    TellVersion(world.Services, GetVersionText(world.Services));
    ASSERT_EQ(world.Script.Boxes.size(), row.Box.empty() ? 0u : 1u);
    EXPECT_EQ(Joined(world.ShellCalls), row.Opened);
    if (row.Box.empty()) continue;
    EXPECT_EQ(world.Script.Boxes[0].Text, row.Box);
    EXPECT_EQ(world.Script.Boxes[0].Icon, row.Icon);
    EXPECT_EQ(world.Script.Boxes[0].Title, "RWS Edit");
  }
}

}  // namespace
}  // namespace rws::test
