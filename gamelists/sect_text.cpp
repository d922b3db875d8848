#include "gamelists/sect_text.h"

#include <algorithm>
#include <optional>

#include "services/text.h"

namespace rws {

namespace {

bool IsBlank(char c) { return c == ' ' || c == '\t'; }

bool IsControl(char c) { return static_cast<unsigned char>(c) < ' ' && c != '\t'; }

std::string_view WithoutBlanks(std::string_view text) {
  while (!text.empty() && static_cast<unsigned char>(text.front()) <= ' ') text.remove_prefix(1);
  while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
  return text;
}

/** What is left of a line in front of its comment. A single "/" is a part of names. */
std::string_view WithoutComment(std::string_view line) {
  line = WithoutBlanks(line);
  for (std::size_t i = 0; i < line.size(); ++i) {
    const char c = line[i];
    const bool begins = c == '#' || c == ';' || IsControl(c) ||
                        (c == '/' && i + 1 < line.size() && line[i + 1] == '/');
    if (begins) return WithoutBlanks(line.substr(0, i));
  }
  return line;
}

}  // namespace

std::vector<SectLine> SectLines(std::string_view bytes) {
  std::vector<SectLine> lines;
  std::optional<std::string_view> section;
  std::size_t sections = 0, number = 0;
  while (!bytes.empty()) {
    const std::size_t end = std::min(bytes.find('\n'), bytes.size());
    const auto line = WithoutComment(bytes.substr(0, end));
    bytes.remove_prefix(std::min(end + 1, bytes.size()));
    ++number;
    if (line.empty()) continue;
    if (line.front() == '[' && line.back() == ']') {
      if (line.size() == 2) continue;
      section = line.substr(1, line.size() - 2);
      ++sections;
    } else if (section) {
      const std::size_t key = std::min(line.find_first_of(" \t"), line.size());
      lines.push_back(
          {*section, line.substr(0, key), WithoutBlanks(line.substr(key)), sections, number});
    }
  }
  return lines;
}

std::vector<SectLine> FirstSection(const std::vector<SectLine>& lines, std::string_view name) {
  std::vector<SectLine> found;
  for (const auto& line : lines)
    if (EqualNoCase(line.Section, name) &&
        (found.empty() || found[0].SectionNumber == line.SectionNumber))
      found.push_back(line);
  return found;
}

std::vector<std::string_view> SectWords(std::string_view value) {
  std::vector<std::string_view> words;
  while (!(value = WithoutBlanks(value)).empty()) {
    const std::size_t end = std::min(value.find_first_of(" \t"), value.size());
    words.push_back(value.substr(0, end));
    value.remove_prefix(end);
  }
  return words;
}

}  // namespace rws
