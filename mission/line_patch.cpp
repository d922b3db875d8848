#include "mission/line_patch.h"

#include <utility>

#include "services/faults.h"

namespace rws {

namespace {

/** Two lines where one was meant would be what nobody has edited. */
void RequireOneLine(const std::string& line) {
  if (line.find_first_of("\r\n") != line.npos)
    throw Fault(fault::InvalidCall, "A value cannot hold the end of a line.");
}

bool EndsLine(const std::string& text) {
  return text.empty() || text.back() == '\n' || text.back() == '\r';
}

/** A blank line has nothing but its end, so that it stays. */
void CutLastEnd(std::string& text) {
  std::size_t size = text.size();
  if (size > 0 && text[size - 1] == '\n') --size;
  if (size > 0 && text[size - 1] == '\r') --size;
  if (size > 0 && text[size - 1] != '\n' && text[size - 1] != '\r') text.resize(size);
}

}  // namespace

std::optional<std::string_view> LinePatch::Line(std::size_t index) const {
  const auto change = changes_.find(index);
  if (change == changes_.end()) return (*lines_)[index];
  if (change->second.Removed) return {};
  return change->second.Text ? std::string_view(*change->second.Text) : (*lines_)[index];
}

void LinePatch::Replace(std::size_t index, std::string line) {
  RequireOneLine(line);
  if (Line(index) != line) changes_[index].Text = std::move(line);
}

void LinePatch::Remove(std::size_t index) { changes_[index].Removed = true; }

void LinePatch::RemoveRange(std::size_t first, std::size_t last) {
  for (std::size_t i = first; i < last; ++i) Remove(i);
}

void LinePatch::Insert(std::size_t before, std::string line) {
  RequireOneLine(line);
  changes_[before].Before.push_back(std::move(line));
}

LineArray LinePatch::Result() const {
  const LineArray& lines = *lines_;
  // New lines end as the text's first line does.
  const std::string end(lines.empty() || lines.EndOf(0).empty() ? "\r\n" : lines.EndOf(0));
  std::string text;
  text.reserve(lines.FileText().size() + 64 * changes_.size());
  const auto add = [&](std::string_view line, std::string_view ownEnd) {
    if (!EndsLine(text)) text += end;
    const std::string_view first = line.empty() ? ownEnd : line;
    // Two ends of two lines must not become one.
    if (text.ends_with('\r') && first.starts_with('\n')) text += '\n';
    text.append(line).append(ownEnd);
  };
  std::size_t kept = 0;
  const auto keepUpTo = [&](std::size_t index) {
    if (kept >= index) return;
    const std::size_t first = lines.Start(kept), last = lines.End(index - 1);
    add(std::string_view(lines.FileText()).substr(first, last - first), lines.EndOf(index - 1));
    kept = index;
  };
  for (const auto& [index, change] : changes_) {
    keepUpTo(index);
    for (const auto& line : change.Before) add(line, end);
    if (index >= lines.size()) continue;
    kept = index + 1;
    if (!change.Removed)
      add(change.Text ? std::string_view(*change.Text) : lines[index], lines.EndOf(index));
  }
  keepUpTo(lines.size());
  // A file without an end of its last line stays one.
  const bool open = !lines.empty() && lines.EndOf(lines.size() - 1).empty();
  if (open) CutLastEnd(text);
  return LineArray::FromFileAsIs(std::move(text));
}

}  // namespace rws
