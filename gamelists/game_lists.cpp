#include "gamelists/game_lists.h"

#include <algorithm>
#include <array>
#include <optional>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "gamelists/properties.h"
#include "gamelists/sect_text.h"
#include "services/code_page.h"
#include "services/faults.h"
#include "services/ini_file.h"
#include "services/paths.h"
#include "services/text.h"

namespace rws {

namespace {

/** No list of a real pack comes near it; what is larger is something else. */
constexpr std::uint64_t kMostBytes = 64 * 1024 * 1024;
constexpr std::string_view kClassStart = "air.", kPlaceholder = "air.Placeholder",
                           kParkedStart = "vehicles.planes.Plane$";

/** Keys of headings in lists of maps and parked aircraft. */
bool IsHeading(std::string_view key) {
  return key.empty() || std::string_view("*#/-+").find(key[0]) != std::string_view::npos;
}

bool IsRussian(const std::string& language) { return language == "ru"; }

bool HasCyrillic(std::string_view utf8) {
  for (std::size_t i = 0; i < utf8.size();) {
    const char32_t c = NextCharacter(utf8, i);
    if (c >= 0x400 && c < 0x530) return true;
  }
  return false;
}

ListedArmy ArmyOf(std::string_view word) {
  if (word == "1") return ListedArmy::Red;
  if (word == "2") return ListedArmy::Blue;
  return ListedArmy::None;
}

/** A word behind an aircraft that only tells how the game's viewer shows it. */
bool IsViewerWord(std::string_view word) {
  constexpr std::array<std::string_view, 5> kWords{"NOINFO", "NOQUICK", "SUMMER", "WINTER",
                                                   "DESERT"};
  return std::find(kWords.begin(), kWords.end(), word) != kWords.end();
}

class Reading {
 public:
  Reading(const Services& services, const GamePack& pack, std::string language,
          const TellWork& told)
      : files_(services.Files), language_(std::move(language)), told_(told) {
    lists_.Pack = pack;
  }

  GameLists Run() {
    using Step = void (Reading::*)();
    constexpr std::array<std::pair<const char*, Step>, kLists> kSteps{
        {{"air.ini", &Reading::ReadAircraft},
         {"weapons", &Reading::ReadLoadouts},
         {"all.ini", &Reading::ReadMaps},
         {"regiments.ini", &Reading::ReadRegiments},
         {"stationary.ini", &Reading::ReadParked}}};
    for (; step_ < kSteps.size(); ++step_) {
      name_ = kSteps[step_].first;
      if (IsGivenUp()) break;
      (this->*kSteps[step_].second)();
    }
    if (told_) told_({kSteps.size(), kSteps.size()});
    return std::move(lists_);
  }

 private:
  /** The folders that the pack has for a path with "/", the one that counts most first. A pack may
      have hundreds of mods, and many lists lie in one folder: each is looked for once. */
  const std::vector<std::string>& FoldersOf(const std::string& path) {
    const auto [place, isNew] = folders_.try_emplace(path);
    if (!isNew) return place->second;
    for (const auto& root : lists_.Pack.Roots)
      if (std::string folder = files_.FindFolder(BuildPath(root, path)); !folder.empty())
        place->second.push_back(std::move(folder));
    return place->second;
  }

  /** The file that the game takes for a path with "/"; "" for none. */
  std::string FileInPack(const std::string& path) {
    const std::string name = GetFileName(path);
    for (const auto& folder : FoldersOf(GetParentFolderName(path)))
      if (std::string file = files_.FindFile(BuildPath(folder, name)); !file.empty()) return file;
    return "";
  }

  /** The bytes of the file that the game takes for a path; nothing, told, if it cannot be read. */
  std::optional<std::string> Take(const std::string& path, std::string& file) {
    file = FileInPack(path);
    if (file.empty()) return {};
    std::string bytes;
    const auto read = [&] { bytes = files_.ReadFile(file, kMostBytes); };
    if (!Trap(read, [&](const Fault& caught) { Tell(file, 0, caught.Text); })) return {};
    if (bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF")) {
      Tell(file, 0, "It is in UTF-16, which the game cannot read.");
      return {};
    }
    return bytes;
  }

  /** Asks the user, who may give up within a long list too. */
  bool IsGivenUp() {
    if (told_ && !told_({step_, kLists, name_, "List"})) lists_.IsCancelled = true;
    return lists_.IsCancelled;
  }

  void Tell(const std::string& path, std::size_t line, std::string text) {
    lists_.Troubles.push_back({path, line, std::move(text)});
  }

  void AddSource(const char* list, const std::string& path, std::size_t entries) {
    lists_.Sources.push_back({list, path, entries});
  }

  /** The texts of a list, those of the player's language first. */
  Properties ReadTexts(const char* list, const std::string& name) {
    Properties texts;
    std::vector<std::string> suffixes{"_" + language_, ""};
    if (!IsRussian(language_)) suffixes.emplace_back("_ru");
    for (const auto& suffix : suffixes) {
      std::string file;
      const auto bytes = Take("i18n/" + name + suffix + ".properties", file);
      if (!bytes) continue;
      Properties read(*bytes);
      if (const std::size_t line = read.MalformedLine(); line > 0)
        Tell(file, line, "A malformed \"\\u\": the game shows none of the file's texts.");
      AddSource(list, file, read.All().size());
      texts.Complete(suffix == "_ru" && !IsRussian(language_) ? WithoutCyrillic(read) : read);
    }
    return texts;
  }

  /** Packs keep English texts in the Russian file; a Russian one helps no other player. */
  static Properties WithoutCyrillic(const Properties& texts) {
    Properties kept;
    for (const auto& property : texts.All())
      if (!HasCyrillic(property.Text)) kept.Add(property);
    return kept;
  }

  static std::string TextOf(const Properties& texts, const std::string& key) {
    const Property* found = texts.Find(key);
    return found ? found->Text : "";
  }

  std::string Utf8(std::string_view bytes) const { return page_.ToUtf8(bytes); }

  void ReadAircraft();
  void TakeAircraft(const std::string& file, const SectLine& line);
  void ReadLoadouts();
  void ReadMaps();
  void ReadRegiments();
  void ReadCountries(const std::vector<SectLine>& lines);
  void ReadParked();

  static constexpr std::size_t kLists = 5, kLinesPerStep = 10'000;

  const FileSystem& files_;
  std::size_t step_ = 0;
  std::string_view name_;
  const std::string language_;
  const TellWork& told_;
  const CodePage& page_ = ListsPage();
  GameLists lists_;
  std::unordered_map<std::string, std::size_t> byKey_, byClass_;  // rows of `Aircraft`
  std::unordered_map<std::string, std::vector<std::string>> folders_;
};

void Reading::ReadAircraft() {
  std::string file;
  const auto bytes = Take("com/maddox/il2/objects/air.ini", file);
  if (!bytes) return;
  std::size_t taken = 0;
  for (const auto& line : SectLines(*bytes)) {
    if (++taken % kLinesPerStep == 0 && IsGivenUp()) return;
    TakeAircraft(file, line);
  }
  AddSource("aircraft", file, lists_.Names.Aircraft.size());
  const Properties texts = ReadTexts("aircraft names", "plane");
  for (auto& aircraft : lists_.Names.Aircraft) aircraft.Name = TextOf(texts, aircraft.Key);
}

void Reading::TakeAircraft(const std::string& file, const SectLine& line) {
  if (line.Key.starts_with('*')) return;
  const auto words = SectWords(line.Value);
  if (words.empty() || !words[0].starts_with(kClassStart) ||
      words[0].size() == kClassStart.size()) {
    Tell(file, line.Line, "Not an aircraft: \"" + Utf8(line.Key) + "\" has no class \"air.\".");
    return;
  }
  if (words[0].starts_with(kPlaceholder)) return;
  ListedAircraft aircraft;
  aircraft.Key = Utf8(line.Key);
  aircraft.Class = Utf8(words[0].substr(kClassStart.size()));
  aircraft.Army = words.size() > 1 ? ArmyOf(words[1]) : ListedArmy::None;
  for (std::size_t i = 2; i < words.size() && aircraft.DefaultCode.empty(); ++i)
    if (!IsViewerWord(words[i])) aircraft.DefaultCode = Utf8(words[i]);
  // A class has one row: its later key is the one that the game shows it by.
  const auto [place, isNew] = byClass_.try_emplace(aircraft.Class, lists_.Names.Aircraft.size());
  byKey_[aircraft.Key] = place->second;
  if (isNew)
    lists_.Names.Aircraft.push_back(std::move(aircraft));
  else
    lists_.Names.Aircraft[place->second] = std::move(aircraft);
}

/** "KEY.loadout text": a key may hold full stops itself, so that the longest one counts. */
void Reading::ReadLoadouts() {
  if (lists_.Names.Aircraft.empty()) return;
  const Properties texts = ReadTexts("loadouts", "weapons");
  std::size_t taken = 0;
  for (const auto& property : texts.All()) {
    if (++taken % kLinesPerStep == 0 && IsGivenUp()) return;
    const std::string& key = property.Key;
    for (std::size_t dot = key.rfind('.'); dot != key.npos && dot > 0;
         dot = key.rfind('.', dot - 1)) {
      const auto found = byKey_.find(key.substr(0, dot));
      if (found == byKey_.end()) continue;
      std::string loadout = key.substr(dot + 1);
      if (!loadout.empty() && loadout != "default" && loadout != "none")
        lists_.Names.Aircraft[found->second].Loadouts.push_back(
            {std::move(loadout), property.Text});
      break;
    }
  }
}

void Reading::ReadMaps() {
  std::string file;
  const auto bytes = Take("maps/all.ini", file);
  if (!bytes) return;
  const Properties texts = ReadTexts("map names", "maps");
  std::unordered_set<std::string> known;
  for (const auto& line : FirstSection(SectLines(*bytes), "all")) {
    if (IsHeading(line.Key)) continue;
    if (line.Value.empty()) {
      Tell(file, line.Line, "The map \"" + Utf8(line.Key) + "\" has no path.");
      continue;
    }
    std::string path = Utf8(line.Value), key = Utf8(line.Key);
    if (!known.insert(path).second) continue;
    std::string name = TextOf(texts, key);
    lists_.Names.Maps.push_back({std::move(path), name.empty() ? std::move(key) : std::move(name)});
  }
  AddSource("maps", file, lists_.Names.Maps.size());
}

void Reading::ReadRegiments() {
  std::string file;
  const auto bytes = Take("PaintSchemes/regiments.ini", file);
  if (!bytes) return;
  const auto lines = SectLines(*bytes);
  const Properties names = ReadTexts("squadron names", "regShort"),
                   infos = ReadTexts("squadron texts", "regInfo");
  constexpr std::array<std::pair<const char*, ListedArmy>, 3> kArmies{
      {{"Red", ListedArmy::Red}, {"Blue", ListedArmy::Blue}, {"NoNe", ListedArmy::None}}};
  std::unordered_set<std::string> known;
  for (const auto& [section, army] : kArmies)
    for (const auto& line : FirstSection(lines, section)) {
      const std::string code = Utf8(line.Key);
      if (!known.insert(code).second) continue;
      lists_.Names.Regiments.push_back(
          {code, TextOf(names, code), TextOf(infos, code), "", "", army});
    }
  AddSource("squadrons", file, lists_.Names.Regiments.size());
  ReadCountries(lines);
  const Properties countries = ReadTexts("countries", "country");
  for (const auto& country : countries.All())
    lists_.Names.Countries.push_back({page_.LCase(country.Key), country.Text});
}

/** A squadron's own file tells its country; mostly only the game's archives have it. */
void Reading::ReadCountries(const std::vector<SectLine>& lines) {
  std::unordered_map<std::string, std::string> branches;
  for (const auto& line : FirstSection(lines, "branch"))
    branches.emplace(page_.LCase(line.Key), page_.LCase(line.Value));
  constexpr std::array<const char*, 3> kFolders{"None", "Red", "Blue"};
  // Few packs have any of these files, and none has to be looked for where there is no folder.
  std::array<std::unordered_set<std::string>, 3> present;
  for (std::size_t i = 0; i < kFolders.size(); ++i)
    for (const auto& folder : FoldersOf(std::string("PaintSchemes/") + kFolders[i]))
      Trap(
          [&] {
            for (const auto& entry : files_.ListFolder(folder))
              if (entry.IsFile) present[i].insert(FoldName(entry.Name));
          },
          [&](const Fault& caught) { Tell(folder, 0, caught.Text); });
  for (auto& regiment : lists_.Names.Regiments) {
    const auto army = static_cast<std::size_t>(regiment.Army);
    if (!present[army].contains(FoldName(regiment.Code))) continue;
    std::string file;
    const auto bytes =
        Take(std::string("PaintSchemes/") + kFolders[army] + "/" + regiment.Code, file);
    if (!bytes) continue;
    regiment.Branch = page_.LCase(TextOf(Properties(*bytes), "country"));
    const auto branch = branches.find(regiment.Branch);
    regiment.Country = branch == branches.end() ? regiment.Branch : branch->second;
  }
}

void Reading::ReadParked() {
  std::string file;
  const auto bytes = Take("com/maddox/il2/objects/stationary.ini", file);
  if (!bytes) return;
  for (const auto& line : FirstSection(SectLines(*bytes), "StationaryPlanes")) {
    const auto words = SectWords(line.Value);
    if (!words.empty() && words[0].starts_with(kParkedStart))
      lists_.Names.Parked.push_back({Utf8(line.Key), Utf8(words[0].substr(kParkedStart.size()))});
    else if (!IsHeading(line.Key))
      Tell(file, line.Line, "Not a parked aircraft: \"" + Utf8(line.Key) + "\".");
  }
  AddSource("parked aircraft", file, lists_.Names.Parked.size());
}

}  // namespace

GameLists ReadGameLists(const Services& services, const GamePack& pack, const std::string& language,
                        const TellWork& told) {
  return Reading(services, pack, language, told).Run();
}

std::string GameLanguage(const Services& services, const std::string& gamePath) {
  std::string language;
  ResumeNext([&] {
    language = ReadIniValue(services, BuildPath(gamePath, "conf.ini"), "rts", "locale", "us");
  });
  const std::string_view word = Trim(language);
  const bool isWord = word.size() == 2 && std::all_of(word.begin(), word.end(), [](char c) {
                        return LowerAscii(c) >= 'a' && LowerAscii(c) <= 'z';
                      });
  if (!isWord) return "us";
  return {LowerAscii(word[0]), LowerAscii(word[1])};
}

}  // namespace rws
