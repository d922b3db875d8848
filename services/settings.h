#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

/** The settings store: a tree of keys with named values, text (UTF-8) or 32-bit integer. */
namespace rws {

enum class SettingsRoot { CurrentUser, ClassesRoot };
using SettingData = std::variant<std::string, std::int32_t>;

/** What keeps the values; the real one is the registry on Windows and an ini file elsewhere. Value
    names are found without regard to case. */
struct SettingsBackend {
  std::function<std::optional<SettingData>(SettingsRoot, const std::string& key,
                                           const std::string& name)>
      Read;
  std::function<void(SettingsRoot, const std::string& key, const std::string& name,
                     const SettingData&)>
      Write;
  std::function<void(SettingsRoot, const std::string& key)> Delete;
};

struct Settings {
  /** Empty until start-up sets it; until then reads give the default and writes do nothing. */
  std::string BaseKey;
  SettingsBackend Backend;
};

/** The keyword that stands for the base key. */
inline constexpr std::string_view kSetPath = "set path";

/** The value as text, or `fallback` if key or value does not exist or holds empty text. Never
    fails. */
std::string GetRegValue(const Settings& settings, SettingsRoot root, std::string_view key,
                        std::string_view name, std::string_view fallback);
/** Stores a value and creates the key when needed. */
void SetRegValue(const Settings& settings, SettingsRoot root, std::string_view key,
                 std::string_view name, const SettingData& value);
/** Removes a key and everything under it; a missing key is no failure. */
void DeleteRegKey(const Settings& settings, SettingsRoot root, std::string_view key);

}  // namespace rws
