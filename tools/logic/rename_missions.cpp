#include "services/notice.h"
#include "services/numbers.h"
#include "services/paths.h"
#include "services/system_facts.h"
#include "tools/logic/folder_tools.h"
#include "tools/logic/mission_files.h"

namespace rws {

namespace {

constexpr char kDetour[] = "tmp";

/** A mission on its way to a new name. The first two are where the files stand now; "" is no
    briefing. */
struct Renaming {
  std::string Mission, Briefing, NewMission, NewBriefing;
};

Renaming MakeRenaming(const Services& services, const std::string& path, const std::string& name) {
  const std::string target = StripFileName(path) + name + ".mis";
  return {path, ExistingProperties(services, path), target, PropertiesPath(target)};
}

void Tell(const Services& services, const std::string& reason) {
  if (services.Ask.Notice) services.Ask.Notice(reason);
}

/** Renames the file and keeps `path` at where it stands. False, told, if that failed. */
bool MoveTo(const Services& services, std::string& path, const std::string& to) {
  if (path == to) return true;
  const std::string reason = FileRename(services, path, to);
  const FileSystem& files = services.Files;
  // A rename may be done and only its flush have failed.
  const bool gone = !files.FileExists(path) || files.Resolve(path) != path;
  if (reason.empty() || (gone && files.FileExists(to))) path = to;
  if (!reason.empty()) Tell(services, reason);
  return reason.empty();
}

bool ToDetour(const Services& services, Renaming& file) {
  return MoveTo(services, file.Mission, file.NewMission + kDetour) &&
         (file.Briefing.empty() || MoveTo(services, file.Briefing, file.NewBriefing + kDetour));
}

/** Gives what is on the detour its name; what is not stays. */
bool ToName(const Services& services, Renaming& file) {
  bool done = true;
  if (file.Mission == file.NewMission + kDetour)
    done = MoveTo(services, file.Mission, file.NewMission);
  if (file.Briefing == file.NewBriefing + kDetour)
    done = MoveTo(services, file.Briefing, file.NewBriefing) && done;
  return done;
}

/** The arrays follow the name on disk: a mission that is not found there ends the program. */
void Follow(Document& doc, std::size_t index, const std::string& path) {
  if (index < doc.MissionFiles.size()) doc.MissionFiles[index] = path;
  for (auto* missions : {&doc.Missions, &doc.MissionShadow}) {
    if (index >= missions->size()) continue;
    (*missions)[index].FileName = GetFileName(path);
    (*missions)[index].BaseName = GetBaseName(path);
  }
}

/** First all to the detour, then all to their names: a new name may be the old one of a mission
    whose turn has not come. After a failure those on the detour still get their names. */
bool Rename(Document& doc, const Services& services, std::vector<Renaming>& files,
            const Progress& progress) {
  const std::size_t steps = files.size() * 2;
  std::size_t started = 0;
  bool done = true;
  // After a failure no more progress is told: it would take the place of the reason.
  const auto fileDone = [&](std::size_t step) {
    FileDone(services, done ? progress : Progress(), step, steps);
  };
  while (done && started < files.size()) {
    done = !doc.Closing && ToDetour(services, files[started]);
    Follow(doc, started, files[started].Mission);
    ++started;
    fileDone(started);
  }
  for (std::size_t i = 0; i < started; ++i) {
    done = ToName(services, files[i]) && done;
    Follow(doc, i, files[i].Mission);
    fileDone(files.size() + i + 1);
  }
  return done;
}

std::string AskNewName(const Services& services) {
  return services.Ask
      .InputBox(
          "Enter the new mission name.\nThe format will be - NewNameXX.\n"
          "Where XX is an incremented number.",
          kProgramTitle, "")
      .value_or("");
}

std::vector<Renaming> Numbered(const Document& doc, const Services& services,
                               const std::string& name, double start) {
  std::vector<Renaming> files;
  for (const auto& path : doc.MissionFiles) {
    const double number = start + static_cast<double>(files.size());
    files.push_back(MakeRenaming(services, path, name + FormatNumber(number, "0#")));
    // The look for a briefing that is not there reads the whole folder.
    FileDone(services, {}, 0, 0);
  }
  return files;
}

/** A file name with its characters changed by `map`. Bytes that are no UTF-8 stay, or the file
    would get another name than the one that is read. */
template <class Map>
std::string Mapped(std::string_view name, Map&& map) {
  std::string result;
  for (std::size_t i = 0; i < name.size();) {
    const std::size_t start = i;
    const char32_t c = NextCharacter(name, i);
    std::string whole;
    AppendUtf8(whole, c);
    const auto bytes = name.substr(start, i - start);
    const char32_t mapped = map(c);
    if (whole == bytes) {
      AppendUtf8(result, mapped);
    } else {
      result += bytes;
    }
  }
  return result;
}

std::string ProperCase(std::string_view name) {
  bool first = true;
  return Mapped(name, [&](char32_t c) {
    const char32_t mapped = first ? UpperCharacter(c) : LowerCharacter(c);
    first = c == U' ';
    return mapped;
  });
}

std::string AskName(const Services& services, const std::string& base) {
  const std::string name =
      services.Ask.InputBox("Enter the new name for " + base, kProgramTitle, base).value_or("");
  RequireFileName(name);
  return name;
}

std::string NewName(const Services& services, int index, const std::string& base) {
  switch (index) {
    case 0:
      return AskName(services, base);
    case 1:
      return ProperCase(base);
    case 2:
      return Mapped(base, LowerCharacter);
    case 3:
      return Mapped(base, UpperCharacter);
    default:
      return "";
  }
}

/** Unlike a run over all, this one does not test for a briefing: a mission without one stays on the
    detour. */
bool RenameOne(const Services& services, Renaming& file) {
  const std::string path = file.Mission;
  if (!ToDetour(services, file)) return false;
  if (file.Briefing.empty()) {
    const std::string reason = "it has no briefing and stays as " + GetFileName(file.Mission);
    Tell(services, FileFault(fault::FileNotFound, "rename", path, reason).Text);
    return false;
  }
  ToName(services, file);
  return file.Mission == file.NewMission;
}

}  // namespace

ToolResult RenameAll(Document& doc, const Services& services, const Progress& progress) {
  ToolResult result;
  NoticeAndLeave(services, [&] {
    const std::string name = AskNewName(services);
    if (name.empty()) return;
    RequireFileName(name);
    const auto typed = services.Ask.InputBox("Please enter a starting number.", kProgramTitle, "1");
    const auto start = ParseNumber(typed.value_or(""));
    if (!start || doc.MissionFiles.empty()) return;
    auto files = Numbered(doc, services, name, *start);
    result.Outcome = ToolOutcome::Rows;
    if (Rename(doc, services, files, progress)) result.Outcome = ToolOutcome::Reread;
  });
  return result;
}

ToolResult RenameCase(Document& doc, const Services& services, int index) {
  ToolResult result;
  NoticeAndLeave(services, [&] {
    const std::string path = CurrentMissionPath(doc);
    if (path.empty()) return;
    const std::string name = NewName(services, index, GetBaseName(path));
    if (name.empty()) return;
    // The row shows a case at once, whatever becomes of the file.
    if (index != 0) result = {ToolOutcome::RowText, name};
    Renaming file = MakeRenaming(services, path, name);
    const bool done = RenameOne(services, file);
    Follow(doc, static_cast<std::size_t>(doc.CurMission), file.Mission);
    if (index != 0) return;
    if (done) {
      result.Outcome = ToolOutcome::Reread;
    } else if (file.Mission != path) {
      result = {ToolOutcome::RowText, name};
    }
  });
  return result;
}

}  // namespace rws
