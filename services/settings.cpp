#include "services/settings.h"

#include "services/faults.h"
#include "services/text.h"

namespace rws {

namespace {

/** The key with the keyword replaced; empty when the keyword stands for nothing yet. */
std::string KeyOf(const Settings& settings, std::string_view key) {
  return std::string(EqualNoCase(key, kSetPath) ? std::string_view(settings.BaseKey) : key);
}

std::string TextOf(const SettingData& data) {
  if (const auto* text = std::get_if<std::string>(&data)) return *text;
  return std::to_string(std::get<std::int32_t>(data));
}

}  // namespace

std::string GetRegValue(const Settings& settings, SettingsRoot root, std::string_view key,
                        std::string_view name, std::string_view fallback) {
  std::string result(fallback);
  const std::string path = KeyOf(settings, key);
  if (path.empty() || !settings.Backend.Read) return result;
  ResumeNext([&] {
    const auto data = settings.Backend.Read(root, path, std::string(name));
    if (data && !TextOf(*data).empty()) result = TextOf(*data);
  });
  return result;
}

void SetRegValue(const Settings& settings, SettingsRoot root, std::string_view key,
                 std::string_view name, const SettingData& value) {
  const std::string path = KeyOf(settings, key);
  if (!path.empty() && settings.Backend.Write)
    settings.Backend.Write(root, path, std::string(name), value);
}

void DeleteRegKey(const Settings& settings, SettingsRoot root, std::string_view key) {
  const std::string path = KeyOf(settings, key);
  if (!path.empty() && settings.Backend.Delete) settings.Backend.Delete(root, path);
}

}  // namespace rws
