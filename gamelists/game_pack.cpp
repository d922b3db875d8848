#include "gamelists/game_pack.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

#include "services/faults.h"
#include "services/ini_file.h"
#include "services/paths.h"
#include "services/text.h"

namespace rws {

namespace {

constexpr char kSettings[] = "il2fb.ini";
constexpr std::uint64_t kMostSettings = 1'000'000;

/** The folders of a kind of pack in settings that do not name them. */
struct KnownFolders {
  std::string_view Mods, Files;
};
constexpr std::array<KnownFolders, 6> kOldTypes{
    {{}, {"MODS", "FILES"}, {"#SAS", ""}, {"#UP#", ""}, {"#DBW", ""}, {"#DBW_1916", ""}}};

/** A key that the settings leave out, other than one that is empty. */
constexpr std::string_view kMissing = "\n";

std::string Upper(std::string_view text) {
  std::string upper(text);
  for (char& c : upper)
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 32);
  return upper;
}

bool IsOff(std::string_view folder) { return folder.empty() || EqualNoCase(folder, "none"); }

class Finder {
 public:
  Finder(const Services& services, std::string gamePath)
      : files_(services.Files), game_(std::move(gamePath)) {}

  FoundPacks Run() {
    if (game_.empty()) return {};
    const std::string path = files_.FindFile(BuildPath(game_, kSettings));
    if (!path.empty())
      FromSettings(path);
    else
      FromFolders();
    return std::move(found_);
  }

 private:
  void FromSettings(const std::string& path) {
    found_.Settings = path;
    std::string bytes;
    if (!Tried([&] { bytes = files_.ReadFile(path, kMostSettings); })) return;
    const std::string type(Trim(IniValue(bytes, "Settings", "ModType", "1")));
    int number = 1;
    std::from_chars(type.data(), type.data() + type.size(), number);
    const std::string section =
        "Modtype_" + std::string(number < 10 ? "0" : "") + std::to_string(number);
    const auto value = [&](std::string_view in, std::string_view key) {
      return std::string(Trim(IniValue(bytes, in, key, kMissing)));
    };
    std::string mods = value(section, "Mods"), files = value(section, "Files");
    if (mods == kMissing && files == kMissing) {
      const bool isOld = number >= 0 && static_cast<std::size_t>(number) < kOldTypes.size();
      const KnownFolders known = kOldTypes[isOld ? static_cast<std::size_t>(number) : 0];
      mods = Named(value("Settings", "ModsFolder"), known.Mods);
      files = Named(value("Settings", "FilesFolder"), known.Files);
    }
    std::string name = value(section, "Name");
    Add(name == kMissing ? "" : name, mods == kMissing ? "" : mods, files == kMissing ? "" : files);
  }

  static std::string Named(const std::string& value, std::string_view usual) {
    return value == kMissing ? std::string(usual) : value;
  }

  void FromFolders() {
    std::vector<FolderEntry> entries;
    if (!Tried([&] { entries = files_.ListFolder(game_); })) return;
    const auto has = [&](std::string_view name) {
      return std::any_of(entries.begin(), entries.end(), [&](const FolderEntry& entry) {
        return entry.IsFolder && EqualNoCase(entry.Name, name);
      });
    };
    if (has("MODS") || has("FILES")) Add("", "MODS", "FILES");
    for (const auto& entry : entries)
      if (entry.IsFolder && entry.Name.starts_with('#')) Add("", entry.Name, "");
  }

  /** A pack without a folder on disk is none. */
  void Add(std::string name, const std::string& mods, const std::string& files) {
    GamePack pack;
    if (const std::string folder = Existing(mods); !folder.empty()) {
      AddMods(folder, pack.Roots);
      pack.Folders = GetFileName(folder);
    }
    if (const std::string folder = Existing(files); !folder.empty()) {
      pack.Roots.push_back(folder);
      pack.Folders += (pack.Folders.empty() ? "" : ", ") + GetFileName(folder);
    }
    if (pack.Roots.empty()) return;
    pack.Name = name.empty() ? pack.Folders : std::move(name);
    found_.Packs.push_back(std::move(pack));
  }

  std::string Existing(const std::string& name) const {
    return IsOff(name) ? "" : files_.FindFolder(BuildPath(game_, name));
  }

  /** Each folder below is one mod, those with a "-" in front are off. */
  void AddMods(const std::string& folder, std::vector<std::string>& roots) {
    std::vector<std::string> names;
    Tried([&] {
      for (const auto& entry : files_.ListFolder(folder))
        if (entry.IsFolder && !entry.Name.starts_with('-')) names.push_back(entry.Name);
    });
    std::sort(names.begin(), names.end(), [](const std::string& a, const std::string& b) {
      const std::string upperA = Upper(a), upperB = Upper(b);
      return upperA == upperB ? a < b : upperA < upperB;
    });
    for (const auto& name : names) roots.push_back(BuildPath(folder, name));
  }

  template <class Body>
  bool Tried(const Body& body) {
    return Trap(body, [&](const Fault& caught) { found_.Troubles.push_back(caught.Text); });
  }

  const FileSystem& files_;
  const std::string game_;
  FoundPacks found_;
};

}  // namespace

FoundPacks FindPacks(const Services& services, const std::string& gamePath) {
  return Finder(services, gamePath).Run();
}

}  // namespace rws
