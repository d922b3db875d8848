#include "cli/lists.h"

#include <iostream>
#include <nlohmann/json.hpp>

#include "cli/printing.h"
#include "library/check_files.h"

namespace rws {

namespace {

using Json = nlohmann::ordered_json;

void PrintJson(const GameLists& lists) {
  const auto print = [](const Json& json) {
    std::cout << json.dump(-1, ' ', false, Json::error_handler_t::replace) << "\n";
  };
  for (const auto& source : lists.Sources)
    print({{"list", source.List}, {"entries", source.Entries}, {"path", source.Path}});
  for (const auto& trouble : lists.Troubles)
    print({{"trouble", trouble.Text},
           {"path", trouble.Path},
           {"line", trouble.Line > 0 ? Json(trouble.Line) : Json()}});
}

void PrintTable(const GameLists& lists) {
  std::vector<std::vector<std::string>> lines{{"List", "Entries", "File"}};
  for (const auto& source : lists.Sources)
    lines.push_back({source.List, std::to_string(source.Entries), OnOneLine(source.Path)});
  PrintAligned(lines, {false, true, false});
  for (const auto& trouble : lists.Troubles) {
    std::cout << OnOneLine(trouble.Path);
    if (trouble.Line > 0) std::cout << ":" << trouble.Line;
    std::cout << ": " << OnOneLine(trouble.Text) << "\n";
  }
}

}  // namespace

GameNames NamesFor(const Services& services, const CliOptions& options, const std::string& path) {
  NameChoices choices;
  choices.UseLists = !options.NoLists;
  const std::string game = options.Game.empty() ? GameAbove(services.Files, path) : options.Game;
  return FindGameNames(services, game, choices, "");
}

void ApplyNames(Document& doc, Catalogues& tables, const Services& services,
                const CliOptions& options, const std::string& path) {
  ApplyGameNames(doc, tables, services, NamesFor(services, options, path), {});
}

int Lists(const Services& services, const CliOptions& options, const ListsOptions& lists) {
  if (options.Game.empty()) {
    Complain("name the game's directory by --game");
    return kBadUsage;
  }
  NameChoices choices;
  choices.Pack = lists.Pack;
  choices.Language = lists.Language;
  const GameNames names = FindGameNames(services, options.Game, choices, "");
  for (const auto& trouble : names.Troubles) Complain(trouble);
  if (names.MustChoose) {
    Complain("the game does not tell which of its packs is on; name one by --pack:");
    for (const auto& pack : names.Packs) std::cerr << "  " << pack.Folders << "\n";
    return kFailed;
  }
  const bool isJson = lists.Format == "json";
  if (!isJson) std::cout << NamesText(names, choices) << "\n";
  if (names.Kept) (isJson ? PrintJson : PrintTable)(names.Kept->Lists);
  return std::cout.flush() && names.Troubles.empty() ? kDone : kFailed;
}

}  // namespace rws
