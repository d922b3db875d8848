#include "fuzz/support.h"
#include "gamelists/game_names.h"
#include "services/ini_settings.h"
#include "services/setting_values.h"

/** Reads settings from a file that holds anything, such as one that was edited by hand, and writes
    there. */

namespace {

using namespace rws;

Settings StoreOf(std::string& bytes) {
  Settings settings;
  settings.BaseKey = kSettingsBaseKey;
  settings.Backend.Read = [&bytes](SettingsRoot root, const std::string& key,
                                   const std::string& name) -> std::optional<SettingData> {
    auto text = StoredSetting(bytes, root, key, name);
    if (!text) return {};
    return *std::move(text);
  };
  settings.Backend.Write = [&bytes](SettingsRoot root, const std::string& key,
                                    const std::string& name, const SettingData& data) {
    const std::string& text = std::get<std::string>(data);
    bytes = WithSetting(bytes, root, key, name, text);
    fuzz::Require(StoredSetting(bytes, root, key, name) == text, "A text is read as written.");
    fuzz::Require(WithSetting(bytes, root, key, name, text) == bytes, "Written twice, it is one.");
  };
  return settings;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(fuzz::TextOf(data, size));
  std::string bytes = text;
  const Settings settings = StoreOf(bytes);
  for (const auto& value : {setting::BackupsKept, setting::Backup})
    if (const auto end = text.find('\n'); end != text.npos)
      WriteSetting(settings, value, text.substr(0, end));
  for (const auto& [least, most] : {std::pair{0, 1}, {-5, 9999}, {INT32_MIN, INT32_MAX}}) {
    const auto number = ReadNumber(settings, setting::BackupsKept, least, most);
    fuzz::Require(number >= least && number <= most, "A number is within its limits.");
  }
  const bool flag = ReadFlag(settings, setting::Backup);
  WriteSetting(settings, setting::Backup, flag ? "True" : "False");
  fuzz::Require(ReadFlag(settings, setting::Backup) == flag, "A switch is read as it was written.");
  NameChoices choices = ReadNameChoices(settings);
  if (choices.Pack.empty() || choices.Language.empty()) return 0;
  WriteNameChoices(settings, choices);
  fuzz::Require(ReadNameChoices(settings) == choices, "Choices are read as they were written.");
  return 0;
}
