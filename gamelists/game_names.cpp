#include "gamelists/game_names.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "catalogues/listed_names.h"
#include "catalogues/own_entries.h"
#include "services/error_log.h"
#include "services/faults.h"
#include "services/numbers.h"
#include "services/paths.h"
#include "services/setting_values.h"
#include "services/text.h"

namespace rws {

namespace {

constexpr std::uint64_t kMostKept = 256 * 1024 * 1024;

bool SamePack(const GamePack& a, const GamePack& b) {
  return a.Name == b.Name && a.Folders == b.Folders && a.Roots == b.Roots;
}

/** The pack that counts; null where there is none, or the user must choose. */
const GamePack* ChosenPack(const FoundPacks& found, const NameChoices& choices) {
  if (found.Packs.size() == 1) return &found.Packs.front();
  for (const auto& pack : found.Packs)
    if (EqualNoCase(pack.Folders, choices.Pack)) return &pack;
  return nullptr;
}

std::string LanguageOf(const Services& services, const std::string& gamePath,
                       const NameChoices& choices) {
  return choices.Language.empty() ? GameLanguage(services, gamePath) : choices.Language;
}

std::optional<KeptLists> TakeKept(const Services& services, const std::string& keptIn,
                                  const GamePack& pack, const std::string& language) {
  std::optional<KeptLists> kept;
  ResumeNext([&] {
    if (!keptIn.empty() && services.Files.FileExists(keptIn))
      kept = UnpackLists(services.Files.ReadFile(keptIn, kMostKept));
  });
  if (!kept || !SamePack(kept->Lists.Pack, pack) || kept->Language != language ||
      !IsAsSeen(services.Files, kept->Seen)) {
    return {};
  }
  return kept;
}

std::string Counted(std::size_t count, const char* what) {
  std::string digits = std::to_string(count);
  for (std::size_t i = digits.size(); i > 3; i -= 3) digits.insert(i - 3, ",");
  return digits + " " + what;
}

}  // namespace

NameChoices ReadNameChoices(const Settings& settings) {
  NameChoices choices;
  choices.UseLists = ReadFlag(settings, setting::UseLists);
  choices.Pack = ReadSetting(settings, setting::ListsPack);
  choices.Language = ReadSetting(settings, setting::ListsLanguage);
  choices.UnlistedFlyable = ReadFlag(settings, setting::UnlistedFlyable);
  return choices;
}

void WriteNameChoices(const Settings& settings, const NameChoices& choices) {
  const auto flag = [](bool on) { return on ? "True" : "False"; };
  WriteSetting(settings, setting::UseLists, flag(choices.UseLists));
  WriteSetting(settings, setting::ListsPack, choices.Pack);
  WriteSetting(settings, setting::ListsLanguage, choices.Language);
  WriteSetting(settings, setting::UnlistedFlyable, flag(choices.UnlistedFlyable));
}

GameNames FindGameNames(const Services& services, const std::string& gamePath,
                        const NameChoices& choices, const std::string& keptIn, const TellWork& told,
                        ReadLists how) {
  GameNames names;
  names.Own = services.Files.Stamp(OwnEntriesFile(services));
  if (!choices.UseLists) return names;
  const FoundPacks found = FindPacks(services, gamePath);
  names.Packs = found.Packs;
  names.Troubles = found.Troubles;
  const GamePack* pack = ChosenPack(found, choices);
  names.MustChoose = !pack && !found.Packs.empty();
  if (!pack) return names;
  const std::string language = LanguageOf(services, gamePath, choices);
  if (how == ReadLists::IfChanged)
    if (auto kept = TakeKept(services, keptIn, *pack, language)) {
      names.Kept = std::make_shared<const KeptLists>(std::move(*kept));
      return names;
    }
  KeptLists read;
  read.Lists = ReadGameLists(services, *pack, language, told);
  names.IsCancelled = read.Lists.IsCancelled;
  if (names.IsCancelled || read.Lists.IsEmpty()) {
    for (const auto& trouble : read.Lists.Troubles)
      names.Troubles.push_back(trouble.Path + ": " + trouble.Text);
    return names;
  }
  read.Language = language;
  if (services.System.Now) read.ReadAt = TimeText(services.System.Now());
  read.Seen = LookAtLists(services.Files, read.Lists);
  // Kept or not, the names are there.
  if (!keptIn.empty())
    LogAndLeave(services, "FindGameNames",
                [&] { services.Files.ReplaceFile(keptIn, PackLists(read)); });
  names.Kept = std::make_shared<const KeptLists>(std::move(read));
  return names;
}

bool AreCurrent(const Services& services, const std::string& gamePath, const NameChoices& choices,
                const GameNames& names) {
  if (services.Files.Stamp(OwnEntriesFile(services)) != names.Own) return false;
  if (!choices.UseLists) return !names.Kept;
  const FoundPacks found = FindPacks(services, gamePath);
  const GamePack* pack = ChosenPack(found, choices);
  if (!pack || !names.Kept) return !pack && !names.Kept;
  return SamePack(*pack, names.Kept->Lists.Pack) &&
         LanguageOf(services, gamePath, choices) == names.Kept->Language &&
         IsAsSeen(services.Files, names.Kept->Seen);
}

std::string KeptListsFile(const Services& services) {
  return services.AppPath.empty() ? "" : BuildPath(services.AppPath, "RWS Lists.dat");
}

std::shared_ptr<const ListedNames> ListedOf(const GameNames& names) {
  if (!names.Kept) return nullptr;
  return {names.Kept, &names.Kept->Lists.Names};
}

void ApplyGameNames(Document& doc, Catalogues& catalogues, const Services& services,
                    const GameNames& names, const NameChoices& choices) {
  catalogues.Listed.reset();
  catalogues.ListedDogFight.clear();
  catalogues.Listed = ListedOf(names);
  catalogues.UnlistedFlyable = choices.UnlistedFlyable;
  if (catalogues.Listed)
    ApplyListedNames(doc, catalogues, services, *catalogues.Listed,
                     choices.UnlistedFlyable ? Unlisted::Flyable : Unlisted::NotFlyable);
  ApplyOwnEntries(doc, catalogues, services, ReadOwnEntries(services));
}

std::string NamesText(const GameNames& names, const NameChoices& choices) {
  constexpr const char kBuiltIn[] =
      "Built-in tables, game 4.10.1 and what is known of 4.11 to 4.13";
  if (!names.Kept) {
    if (!choices.UseLists) return std::string(kBuiltIn) + "; the lists of the game are not used";
    if (names.MustChoose)
      return std::string(kBuiltIn) + "; the game has " + std::to_string(names.Packs.size()) +
             " packs, choose one";
    if (names.IsCancelled) return std::string(kBuiltIn) + "; reading the lists was stopped";
    return kBuiltIn;
  }
  const GameLists& lists = names.Kept->Lists;
  std::size_t loadouts = 0;
  for (const auto& aircraft : lists.Names.Aircraft) loadouts += aircraft.Loadouts.size();
  std::string text = lists.Pack.Name;
  if (lists.Pack.Name != lists.Pack.Folders) text += " in " + lists.Pack.Folders;
  text += ": " + Counted(lists.Names.Aircraft.size(), "aircraft") + ", " +
          Counted(loadouts, "loadouts") + ", " + Counted(lists.Names.Maps.size(), "maps") + ", " +
          Counted(lists.Names.Regiments.size(), "squadrons");
  if (!names.Kept->ReadAt.empty()) text += "; read " + names.Kept->ReadAt.substr(0, 10);
  if (!lists.Troubles.empty())
    text += "; " + Counted(lists.Troubles.size(), "lines or files not understood");
  return text;
}

}  // namespace rws
