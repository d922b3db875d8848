#include "services/text.h"

#include <algorithm>
#include <cstring>

namespace rws {

std::string_view Trim(std::string_view text) {
  const auto first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

void SplitInto(std::vector<std::string_view>& parts, std::string_view text, char separator) {
  parts.clear();
  std::size_t start = 0;
  for (std::size_t end; (end = text.find(separator, start)) != text.npos; start = end + 1)
    parts.push_back(text.substr(start, end - start));
  parts.push_back(text.substr(start));
}

std::vector<std::string_view> SplitAt(std::string_view text, char separator) {
  std::vector<std::string_view> parts;
  SplitInto(parts, text, separator);
  return parts;
}

std::string Replace(std::string_view text, std::string_view find, std::string_view with) {
  if (find.empty()) return std::string(text);
  std::string result;
  std::size_t start = 0;
  for (std::size_t hit; (hit = text.find(find, start)) != text.npos; start = hit + find.size()) {
    result.append(text.substr(start, hit - start));
    result.append(with);
  }
  return result.append(text.substr(start));
}

bool Contains(std::string_view text, std::string_view part) { return text.find(part) != text.npos; }

char LowerAscii(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; }

bool EqualNoCase(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return LowerAscii(x) == LowerAscii(y); });
}

std::size_t FindNoCase(std::string_view text, std::string_view lowerPart, std::size_t from) {
  if (lowerPart.empty()) return from <= text.size() ? from : text.npos;
  const char lower = lowerPart[0];
  const char upper = lower >= 'a' && lower <= 'z' ? static_cast<char>(lower - 32) : lower;
  // Two searches of the system's own speed, one for each case of the first letter.
  const auto next = [&](char c, std::size_t start) {
    return start < text.size() ? std::min(text.find(c, start), text.size()) : text.size();
  };
  std::size_t lowerHit = next(lower, from),
              upperHit = lower == upper ? lowerHit : next(upper, from);
  while (true) {
    const std::size_t hit = std::min(lowerHit, upperHit);
    if (hit + lowerPart.size() > text.size()) return text.npos;
    if (EqualNoCase(text.substr(hit, lowerPart.size()), lowerPart)) return hit;
    if (lowerHit == hit) lowerHit = next(lower, hit + 1);
    if (upperHit == hit) upperHit = lower == upper ? lowerHit : next(upper, hit + 1);
  }
}

bool ContainsNoCase(std::string_view text, std::string_view lowerPart) {
  return FindNoCase(text, lowerPart, 0) != text.npos;
}

namespace {

/** Tests one character against a "[list]" that begins at `p`; moves `p` behind the list. */
bool MatchList(char c, std::string_view pattern, std::size_t& p) {
  const std::size_t end = pattern.find(']', p + 1);
  if (end == pattern.npos) return pattern[p++] == c;
  std::string_view list = pattern.substr(p + 1, end - p - 1);
  p = end + 1;
  const bool negated = !list.empty() && list[0] == '!';
  if (negated) list.remove_prefix(1);
  bool found = false;
  for (std::size_t i = 0; i < list.size(); ++i) {
    if (i + 2 < list.size() && list[i + 1] == '-') {
      found = found || (c >= list[i] && c <= list[i + 2]);
      i += 2;
    } else {
      found = found || c == list[i];
    }
  }
  return found != negated;
}

bool MatchOne(char c, std::string_view pattern, std::size_t& p) {
  switch (pattern[p]) {
    case '?':
      ++p;
      return true;
    case '#':
      ++p;
      return c >= '0' && c <= '9';
    case '[':
      return MatchList(c, pattern, p);
    default:
      return pattern[p++] == c;
  }
}

/** Where the part of a pattern behind a "*" may begin: at its first character, when that is a plain
    one. */
std::size_t NextStart(std::string_view text, std::size_t from, char first) {
  const bool isPlain = first != '*' && first != '?' && first != '#' && first != '[';
  return isPlain ? std::min(text.find(first, from), text.size()) : from;
}

}  // namespace

bool Like(std::string_view text, std::string_view pattern) {
  // "*word*", by far the most frequent form, is a plain search.
  if (pattern.size() > 2 && pattern.front() == '*' && pattern.back() == '*') {
    const auto word = pattern.substr(1, pattern.size() - 2);
    if (word.find_first_of("*?#[") == word.npos) return Contains(text, word);
  }
  std::size_t t = 0, p = 0;
  std::size_t starPattern = pattern.npos, starText = 0;
  while (t < text.size()) {
    if (p < pattern.size() && pattern[p] == '*') {
      starPattern = ++p;
      starText = t;
      if (p == pattern.size()) return true;
      continue;
    }
    std::size_t next = p;
    if (p < pattern.size() && MatchOne(text[t], pattern, next)) {
      p = next;
      ++t;
    } else if (starPattern != pattern.npos) {
      p = starPattern;
      t = starText = NextStart(text, starText + 1, pattern[p]);
    } else {
      return false;
    }
  }
  while (p < pattern.size() && pattern[p] == '*') ++p;
  return p == pattern.size();
}

std::string RightJust(std::string_view text, std::string_view suffix, std::size_t width) {
  const std::size_t length = text.size() + suffix.size();
  std::string result(text);
  if (length < width) result.append(width - length, ' ');
  return result.append(suffix);
}

}  // namespace rws
