#include "mission/reader.h"

#include <array>

#include "mission/kept_reader.h"
#include "mission/line_ends.h"
#include "mission/line_values.h"
#include "mission/untouched.h"
#include "services/error_log.h"
#include "services/faults.h"
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
  std::string_view Pattern;
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

void ReadHeaderLine(const HeaderLine& line, const std::string& lower) {
  for (const auto& key : kHeaderKeys) {
    if (!Like(lower, key.Pattern)) continue;
    LogAndLeave(line.With, "LoadMission", [&] {
      if (key.Field) line.Into.*key.Field = GetValue(line.Text);
      if (key.Store) key.Store(line);
    });
  }
}

/** For the first letter of each header key, in both cases, the two that follow in lower case. */
using KeyStarts = std::array<std::array<char, 2>, 256>;

constexpr KeyStarts MakeKeyStarts() {
  KeyStarts starts{};
  for (const auto& key : kHeaderKeys) {
    const std::array<char, 2> behind{key.Pattern[2], key.Pattern[3]};
    for (const int letter : {int{key.Pattern[1]}, key.Pattern[1] - 32}) {
      auto& known = starts[static_cast<unsigned char>(letter)];
      // A letter has room for one start: a key that does not fit is no constant and stops the
      // build.
      if (known[0] != 0 && known != behind) throw OverflowFault();
      known = behind;
    }
  }
  return starts;
}

/** False for nearly every line of a mission without flights, which is a head from end to end. */
bool MayHoldHeaderKey(std::string_view line) {
  static constexpr auto kStarts = MakeKeyStarts();
  for (std::size_t i = 0; i + 2 < line.size(); ++i) {
    const auto& wanted = kStarts[static_cast<unsigned char>(line[i])];
    if (wanted[0] != 0 && LowerAscii(line[i + 1]) == wanted[0] &&
        LowerAscii(line[i + 2]) == wanted[1])
      return true;
  }
  return false;
}

void ReadHeader(Document& doc, const Services& services, Mission& mission) {
  std::string lower;
  for (std::size_t i = 0; i < mission.Lines.size(); ++i) {
    const auto line = mission.Lines[i];
    // A blank behind the bracket or an indent hides the end of the head.
    if (EqualNoCase(line, "[wing]")) return;
    mission.HasBornPlace = false;
    if (!MayHoldHeaderKey(line)) continue;
    services.Page.LCaseInto(lower, line);
    ReadHeaderLine({doc, services, mission, line}, lower);
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
    for (const auto& path : doc.MissionFiles) {
      Mission& mission = doc.Missions.emplace_back();
      mission.BaseName = GetBaseName(path);
      mission.FileName = GetFileName(path);
      // A folder whose name holds the file name loses that part too; kept as it is.
      mission.DirPath = Replace(services.Files.GetAbsolutePathName(path), mission.FileName, "");
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
