#include <algorithm>

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
  std::string Mission, Briefing, NewMission, NewBriefing, OldMission, OldBriefing;
};

Renaming MakeRenaming(const Services& services, const std::string& path, const std::string& name) {
  const std::string target = StripFileName(path) + name + ".mis";
  const std::string briefing = ExistingProperties(services, path);
  return {path, briefing, target, PropertiesPath(target), path, briefing};
}

/** Renames the file and keeps `path` at where it stands. Gives the reason if that failed. */
std::string MoveTo(const Services& services, std::string& path, const std::string& to) {
  if (path == to) return "";
  const std::string reason = FileRename(services, path, to);
  const FileSystem& files = services.Files;
  // A rename may be done and only its flush have failed.
  if (reason.empty() ||
      ((!files.FileExists(path) || files.Resolve(path) != path) && files.FileExists(to)))
    path = to;
  return reason;
}

/** The mission and then its briefing, to names that `to` tells; the first failure ends it. */
std::string MoveBoth(const Services& services, Renaming& file, const std::string& mission,
                     const std::string& briefing) {
  std::string reason = MoveTo(services, file.Mission, mission);
  if (reason.empty() && !file.Briefing.empty()) reason = MoveTo(services, file.Briefing, briefing);
  return reason;
}

std::string ToDetour(const Services& services, Renaming& file) {
  return MoveBoth(services, file, file.NewMission + kDetour, file.NewBriefing + kDetour);
}

/** Gives what is on the detour these names; what is not stays. Both are tried. */
std::string FromDetour(const Services& services, Renaming& file, const std::string& mission,
                       const std::string& briefing) {
  std::string reason;
  if (file.Mission == file.NewMission + kDetour) reason = MoveTo(services, file.Mission, mission);
  if (file.Briefing == file.NewBriefing + kDetour) {
    const std::string second = MoveTo(services, file.Briefing, briefing);
    if (reason.empty()) reason = second;
  }
  return reason;
}

std::string ToName(const Services& services, Renaming& file) {
  return FromDetour(services, file, file.NewMission, file.NewBriefing);
}

/** Tells why a rename failed and under which names the files stand now. */
void TellFailed(const Services& services, const Renaming& file, std::string reason) {
  if (file.Mission != file.OldMission || file.Briefing != file.OldBriefing) {
    reason += ". Mission \"" + GetBaseName(file.OldMission) + "\" now stands as \"" +
              GetFileName(file.Mission) + "\"";
    if (!file.Briefing.empty())
      reason += ", its briefing as \"" + GetFileName(file.Briefing) + "\"";
    reason += ".";
  }
  if (services.Ask.Notice) services.Ask.Notice(reason);
}

/** True if `reason` is none; told otherwise. */
bool Succeeded(const Services& services, const Renaming& file, const std::string& reason) {
  if (!reason.empty()) TellFailed(services, file, reason);
  return reason.empty();
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

/** A run over all missions. */
class Numbering {
 public:
  Numbering(Document& doc, const Services& services, const ToolSeam& seam,
            std::vector<Renaming> files)
      : doc_(doc), services_(services), seam_(seam), files_(std::move(files)) {}

  /** First all to the detour, then all to their names: a new name may be the old one of a mission
      whose turn has not come. After a failure those on the detour still get their names; after a
      cancel all get their old ones. False if one of these happened. */
  bool Run() {
    const std::size_t steps = files_.size() * 2;
    while (done_ && started_ < files_.size()) {
      done_ = !doc_.Closing && Try(started_, ToDetour);
      ++started_;
      if (!Told(files_[started_ - 1], started_, steps)) return TakeBack();
    }
    for (std::size_t i = 0; i < started_; ++i) {
      done_ = Try(i, ToName) && done_;
      if (!Told(files_[i], files_.size() + i + 1, steps)) return TakeBack();
    }
    return done_;
  }

  /** How many missions have their new name. */
  std::size_t Done() const {
    return static_cast<std::size_t>(std::count_if(
        files_.begin(), files_.end(), [](auto& file) { return file.Mission == file.NewMission; }));
  }

 private:
  template <class Move>
  bool Try(std::size_t i, Move move) {
    const bool moved = Succeeded(services_, files_[i], move(services_, files_[i]));
    Follow(doc_, i, files_[i].Mission);
    return moved;
  }

  /** After a failure no more progress is told, which would take the place of the reason. */
  bool Told(const Renaming& file, std::size_t step, std::size_t steps) const {
    return FileDone(services_, done_ ? seam_ : ToolSeam(),
                    {step, steps, GetFileName(file.OldMission), "Step"});
  }

  /** By the detour again: an old name may be the new one of another. */
  bool TakeBack() {
    bool back = true;
    for (std::size_t i = 0; i < started_; ++i) {
      if (files_[i].Mission == files_[i].NewMission) back = Try(i, ToDetour) && back;
      FileDone(services_, {}, {});
    }
    const auto toOld = [](const Services& services, Renaming& file) {
      return FromDetour(services, file, file.OldMission, file.OldBriefing);
    };
    for (std::size_t i = 0; i < started_; ++i) {
      back = Try(i, toOld) && back;
      FileDone(services_, {}, {});
    }
    if (back) TellCancelled(services_, "All missions have their old names.");
    return false;
  }

  Document& doc_;
  const Services& services_;
  const ToolSeam& seam_;
  std::vector<Renaming> files_;
  std::size_t started_ = 0;
  bool done_ = true;
};

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
  if (!Succeeded(services, file, ToDetour(services, file))) return false;
  if (file.Briefing.empty()) {
    const std::string reason = "it has no briefing";
    TellFailed(services, file, FileFault(fault::FileNotFound, "rename", path, reason).Text);
    return false;
  }
  Succeeded(services, file, ToName(services, file));
  return file.Mission == file.NewMission;
}

}  // namespace

ToolResult RenameAll(Document& doc, const Services& services, const ToolSeam& seam) {
  ToolResult result;
  NoticeAndLeave(services, [&] {
    const std::string name = AskNewName(services);
    if (name.empty()) return;
    RequireFileName(name);
    const auto typed = services.Ask.InputBox("Please enter a starting number.", kProgramTitle, "1");
    const auto start = ParseNumber(typed.value_or(""));
    if (!start || doc.MissionFiles.empty() || !MayBegin(seam) || doc.MissionFiles.empty()) return;
    const KnownFolder known(services.Files, GetParentFolderName(doc.MissionFiles[0]));
    auto files = Numbered(doc, services, name, *start);
    result.Outcome = ToolOutcome::Rows;
    result.Of = files.size();
    Numbering numbering(doc, services, seam, std::move(files));
    if (numbering.Run()) result.Outcome = ToolOutcome::Reread;
    result.Done = numbering.Done();
  });
  return result;
}

ToolResult RenameCase(Document& doc, const Services& services, int index, const ToolSeam& seam) {
  ToolResult result;
  NoticeAndLeave(services, [&] {
    const std::string path = CurrentMissionPath(doc);
    if (path.empty()) return;
    const std::string name = NewName(services, index, GetBaseName(path));
    if (name.empty() || !MayBegin(seam)) return;
    if (CurrentMissionPath(doc) != path) throw FileNotFoundFault(path);
    // The row shows a case at once, whatever becomes of the file.
    if (index != 0) result = {ToolOutcome::RowText, name, 0, 0};
    Renaming file = MakeRenaming(services, path, name);
    const bool done = RenameOne(services, file);
    Follow(doc, static_cast<std::size_t>(doc.CurMission), file.Mission);
    if (index != 0) return;
    if (done) {
      result.Outcome = ToolOutcome::Reread;
    } else if (file.Mission != path) {
      result = {ToolOutcome::RowText, name, 0, 0};
    }
  });
  return result;
}

}  // namespace rws
