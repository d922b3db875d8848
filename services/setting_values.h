#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "services/settings.h"

namespace rws {

/** One value of the program under its base key, with what it reads as when it is absent. */
struct SettingValue {
  std::string_view Name;
  std::string_view Default;
};

/** Where the program keeps its settings, under the user's own root. */
inline constexpr std::string_view kSettingsBaseKey = "Software\\Hollowbyte\\RWS Edit";

/** All values of the program. A form's place is kept beside these, under the form's name followed
   by "Top", "Left", "Width" or "Height", the main window's size under "InnerWidth" and
   "InnerHeight". A value without a fixed default reads as "". */
namespace setting {
inline constexpr SettingValue GamePath{"GamePath", ""};
inline constexpr SettingValue WorkDir{"WorkDir", ""};
inline constexpr SettingValue LastDirPath{"LastDirPath", ""};
inline constexpr SettingValue Backup{"Backup", "True"};
/** How many dated backups of a mission stay; 0 is all. */
inline constexpr SettingValue BackupsKept{"BackupsKept", "0"};
inline constexpr SettingValue LaterVersions{"LaterVersions", "0"};
inline constexpr SettingValue StoreDays{"StoreDays", "30"};
inline constexpr SettingValue StoreMegabytes{"StoreMegabytes", "256"};
inline constexpr SettingValue LockWT{"RWSLockWT", ""};
inline constexpr SettingValue SndPlayer{"RWSSndPlayer", "False"};
inline constexpr SettingValue SaveWarn{"RWSSaveWarn", "0"};
/** Colours are decimal text of blue-green-red numbers: 0x800000 and 0xFFFFFF. */
inline constexpr SettingValue ForeColor{"RWSForeColor", "8388608"};
inline constexpr SettingValue BackColor{"RWSBackColor", "16777215"};
inline constexpr SettingValue DesktopColors{"RWSDesktopColors", "False"};
inline constexpr SettingValue SoundFrom{"RWSSoundFrom", ""};
inline constexpr SettingValue SoundTo{"RWSSoundTo", ""};
inline constexpr SettingValue LastSavAsPath{"LastSavAsPath", ""};
inline constexpr SettingValue LastMovePath{"LastMovePath", ""};
inline constexpr SettingValue CampaignPath{"CampaignPath", ""};
inline constexpr SettingValue CopyToDir{"CopyToDir", ""};
inline constexpr SettingValue SqFile{"SqFile", ""};
inline constexpr SettingValue SkinDirTemp{"SkinDirTemp", ""};
inline constexpr SettingValue LastImagePath{"LastImagePath", ""};
inline constexpr SettingValue BriefMapLabel{"BriefMaplbl", "Mission Map: "};
inline constexpr SettingValue BriefWeatherLabel{"BriefWeatherlbl", "Mission Weather: "};
inline constexpr SettingValue BriefCloudLabel{"BriefCloudlbl", "Mission Cloud height: "};
inline constexpr SettingValue BriefTimeLabel{"BriefTimelbl", "Mission Time: "};
inline constexpr SettingValue UseUSMeasurement{"UseUSMeasurement", "False"};
inline constexpr SettingValue LabelInsert{"LabelInsert", "False"};
inline constexpr SettingValue WPMetric{"WPMetric", "True"};
/** Number of the single-byte encoding of mission text; "" follows the system. */
inline constexpr SettingValue CodePage{"CodePage", ""};
/** Whether the main window shows its tool bar. */
inline constexpr SettingValue ToolBar{"ToolBar", "True"};
/** The folders opened last, newest first, a line each. */
inline constexpr SettingValue RecentFolders{"RecentFolders", ""};
/** Where missions were looked for last, the queries, a line each, newest first, and the table's
    columns with their widths. */
inline constexpr SettingValue FindFolder{"FindFolder", ""};
inline constexpr SettingValue FindBelow{"FindBelow", "True"};
inline constexpr SettingValue FindQueries{"FindQueries", ""};
inline constexpr SettingValue FindColumns{"FindColumns", ""};
inline constexpr SettingValue FindSort{"FindSort", ""};
/** The lists of the player's own game: whether they are used, the folders of the pack where the
   game does not tell it, the language of the texts, "" for that of the game, and whether aircraft
   that only they know may be flown. */
inline constexpr SettingValue UseLists{"UseLists", "True"};
inline constexpr SettingValue ListsPack{"ListsPack", ""};
inline constexpr SettingValue ListsLanguage{"ListsLanguage", ""};
inline constexpr SettingValue UnlistedFlyable{"UnlistedFlyable", "True"};
/** The map: "1" for each layer that is not shown, in their order; whether the legend and the
   profile are, and whether that is over the time; where pictures were written last. */
inline constexpr SettingValue MapHidden{"MapHidden", ""};
inline constexpr SettingValue MapLegend{"MapLegend", "True"};
inline constexpr SettingValue MapProfile{"MapProfile", "True"};
inline constexpr SettingValue MapOverTime{"MapOverTime", "False"};
inline constexpr SettingValue MapExportPath{"MapExportPath", ""};
}  // namespace setting

/** One of the program's values, or its default. */
std::string ReadSetting(const Settings& settings, const SettingValue& value);
/** As above, with a default that only the run knows. */
std::string ReadSetting(const Settings& settings, const SettingValue& value,
                        std::string_view fallback);
/** A value that holds "True" or "False". */
bool ReadFlag(const Settings& settings, const SettingValue& value);
/** A value that holds a whole number; one outside the range reads as its nearest end. */
std::int32_t ReadNumber(const Settings& settings, const SettingValue& value, std::int32_t lowest,
                        std::int32_t highest);
void WriteSetting(const Settings& settings, const SettingValue& value, std::string_view text);

}  // namespace rws
