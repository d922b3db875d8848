#include <array>
#include <filesystem>

#include "catalogues/own_entries.h"
#include "fuzz/support.h"
#include "gamelists/game_names.h"
#include "gamelists/properties.h"
#include "gamelists/sect_text.h"
#include "services/text.h"

/** Reads the lists of a game with a pack of mods, which the input holds one behind the other,
   parted by zero bytes; and what was kept of an earlier reading. */

namespace {

using namespace rws;

constexpr std::array kFiles{"il2fb.ini",
                            "conf.ini",
                            "#UP#/one/com/maddox/il2/objects/air.ini",
                            "#UP#/one/com/maddox/il2/objects/stationary.ini",
                            "#UP#/one/i18n/plane.properties",
                            "#UP#/one/i18n/weapons_ru.properties",
                            "#UP#/one/maps/all.ini",
                            "#UP#/one/PaintSchemes/regiments.ini",
                            "#UP#/one/i18n/regShort.properties"};

std::string WriteGame(std::string_view input) {
  static std::array<std::string, kFiles.size()> written;
  static std::string folder;
  const auto parts = SplitAt(input, '\0');
  for (std::size_t i = 0; i < kFiles.size(); ++i) {
    const std::string bytes(i < parts.size() ? parts[i] : "");
    if (folder.empty() || bytes != written[i]) folder = fuzz::WriteScratch(kFiles[i], bytes);
    written[i] = bytes;
  }
  return folder;
}

void ReadGame(std::string_view input) {
  static Services services = fuzz::QuietServices();
  const std::string game = WriteGame(input);
  services.AppPath = services.ProgramPath = game;
  FindPacks(services, game);
  const GamePack pack{"UP", "#UP#", {game + "/#UP#/one"}};
  KeptLists kept;
  kept.Lists = ReadGameLists(services, pack, GameLanguage(services, game));
  kept.Lists.Pack = pack;
  const std::string packed = PackLists(kept);
  const auto unpacked = UnpackLists(packed);
  fuzz::Require(unpacked && PackLists(*unpacked) == packed, "What is kept is read again.");
  Document doc;
  Catalogues tables;
  GameNames names;
  names.Kept = std::make_shared<const KeptLists>(std::move(kept));
  ApplyGameNames(doc, tables, services, names, {});
  NamesText(names, {});
}

/** Views stand in the text, in order. */
void ReadText(std::string_view text) {
  std::size_t line = 0;
  for (const auto& one : SectLines(text)) {
    fuzz::Require(one.Line > line && !one.Key.empty(), "Lines follow each other and have a key.");
    line = one.Line;
    for (const auto word : SectWords(one.Value)) fuzz::Require(!word.empty(), "Words are words.");
  }
  const Properties properties(text);
  Properties other;
  other.Complete(properties);
  fuzz::Require(other.All().size() == properties.All().size(), "Each key has one text.");
  for (const auto& one : properties.All())
    fuzz::Require(properties.Find(one.Key) == &one, "A text is found by its key.");
  if (const auto lists = UnpackLists(text))
    fuzz::Require(UnpackLists(PackLists(*lists)).has_value(), "What was kept can be kept again.");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view input = fuzz::TextOf(data, size);
  ReadText(input);
  ReadGame(input);
  return 0;
}
