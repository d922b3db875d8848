#include "fuzz/support.h"
#include "gamelists/game_names.h"
#include "services/setting_values.h"

/** Reads every setting from a store that holds anything, such as a file that was edited by hand. */

namespace {

using namespace rws;

Settings StoreOf(std::map<std::string, std::string>& values, const std::string& other) {
  Settings settings;
  settings.BaseKey = kSettingsBaseKey;
  settings.Backend.Read = [&values, other](SettingsRoot, const std::string&,
                                           const std::string& name) -> std::optional<SettingData> {
    const auto found = values.find(name);
    return found == values.end() ? other : found->second;
  };
  settings.Backend.Write = [&values](SettingsRoot, const std::string&, const std::string& name,
                                     const SettingData& data) {
    values[name] = std::get<std::string>(data);
  };
  return settings;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(fuzz::TextOf(data, size));
  std::map<std::string, std::string> values;
  const Settings settings = StoreOf(values, text);
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
