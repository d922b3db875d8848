#include "tools/logic/change_rows.h"

#include <gtest/gtest.h>

#include "mission/line_diff.h"
#include "tests/support/doubles.h"
#include "tests/support/session_desk.h"
#include "tools/logic/taken_back.h"

namespace rws::test {
namespace {

/** The line with its spans in angle brackets. */
std::string Marked(std::string line, std::vector<ByteSpan> spans) {
  for (auto span = spans.rbegin(); span != spans.rend(); ++span)
    line.insert(span->First + span->Count, ">").insert(span->First, "<");
  return line;
}

TEST(ChangedWords, AreMarkedWordByWord) {
  const struct {
    const char *Before, *After, *Old, *New;
  } rows[] = {
      {"  Fuel 100", "  Fuel 50", "  Fuel <100>", "  Fuel <50>"},
      {"GATTACK 1 2 300 &0", "GATTACK 1 2 450 &1", "GATTACK 1 2 <300 &0>", "GATTACK 1 2 <450 &1>"},
      {"a 1 b 2", "a 3 b 4", "a <1> b <2>", "a <3> b <4>"},
      {"a b", "a b c d", "a b", "a b <c d>"},
      {"a b c", "a c", "a <b> c", "a c"},
      {"alpha", "beta", "alpha", "beta"},
      {"  Planes 2", "\tPlanes 2 ", "<  >Planes 2", "<\t>Planes 2< >"},
      {"", "x", "", "x"},
  };
  for (const auto& row : rows) {
    const auto words = FindChangedWords(row.Before, row.After);
    EXPECT_EQ(Marked(row.Before, words.Old), row.Old);
    EXPECT_EQ(Marked(row.After, words.New), row.New);
  }
  EXPECT_EQ(WordsOf("a 1 b 2", {{2, 1}, {6, 1}}), "1, 2");
}

TEST(ChangeLabels, TellEditsFromWhatIsRewritten) {
  // Old, made of it by the edits alone, and anew; then a label for each row that differs.
  const struct {
    const char *File, *Kept, *Anew, *Labels;
  } rows[] = {
      {"a|b|c|", "a|B|c|", "a|B|c|", "e"},          {"a|b|c|", "a|b|c|", "a|B|", "rr"},
      {"a|b|c|", "a|b2|c|", "A|b3|c|", "re"},       {"a|b|c|", "a|c|", "a|C|", "er"},
      {"a|b|c|", "a|b|x|c|", "a|b| x |y|c|", "er"}, {"a|b|", "a|b||", "a||b||", "rr"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Anew);
    const std::string file = CrlfText(row.File), anew = CrlfText(row.Anew);
    const ChangeLabels labels(file, CrlfText(row.Kept));
    const auto lines = SplitLines(anew);
    std::string shown;
    for (const auto& line : MakeCompareRows(DiffLines(SplitLines(file), lines))) {
      const auto label =
          labels.LabelOf(line, line.New == CompareRow::kNoLine ? "" : lines[line.New]);
      if (label != ChangeLabel::None) shown += label == ChangeLabel::Edit ? 'e' : 'r';
    }
    EXPECT_EQ(shown, row.Labels);
  }
}

TEST(TakenBack, IsAStepThatUndoTakesBack) {
  SessionDesk desk({"a"});
  desk.Run("fuel1=50 close weather=3");
  Session& session = desk.World;
  const auto pending = LookAhead(session.Doc, session.Services, session.Doc.Missions[0], {},
                                 session.Doc.Missions[0], PendingPart::Anew);
  const std::string before = desk.State("a"), text = pending.File.FileText();
  const auto lines = SplitLines(text);
  std::size_t fuels = 0, line = 0;
  while (fuels < 2) fuels += lines[line++].find("Fuel") != std::string_view::npos;
  EXPECT_FALSE(TakeChangeBack(session, 0, {0, 0})) << "no change of the user";
  EXPECT_EQ(desk.State("a"), before);
  EXPECT_EQ(TakeChangeBack(session, 0, {line - 1, line - 1}), 0U);
  EXPECT_EQ(desk.Steps(), "Fuel of r0101|Weather of a|Change taken back in a");
  EXPECT_EQ(desk.State("a"), "100,100,100/3^100*!");
  desk.Run("undo");
  EXPECT_EQ(desk.State("a"), before);
  desk.Run("redo undo undo");
  // What the file lacks goes on lighting Update, whatever is taken back.
  Mission more = session.Doc.Missions[0];
  more.Flights.push_back(more.Flights[0]);
  more.Flights.back().Name = "r0103";
  std::swap(more, session.Doc.Missions[0]);
  EXPECT_EQ(TakeChangeBack(session, 0, {line - 1, line}), 0U);
  EXPECT_TRUE(session.Doc.Missions[0].Modified);
  session.Doc.Missions[0] = more;
  session.Doc.Missions[0].NotWritten = true;
  EXPECT_EQ(TakeChangeBack(session, 0, {line - 1, line - 1}), 0U);
  EXPECT_FALSE(session.Doc.Missions[0].Modified);
  EXPECT_FALSE(session.Doc.Missions[0].NotWritten);
  EXPECT_EQ(desk.State("a").find('*'), std::string::npos) << "nothing is left to write";
}

}  // namespace
}  // namespace rws::test
