#include "mission/kept_text.h"

#include <algorithm>

#include "services/text.h"

namespace rws {

namespace {

constexpr bool IsBlank(char c) { return c == ' ' || c == '\t'; }

bool BeginsComment(std::string_view rest) {
  return rest[0] == '#' || rest[0] == ';' || rest.starts_with("//");
}

/** The line up to a comment or a control character, where the game stops reading. */
std::string_view ReadPart(std::string_view line) {
  bool behindBlank = true;
  for (std::size_t i = 0; i < line.size(); ++i) {
    const auto c = static_cast<unsigned char>(line[i]);
    if (c < ' ' && c != '\t') return line.substr(0, i);
    if (behindBlank && BeginsComment(line.substr(i))) return line.substr(0, i);
    behindBlank = IsBlank(line[i]);
  }
  return line;
}

std::size_t EndOfWord(std::string_view line, std::size_t from) {
  while (from < line.size() && !IsBlank(line[from])) ++from;
  return from;
}

std::string_view TrimBlanks(std::string_view text) {
  while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
  return text;
}

/** Most lines are told by a look at their beginning. */
bool HasKey(std::string_view line, std::string_view key) {
  std::size_t begin = 0;
  while (begin < line.size() && IsBlank(line[begin])) ++begin;
  return EqualNoCase(line.substr(begin, key.size()), key) && EqualNoCase(KeyOf(line).Key, key);
}

}  // namespace

void KeptWordsInto(std::vector<KeptWord>& words, std::string_view line) {
  words.clear();
  line = ReadPart(line);
  for (std::size_t i = 0; i < line.size();) {
    if (IsBlank(line[i])) {
      ++i;
      continue;
    }
    const std::size_t end = EndOfWord(line, i);
    words.push_back({line.substr(i, end - i), i});
    i = end;
  }
}

std::vector<KeptWord> KeptWords(std::string_view line) {
  std::vector<KeptWord> words;
  KeptWordsInto(words, line);
  return words;
}

KeptKey KeyOf(std::string_view line) {
  const std::string_view part = ReadPart(line);
  std::size_t begin = 0;
  while (begin < part.size() && IsBlank(part[begin])) ++begin;
  const std::size_t end = EndOfWord(part, begin);
  KeptKey key;
  key.Key = part.substr(begin, end - begin);
  key.Value = TrimBlanks(part.substr(end));
  key.ValueAt = key.Value.empty() ? end : static_cast<std::size_t>(key.Value.data() - line.data());
  return key;
}

std::string_view HeaderName(std::string_view line) {
  line = TrimBlanks(line);
  if (line.size() < 3 || line.front() != '[' || line.back() != ']') return {};
  return line.substr(1, line.size() - 2);
}

std::string LowerKey(std::string_view text) {
  std::string lower(text);
  std::transform(lower.begin(), lower.end(), lower.begin(), LowerAscii);
  return lower;
}

KeptText::KeptText(const LineArray& lines) : lines_(&lines) {
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const auto name = HeaderName(lines[i]);
    if (name.empty()) continue;
    if (!sections_.empty()) sections_.back().Last = i;
    byName_.try_emplace(LowerKey(name), sections_.size());
    sections_.push_back({name, i, i + 1, lines.size()});
  }
}

const KeptSection* KeptText::Find(std::string_view name) const {
  const auto found = byName_.find(LowerKey(name));
  return found == byName_.end() ? nullptr : &sections_[found->second];
}

std::size_t KeptText::LineOf(const KeptSection& section, std::string_view key) const {
  for (std::size_t i = section.First; i < section.Last; ++i)
    if (HasKey((*lines_)[i], key)) return i;
  return npos;
}

std::string_view KeptText::ValueOf(const KeptSection& section, std::string_view key) const {
  const std::size_t line = LineOf(section, key);
  return line == npos ? std::string_view() : KeyOf((*lines_)[line]).Value;
}

}  // namespace rws
