#include "services/ini_file.h"

#include <optional>
#include <vector>

#include "services/faults.h"
#include "services/text.h"

namespace rws {

namespace {

constexpr std::size_t kLongestValue = 256;

struct IniLines {
  std::vector<std::string> Lines;
  /** Where the key stands, and where a new line of its section belongs. */
  std::optional<std::size_t> Key, SectionEnd;
};

std::string_view WithoutReturn(std::string_view line) {
  if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
  return line;
}

IniLines FindKey(std::string_view bytes, std::string_view section, std::string_view key) {
  IniLines ini;
  const std::string header = "[" + std::string(section) + "]";
  bool inSection = false;
  if (bytes.empty()) return ini;
  if (bytes.back() == '\n') bytes.remove_suffix(1);
  for (const auto part : SplitAt(bytes, '\n')) {
    const auto line = WithoutReturn(part);
    const auto trimmed = Trim(line);
    ini.Lines.emplace_back(line);
    if (!trimmed.empty() && trimmed[0] == '[') {
      inSection = !ini.SectionEnd && EqualNoCase(trimmed, header);
      if (inSection) ini.SectionEnd = ini.Lines.size();
      continue;
    }
    if (!inSection) continue;
    if (!trimmed.empty()) ini.SectionEnd = ini.Lines.size();
    const std::size_t equals = line.find('=');
    if (!ini.Key && equals != line.npos && EqualNoCase(Trim(line.substr(0, equals)), key))
      ini.Key = ini.Lines.size() - 1;
  }
  return ini;
}

}  // namespace

std::string IniValue(std::string_view bytes, std::string_view section, std::string_view key,
                     std::string_view fallback) {
  const auto ini = FindKey(bytes, section, key);
  if (!ini.Key) return std::string(fallback);
  const std::string_view line = ini.Lines[*ini.Key];
  return std::string(Trim(line.substr(line.find('=') + 1)).substr(0, kLongestValue));
}

std::string WithIniValue(std::string_view bytes, std::string_view section, std::string_view key,
                         std::string_view value) {
  auto ini = FindKey(bytes, section, key);
  std::string line(key);
  line.append("=").append(Trim(value).empty() ? "Empty" : value);
  if (ini.Key) {
    ini.Lines[*ini.Key] = line;
  } else if (ini.SectionEnd) {
    ini.Lines.insert(ini.Lines.begin() + static_cast<std::ptrdiff_t>(*ini.SectionEnd), line);
  } else {
    ini.Lines.push_back("[" + std::string(section) + "]");
    ini.Lines.push_back(line);
  }
  std::string text;
  for (const auto& kept : ini.Lines) text.append(kept).append("\r\n");
  return text;
}

std::string ReadIniValue(const Services& services, const std::string& file,
                         std::string_view section, std::string_view key,
                         std::string_view fallback) {
  std::string result(fallback);
  ResumeNext([&] { result = IniValue(services.Files.ReadFile(file), section, key, fallback); });
  return result;
}

void WriteIniValue(const Services& services, const std::string& file, std::string_view section,
                   std::string_view key, std::string_view value) {
  const std::string bytes = services.Files.FileExists(file) ? services.Files.ReadFile(file) : "";
  services.Files.ReplaceFile(file, WithIniValue(bytes, section, key, value));
}

}  // namespace rws
