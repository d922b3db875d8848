#include <algorithm>
#include <vector>

#include "fuzz/support.h"
#include "services/ini_file.h"
#include "services/text.h"
#include "tools/logic/skin_notes.h"

/** Reads and writes values of a file of sections, as the notes on skins are: up to the first line
    feed the section, up to the next one the new value, then the file. */

namespace {

using namespace rws;

constexpr std::string_view kNone = "\n", kKey = "Comments";

std::string_view TakeLine(std::string_view& rest) {
  const std::size_t end = std::min(rest.find('\n'), rest.size());
  const auto line = rest.substr(0, end);
  rest.remove_prefix(std::min(end + 1, rest.size()));
  return line;
}

std::vector<std::string_view> LinesOf(std::string_view bytes) {
  std::vector<std::string_view> lines;
  while (!bytes.empty()) {
    auto line = TakeLine(bytes);
    if (line.ends_with('\r')) line.remove_suffix(1);
    lines.push_back(line);
  }
  return lines;
}

/** All lines but those of the key are there, in their order. */
void RequireOthersStay(std::string_view before, std::string_view after) {
  const auto lines = LinesOf(after);
  auto next = lines.begin();
  for (const auto line : LinesOf(before)) {
    if (EqualNoCase(Trim(line.substr(0, line.find('='))), kKey)) continue;
    next = std::find(next, lines.end(), line);
    fuzz::Require(next != lines.end(), "All other lines stay.");
    ++next;
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string_view rest = fuzz::TextOf(data, size);
  const std::string section(TakeLine(rest)), value(TakeLine(rest));
  IniValue(rest, section, kKey, kNone);
  // What a box of the form can hold, and a name that a file has.
  const bool isPlain = value.find_first_of("\r\n") == value.npos && value.size() <= kLongestNote &&
                       Trim(value) == value && Trim(section) == section && !section.empty() &&
                       section.find('\r') == section.npos;
  if (!isPlain) return 0;
  const std::string written = WithIniValue(rest, section, kKey, value);
  const std::string read = IniValue(written, section, kKey, kNone);
  fuzz::RequireSame(read, value.empty() ? "Empty" : value, "A value is read as it was written.");
  fuzz::RequireSame(WithIniValue(written, section, kKey, value), written,
                    "A value that stands there changes nothing.");
  RequireOthersStay(rest, written);
  return 0;
}
