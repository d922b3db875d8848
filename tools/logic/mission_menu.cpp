#include "tools/logic/mission_menu.h"

#include "mission/line_values.h"
#include "services/clock.h"
#include "services/code_page.h"
#include "services/notice.h"
#include "services/numbers.h"
#include "services/paths.h"
#include "services/pickers.h"
#include "services/text.h"
#include "tools/logic/mission_files.h"

namespace rws {

namespace {

constexpr char kSoundFilter[] = "Sound file (*.wav)|*.wav";
constexpr int kHighestShellFailure = 32;

std::string PickSource(const Document& doc, const Services& services) {
  if (ReadSetting(services.Settings, setting::SoundFrom).empty())
    WriteSetting(services.Settings, setting::SoundFrom, doc.GamePath);
  return GetFile(services, "Choose sound file to copy", kSoundFilter, &setting::SoundFrom);
}

std::string PickTarget(const Document& doc, const Services& services, const std::string& source) {
  const std::string start = ReadSetting(services.Settings, setting::SoundTo, doc.GamePath);
  const Answer answer = services.Ask.MsgBox(GetBaseName(source) + " is ready to copy",
                                            Buttons::OkCancel, Icon::None, kProgramTitle);
  if (answer != Answer::Ok) return "";
  return GetSaveFile(services, "Select destination to copy sound file to", GetFileName(source),
                     kSoundFilter, start, SaveFor::Naming);
}

/** The part of a path below the game directory, however that is spelled; "" when it lies outside.
 */
std::string BelowGamePath(const Document& doc, const Services& services, const std::string& path) {
  std::string folder = GetParentFolderName(path);
  while (!folder.empty() && !services.Files.IsSameFile(folder, doc.GamePath))
    folder = GetParentFolderName(folder);
  if (folder.empty()) return "";
  return path.substr(path.find_first_not_of("\\/", folder.size()));
}

/** The line of the mission for a sound. One outside the game directory gives the bare path, which
    the game cannot read; that is written as it stands. */
std::string SoundLine(const Document& doc, const Services& services, const std::string& path) {
  const std::string below = BelowGamePath(doc, services, path);
  const std::string line = below.empty() ? path : "  briefSound " + below;
  const auto bytes = services.Page.FromUtf8(Replace(line, "\\", "/"));
  if (!bytes || bytes->find_first_of("\r\n") != bytes->npos)
    throw FileFault(fault::InvalidCall, "attach", path,
                    "the name has a character that a mission file cannot hold");
  return *bytes;
}

void Attach(Document& doc, const Services& services, const std::string& path) {
  const std::string line = SoundLine(doc, services, path);
  Mission& mission = At(doc.Missions, doc.CurMission);
  // A bare path without a blank has no second word to look up: the old file name stays.
  ResumeNext([&] { mission.BriefSound = GetBriefSoundPath(doc, services, line); });
  mission.BriefSoundLine = line;
}

/** The line ends at a blank for whoever reads it: the sound is then never found. */
void TellOfBlanks(const Document& doc, const Services& services, const std::string& path) {
  const std::string below = BelowGamePath(doc, services, path);
  const std::string named = below.empty() ? path : below;
  if (!Contains(named, " ")) return;
  services.Ask.MsgBox("The game cannot use \"" + named +
                          "\": it reads the path of a sound up to the first blank only.\n"
                          "Give the sound, and the folders it lies in, names without blanks.",
                      Buttons::Ok, Icon::Exclamation, kProgramTitle);
}

/** In lower case, but where letter case counts the mission's own briefing goes first, and that of
    another mission is never given. */
std::string BriefPath(const Services& services, const std::string& missionPath) {
  const std::string folder = StripFileName(missionPath), name = GetFileName(missionPath);
  const std::string lowered = folder + Replace(FoldName(name), ".mis", ".properties");
  const std::string own = PropertiesPath(name).empty() ? lowered : folder + PropertiesPath(name);
  // What the lowered name opens or makes.
  const std::string opened = services.Files.FileExists(own) ? services.Files.Resolve(own) : lowered;
  const std::string owner = folder + GetBaseName(opened) + ".mis";
  const bool isOfAnother =
      services.Files.FileExists(owner) && !services.Files.IsSameFile(owner, missionPath);
  return opened == own || isOfAnother ? own : lowered;
}

}  // namespace

bool AddSoundFile(Document& doc, const Services& services) {
  bool attached = false;
  NoticeAndLeave(services, [&] {
    const std::string source = PickSource(doc, services);
    if (source.empty()) return;
    const std::string target = PickTarget(doc, services, source);
    if (target.empty()) return;
    WriteSetting(services.Settings, setting::SoundTo, GetParentFolderName(target));
    Attach(doc, services, target);
    attached = true;
    TellOfBlanks(doc, services, target);
  });
  return attached;
}

void ViewMissionText(const Document& doc, const Services& services) {
  NoticeAndLeave(services, [&] {
    // From the root on, so that no editor takes a name for an option.
    const std::string path = services.Files.GetAbsolutePathName(CurrentMissionPath(doc));
    if (!services.Files.FileExists(path)) throw FileNotFoundFault(path);
    if (services.System.OpenText(path) <= kHighestShellFailure)
      throw FileFault(fault::FileIo, "open", path, "no text editor could be started");
  });
}

BriefFields MakeBriefFields(const Document& doc, const Services& services,
                            const std::vector<std::string>& weatherCaptions) {
  const Mission& mission = CurrentMissionRecord(doc);
  BriefFields fields;
  fields.BriefName = BriefPath(services, CurrentMissionPath(doc));
  fields.MissionPath = mission.DirPath;
  fields.Map = mission.MapName;
  fields.Clouds = mission.CloudHeight;
  ResumeNext([&] { fields.Weather = At(weatherCaptions, CInt(Val(mission.CloudType))); });
  ResumeNext([&] { fields.MisTime = HoursToClock(mission.Time); });
  return fields;
}

}  // namespace rws
