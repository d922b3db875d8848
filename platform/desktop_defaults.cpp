#include "platform/desktop_defaults.h"

#include <QStandardPaths>
#include <algorithm>
#include <utility>

#include "platform/qt_text.h"
#include "services/numbers.h"
#include "services/paths.h"
#include "services/text.h"

namespace rws {

namespace {

constexpr char kList[] = "mimeapps.list";

std::vector<std::string> Locations(QStandardPaths::StandardLocation location) {
  std::vector<std::string> folders;
  for (const QString& folder : QStandardPaths::standardLocations(location))
    folders.push_back(ToPath(folder));
  return folders;
}

/** A file of the desktop; "" when it is not there. */
std::string TextOf(const FileSystem& files, const std::string& path) {
  constexpr std::uint64_t kMost = 16 << 20;
  return files.FileExists(path) ? files.ReadFile(path, kMost) : "";
}

std::string_view WithoutLineEnd(std::string_view line) {
  while (line.ends_with('\n') || line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

/** Calls `take` for each line, with its end. */
void ForEachLine(std::string_view text, const std::function<void(std::string_view)>& take) {
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size() - 1) + 1;
    take(text.substr(0, end));
    text.remove_prefix(end);
  }
}

std::string Heading(std::string_view group) { return "[" + std::string(group) + "]"; }

bool IsLineOf(std::string_view line, std::string_view type) {
  return line.starts_with(type) && line.substr(type.size()).starts_with('=');
}

/** The texts of all lists in a folder, those of the running desktop first. */
std::vector<std::string> ListsIn(const FileSystem& files, const std::string& folder) {
  std::vector<std::string> texts;
  const std::string desktops = ToPath(qEnvironmentVariable("XDG_CURRENT_DESKTOP").toLower());
  for (const auto desktop : SplitAt(desktops, ':'))
    if (!desktop.empty())
      texts.push_back(TextOf(files, BuildPath(folder, std::string(desktop) + "-" + kList)));
  texts.push_back(TextOf(files, BuildPath(folder, kList)));
  return texts;
}

/** One folder of lists, and what the entries beside them say of themselves. */
struct Level {
  std::vector<std::string> Lists;
  std::string Cache;
};

std::vector<Level> LevelsOf(const FileSystem& files, const DesktopFolders& folders) {
  std::vector<Level> levels;
  for (const auto& folder : folders.Config) levels.push_back({ListsIn(files, folder), ""});
  for (const auto& folder : folders.Data) {
    const std::string applications = BuildPath(folder, "applications");
    levels.push_back(
        {ListsIn(files, applications), TextOf(files, BuildPath(applications, "mimeinfo.cache"))});
  }
  return levels;
}

}  // namespace

DesktopFolders FindDesktopFolders() {
  return {Locations(QStandardPaths::GenericConfigLocation),
          Locations(QStandardPaths::GenericDataLocation)};
}

std::string TypeOfGlob(const FileSystem& files, const DesktopFolders& folders,
                       const std::string& glob) {
  std::string type;
  double highest = -1;
  for (const auto& folder : folders.Data) {
    ForEachLine(TextOf(files, BuildPath(BuildPath(folder, "mime"), "globs2")), [&](auto line) {
      const auto columns = SplitAt(WithoutLineEnd(line), ':');
      if (columns.size() < 3 || columns[2] != glob || Val(columns[0]) <= highest) return;
      highest = Val(columns[0]);
      type = columns[1];
    });
  }
  return type;
}

std::string DefaultProgram(const FileSystem& files, const DesktopFolders& folders,
                           const std::string& type) {
  const auto levels = LevelsOf(files, folders);
  std::vector<std::string> removed;
  const auto isThere = [&](const std::string& program) {
    return std::any_of(folders.Data.begin(), folders.Data.end(), [&](const auto& folder) {
      return files.FileExists(BuildPath(BuildPath(folder, "applications"), program));
    });
  };
  const auto firstOf = [&](const std::string& text, const char* group) -> std::string {
    for (const auto& program : ProgramsOf(text, group, type))
      if (std::find(removed.begin(), removed.end(), program) == removed.end() && isThere(program))
        return program;
    return "";
  };
  for (const auto& level : levels)
    for (const auto& list : level.Lists)
      if (const auto program = firstOf(list, "Default Applications"); !program.empty())
        return program;
  for (const auto& level : levels) {
    for (const auto& list : level.Lists) {
      if (const auto program = firstOf(list, "Added Associations"); !program.empty())
        return program;
      for (auto& program : ProgramsOf(list, "Removed Associations", type))
        removed.push_back(std::move(program));
    }
    if (const auto program = firstOf(level.Cache, "MIME Cache"); !program.empty()) return program;
  }
  return "";
}

std::vector<std::string> ProgramsOf(std::string_view list, std::string_view group,
                                    std::string_view type) {
  std::vector<std::string> programs;
  bool inGroup = false;
  ForEachLine(list, [&](std::string_view whole) {
    const std::string_view line = WithoutLineEnd(whole);
    if (line.starts_with('[')) inGroup = line == Heading(group);
    if (!inGroup || !IsLineOf(line, type)) return;
    for (const auto name : SplitAt(line.substr(type.size() + 1), ';'))
      if (!Trim(name).empty()) programs.emplace_back(Trim(name));
  });
  return programs;
}

std::string WithPrograms(const std::string& list, const std::string& group, const std::string& type,
                         const std::vector<std::string>& programs) {
  if (ProgramsOf(list, group, type) == programs) return list;
  std::string line;
  for (const auto& program : programs) line += program + ";";
  if (!line.empty()) line = type + "=" + line + "\n";
  std::string text;
  bool inGroup = false;
  ForEachLine(list, [&](std::string_view whole) {
    const std::string_view bare = WithoutLineEnd(whole);
    if (bare.starts_with('[')) inGroup = bare == Heading(group);
    if (inGroup && IsLineOf(bare, type)) return;
    text += whole;
    if (bare != Heading(group)) return;
    if (!whole.ends_with('\n')) text += '\n';
    text += std::exchange(line, "");
  });
  if (line.empty()) return text;
  if (!text.empty() && !text.ends_with('\n')) text += '\n';
  return text + Heading(group) + "\n" + line;
}

}  // namespace rws
