#include "tools/logic/change_rows.h"

#include <algorithm>

#include "mission/line_diff.h"
#include "services/text.h"

namespace rws {

namespace {

constexpr char kBlanks[] = " \t";

/** The words of a line, or with `blanks` also what stands between them. */
std::vector<std::string_view> WordsIn(std::string_view line, bool blanks) {
  std::vector<std::string_view> words;
  for (std::size_t i = 0; i < line.size();) {
    const bool isBlank = line.find_first_of(kBlanks, i) == i;
    const std::size_t end = std::min(
        isBlank ? line.find_first_not_of(kBlanks, i) : line.find_first_of(kBlanks, i), line.size());
    if (!isBlank || blanks) words.push_back(line.substr(i, end - i));
    i = end;
  }
  return words;
}

void AddSpan(std::vector<ByteSpan>& spans, std::string_view line,
             const std::vector<std::string_view>& words, const LineSpan& differ) {
  if (differ.Count == 0) return;
  const std::string_view last = words[differ.First + differ.Count - 1];
  const auto first = static_cast<std::size_t>(words[differ.First].data() - line.data());
  const auto end = static_cast<std::size_t>(last.data() - line.data()) + last.size();
  spans.push_back({first, end - first});
}

ChangedWords Compare(std::string_view before, std::string_view after, bool blanks) {
  const auto oldWords = WordsIn(before, blanks), newWords = WordsIn(after, blanks);
  ChangedWords changed;
  bool common = false;
  for (const auto& hunk : DiffLines(oldWords, newWords)) {
    common = common || hunk.Kind == HunkKind::Same;
    if (hunk.Kind == HunkKind::Same) continue;
    AddSpan(changed.Old, before, oldWords, hunk.Old);
    AddSpan(changed.New, after, newWords, hunk.New);
  }
  return common ? changed : ChangedWords();
}

}  // namespace

ChangedWords FindChangedWords(std::string_view before, std::string_view after) {
  const bool sameWords = WordsIn(before, false) == WordsIn(after, false);
  return Compare(before, after, sameWords);
}

std::string WordsOf(std::string_view line, const std::vector<ByteSpan>& spans) {
  std::string words;
  for (const auto& span : spans) {
    const auto text = Trim(line.substr(std::min(span.First, line.size()), span.Count));
    if (!text.empty()) words.append(words.empty() ? "" : ", ").append(text);
  }
  return words;
}

ChangeLabels::ChangeLabels(const std::string& file, const std::string& kept) {
  if (file == kept) return;
  const auto before = SplitLines(file), after = SplitLines(kept);
  for (const auto& row : MakeCompareRows(DiffLines(before, after))) {
    if (row.Kind == HunkKind::Same) continue;
    const ChangedLine line{row.Old, row.New};
    if (row.Old != CompareRow::kNoLine) byOld_.emplace(row.Old, line);
    const auto text = row.New == CompareRow::kNoLine ? "" : Trim(after[row.New]);
    if (!text.empty()) byText_.emplace(text, line);
  }
}

std::optional<ChangedLine> ChangeLabels::EditAt(const CompareRow& row,
                                                std::string_view line) const {
  if (row.Kind == HunkKind::Same) return {};
  if (const auto found = byOld_.find(row.Old); found != byOld_.end()) return found->second;
  if (row.New == CompareRow::kNoLine) return {};
  const auto found = byText_.find(std::string(Trim(line)));
  if (found == byText_.end()) return {};
  return found->second;
}

ChangeLabel ChangeLabels::LabelOf(const CompareRow& row, std::string_view line) const {
  if (row.Kind == HunkKind::Same) return ChangeLabel::None;
  return EditAt(row, line) ? ChangeLabel::Edit : ChangeLabel::Rewritten;
}

std::string ChangeCountText(const PendingLines& pending, bool keeps) {
  const std::size_t edited =
      pending.KeptFault.empty() ? ChangedLines(pending.File, pending.Kept) : 0;
  const std::size_t all = keeps ? edited : ChangedLines(pending.File, pending.Anew);
  return PendingText(edited, all > edited ? all - edited : 0);
}

}  // namespace rws
