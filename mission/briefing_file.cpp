#include "mission/briefing_file.h"

#include <algorithm>

#include "mission/mission_file.h"
#include "services/code_page.h"
#include "services/faults.h"
#include "services/paths.h"
#include "services/text.h"

namespace rws {

namespace {

constexpr std::string_view kName = "Name ", kShort = "Short ", kDescription = "Description ";
constexpr std::string_view kBreak = "\r\n", kWrittenBreak = "\\n";
/** No briefing comes near it; a file beyond it is something else. */
constexpr std::uint64_t kMostBytes = 64 * 1024 * 1024;

/** Cuts the first line off `rest`. */
std::string_view TakeLine(std::string_view& rest) {
  const std::size_t end = std::min(rest.find_first_of(kBreak), rest.size());
  const auto line = rest.substr(0, end);
  const auto ends = rest.substr(end);
  rest.remove_prefix(end + std::min<std::size_t>(ends.size(), ends.starts_with(kBreak) ? 2 : 1));
  return line;
}

}  // namespace

Briefing ParseBriefing(std::string_view bytes) {
  Briefing briefing;
  std::string* section = nullptr;
  while (!bytes.empty()) {
    const auto line = TakeLine(bytes);
    if (line.starts_with(kName)) section = &briefing.Name;
    if (line.starts_with(kShort)) section = &briefing.Short;
    if (line.starts_with(kDescription)) section = &briefing.Description;
    if (section) section->append(line);
  }
  // The keys go wherever they stand, also out of the user's own sentences; that is deliberate.
  briefing.Name = Replace(briefing.Name, kName, "");
  briefing.Short = Replace(Replace(briefing.Short, kShort, ""), kWrittenBreak, kBreak);
  briefing.Description =
      Replace(Replace(briefing.Description, kDescription, ""), kWrittenBreak, kBreak);
  return briefing;
}

std::string BriefingText(const Briefing& briefing) {
  std::string text;
  // The breaks of the name stay as they are: it is written over several lines.
  text.append(kName).append(briefing.Name).append(kBreak);
  const auto add = [&](std::string_view key, std::string_view value) {
    text.append(key).append(Replace(value, kBreak, kWrittenBreak));
    text.append(kWrittenBreak).append(kBreak);
  };
  add(kShort, briefing.Short);
  add(kDescription, briefing.Description);
  return text;
}

std::optional<Briefing> ReadBriefing(const Services& services, const std::string& path) {
  if (!services.Files.FileExists(path)) return {};
  return ParseBriefing(services.Files.ReadFile(path, kMostBytes));
}

void SaveBriefing(const Services& services, const std::string& path, const Briefing& briefing) {
  if (services.Files.FileExists(path)) services.Files.RequireWritable(path);
  const std::string backup = BackupPath(services, GetFileName(path));
  // Asks for the backup and not for the briefing, so that an ordinary save makes no backup; this is
  // deliberate. The move replaces nothing: where the name is taken it is a fault, and no byte of
  // either file has changed.
  if (services.Files.FileExists(backup)) services.Files.MoveFile(path, backup);
  services.Files.ReplaceFile(path, BriefingText(briefing));
}

}  // namespace rws
