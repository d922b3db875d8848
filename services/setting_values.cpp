#include "services/setting_values.h"

#include <algorithm>

#include "services/numbers.h"
#include "services/text.h"

namespace rws {

std::string ReadSetting(const Settings& settings, const SettingValue& value) {
  return ReadSetting(settings, value, value.Default);
}

std::string ReadSetting(const Settings& settings, const SettingValue& value,
                        std::string_view fallback) {
  return GetRegValue(settings, SettingsRoot::CurrentUser, kSetPath, value.Name, fallback);
}

bool ReadFlag(const Settings& settings, const SettingValue& value) {
  return EqualNoCase(ReadSetting(settings, value), "True");
}

std::int32_t ReadNumber(const Settings& settings, const SettingValue& value, std::int32_t lowest,
                        std::int32_t highest) {
  const double number = Val(ReadSetting(settings, value));
  return static_cast<std::int32_t>(std::clamp<double>(number, lowest, highest));
}

void WriteSetting(const Settings& settings, const SettingValue& value, std::string_view text) {
  SetRegValue(settings, SettingsRoot::CurrentUser, kSetPath, value.Name, std::string(text));
}

}  // namespace rws
