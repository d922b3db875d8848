#include "mission/reader.h"

#include <algorithm>
#include <array>
#include <utility>

#include "mission/kept_reader.h"
#include "mission/line_ends.h"
#include "mission/line_sieve.h"
#include "mission/line_values.h"
#include "mission/untouched.h"
#include "services/error_log.h"
#include "services/faults.h"
#include "services/letter_set.h"
#include "services/list_files.h"
#include "services/numbers.h"
#include "services/paths.h"
#include "services/setting_values.h"
#include "services/text.h"

namespace rws {

namespace {

void CloseOverMissingFile(Document& doc, const Services& services, const std::string& path) {
  LogError(services, path, "File does not exist!");
  services.Ask.MsgBox("Check error log for errors. RWS will now close.", Buttons::Ok,
                      Icon::Critical, kProgramTitle);
  ResumeNext([&] { WriteSetting(services.Settings, setting::GamePath, ""); });
  doc.Closing = true;
  services.Window.Close();
}

/** The records hold the repaired text; without a word the player would take the file for repaired.
 */
void TellUnrepaired(const Services& services, const std::string& path, const std::string& reason) {
  if (services.Ask.Notice)
    services.Ask.Notice("The line ends of \"" + path +
                        "\" could not be repaired; the file was left as it is. " + reason);
}

struct HeaderLine {
  Document& Doc;
  const Services& With;
  Mission& Into;
  std::string_view Text;
};

struct HeaderKey {
  LetterPattern Pattern;
  /** Takes the line's value as it is. */
  std::string Mission::*Field;
  /** Stores what is not taken as it is. */
  void (*Store)(const HeaderLine& line) = nullptr;
};

std::int16_t WholeValue(const HeaderLine& line) { return CInt(Val(GetValue(line.Text))); }

/** Every line of the head is tested against all of them; a later line overwrites an earlier one.
    The patterns are loose on purpose: "*time*" takes a "timeConstant" line as well. */
constexpr HeaderKey kHeaderKeys[] = {
    {"*map*", &Mission::MapPath,
     [](const HeaderLine& line) {
       line.Into.MapName = GetMapName(line.Doc, line.With, line.Into.MapPath);
     }},
    {"*time*", &Mission::Time},
    {"*cloudtype*", &Mission::CloudType},
    {"*cloudheight*", nullptr,
     [](const HeaderLine& line) { line.Into.CloudHeight = IntegerPart(GetValue(line.Text)); }},
    {"*army*", &Mission::Army},
    {"*playernum*", &Mission::PlayerNum},
    {"*player *", &Mission::Player},
    {"*timeconstant *", nullptr,
     [](const HeaderLine& line) { line.Into.TimeConstant = WholeValue(line); }},
    {"*weaponsconstant *", nullptr,
     [](const HeaderLine& line) { line.Into.WeaponsConstant = WholeValue(line); }},
    {"*briefsound *", nullptr,
     [](const HeaderLine& line) {
       line.Into.BriefSoundLine = line.Text;
       line.Into.BriefSound = GetBriefSoundPath(line.Doc, line.With, line.Text);
     }},
};

void ReadHeaderLine(const HeaderLine& line, const LetterLine& lower) {
  for (const auto& key : kHeaderKeys) {
    if (!lower.Like(key.Pattern)) continue;
    LogAndLeave(line.With, "LoadMission", [&] {
      if (key.Field) line.Into.*key.Field = GetValue(line.Text);
      if (key.Store) key.Store(line);
    });
  }
}

constexpr std::string_view kHeadEnd = "[wing]";

/** Of each header key and of the head's end, letters that the lists of objects seldom have: a
    mission without flights is a head from end to end. */
constexpr std::array kHeaderPairs{LetterPair{'a', 'p'}, LetterPair{'i', 'm'}, LetterPair{'u', 'd'},
                                  LetterPair{'r', 'm'}, LetterPair{'p', 'l'}, LetterPair{'f', 's'},
                                  LetterPair{'[', 'w'}};
static_assert(std::ranges::all_of(kHeaderKeys,
                                  [](const HeaderKey& key) {
                                    return HoldsPair(key.Pattern.Text, kHeaderPairs);
                                  }) &&
                  HoldsPair(kHeadEnd, kHeaderPairs),
              "a line with this key would not be looked at");

void ReadHeader(Document& doc, const Services& services, Mission& mission) {
  LineSieve<kHeaderPairs> sieve(mission.Lines);
  // A blank behind the bracket or an indent hides the end of the head.
  const auto endsHead = [](std::string_view line) { return EqualNoCase(line, kHeadEnd); };
  if (!mission.Lines.empty() && !endsHead(mission.Lines[0])) mission.HasBornPlace = false;
  std::string lower;
  for (std::size_t i = 0; (i = sieve.Next(i)) < mission.Lines.size(); ++i) {
    const auto line = mission.Lines[i];
    if (endsHead(line)) return;
    services.Page.LCaseInto(lower, line);
    ReadHeaderLine({doc, services, mission, line}, LetterLine(lower));
  }
}

}  // namespace

bool GetMissionFiles(Document& doc, const Services& services) {
  doc.MissionFiles.clear();
  LogAndLeave(services, "GetMissionFiles", [&] {
    ListFiles(services, doc.MissionFiles, doc.MissionDir, "*.mis", true, doc.ExcludedNames);
  });
  return !doc.MissionFiles.empty();
}

void LoadMissionArray(Document& doc, const Services& services) {
  doc.Missions.clear();
  LogAndLeave(services, "LoadMissionArray", [&] {
    doc.Missions.reserve(doc.MissionFiles.size());
    std::string folder, absolute;
    for (const auto& path : doc.MissionFiles) {
      Mission& mission = doc.Missions.emplace_back();
      mission.BaseName = GetBaseName(path);
      mission.FileName = GetFileName(path);
      // Nearly all lie in one folder, whose place in the system is asked for once.
      const std::string own = StripFileName(path);
      if (own.empty() || own != std::exchange(folder, own))
        absolute = StripFileName(services.Files.GetAbsolutePathName(path));
      // A folder whose name holds the file name loses that part too; kept as it is.
      mission.DirPath = Replace(absolute + mission.FileName, mission.FileName, "");
    }
  });
}

void ReadMissionText(Document& doc, const Services& services, std::size_t mission,
                     std::string bytes) {
  Mission& record = At(doc.Missions, static_cast<std::ptrdiff_t>(mission));
  record.Lines = LineArray::FromFile(std::move(bytes));
  record.AsRead = LineArray();
  ReadHeader(doc, services, record);
  record.Loaded = LoadMissionParams(doc, services, mission);
  if (record.Loaded) record.AsRead = record.Lines;
}

void LoadMission(Document& doc, const Services& services, std::size_t mission) {
  const Mission& record = doc.Missions[mission];
  services.Window.ShowBusy(true);
  const std::string path = BuildPath(record.DirPath, record.FileName);
  if (services.Files.IsGone(path)) {
    services.Window.ShowBusy(false);
    return CloseOverMissingFile(doc, services, path);
  }
  const bool keeps = UntouchedRule(doc, record) == UntouchedLines::Keep;
  const bool onDisk = doc.Untouched == UntouchedLines::Anew && !keeps;
  const std::string reason = onDisk ? NormaliseLineEnds(services, path) : "";
  LogAndLeave(services, "LoadMission", [&] {
    std::string bytes = services.Files.ReadFile(path);
    if (keeps) return ReadKeptMission(doc, services, doc.Missions[mission], std::move(bytes));
    if (auto repaired = RepairedLineEnds(bytes)) {
      if (onDisk) TellUnrepaired(services, path, reason);
      bytes = std::move(*repaired);
    }
    ReadMissionText(doc, services, mission, std::move(bytes));
  });
  services.Window.ShowBusy(false);
}

}  // namespace rws
