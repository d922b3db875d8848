#include "catalogues/own_names.h"

#include <algorithm>

#include "catalogues/aircraft.h"
#include "catalogues/listed_aircraft.h"
#include "catalogues/listed_names.h"
#include "catalogues/listed_text.h"
#include "catalogues/table_text.h"
#include "mission/line_values.h"
#include "services/paths.h"
#include "services/text.h"

namespace rws {

namespace {

/** True if a file of UTF-8 lines gives the word back letter by letter. */
bool CanBeNamed(const CodePage& page, std::string_view word) {
  return !word.empty() && ExactText(page, page.ToUtf8(word)) == word;
}

/** The first character that mission text lacks, base letters apart; "" for none. */
std::string Unspellable(const CodePage& page, std::string_view utf8) {
  for (std::size_t at = 0; at < utf8.size();) {
    const std::size_t first = at;
    NextCharacter(utf8, at);
    const std::string_view one = utf8.substr(first, at - first);
    if (!TextInPage(page, one)) return std::string(one);
  }
  return "";
}

bool HasControl(std::string_view text) {
  return std::any_of(text.begin(), text.end(),
                     [](char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7F'; });
}

std::string WhyNotShown(const CodePage& page, std::string_view name) {
  if (HasControl(name)) return "The name holds a tab or a line end.";
  if (Trim(name).empty()) return "The name is empty.";
  if (const std::string one = Unspellable(page, name); !one.empty())
    return "The name holds \"" + one + "\", which missions cannot spell (Windows-" +
           std::to_string(page.Number()) + ").";
  return "";
}

/** "sload" gives " Summer": which of the maps of a folder it is. */
std::string MapMark(std::string_view file) {
  for (const auto& [name, mark] : {std::pair{"load", ""},
                                   {"sload", " Summer"},
                                   {"load_s", " Summer"},
                                   {"wload", " Winter"},
                                   {"load_w", " Winter"}})
    if (EqualNoCase(file, name)) return mark;
  return " " + std::string(file);
}

}  // namespace

bool CanAddAircraft(const Catalogues& catalogues, const Services& services,
                    std::string_view aircraftClass) {
  return !IsKnownPlane(catalogues, aircraftClass) && CanBeNamed(services.Page, aircraftClass);
}

bool CanAddMap(const Document& doc, const Services& services, std::string_view path) {
  path = Trim(path);
  return CanBeNamed(services.Page, path) && GetMapName(doc, services, path).empty();
}

std::string ProposedAircraftName(const Catalogues& catalogues, const Services& services,
                                 std::string_view aircraftClass) {
  const CodePage& page = services.Page;
  UniqueTexts taken(page);
  for (const auto& row : catalogues.Aircraft) taken.Reserve(row.Name), taken.Reserve(row.Class);
  std::string name(aircraftClass);
  std::replace(name.begin(), name.end(), '_', '-');
  while (name.ends_with('-')) name.pop_back();
  name = PlaneNameText(page, page.ToUtf8(name));
  if (name.empty()) name = aircraftClass;
  return page.ToUtf8(taken.Make(std::move(name), aircraftClass));
}

std::string ProposedAircraftKey(const Catalogues& catalogues, const Services& services,
                                std::string_view aircraftClass) {
  if (!catalogues.Listed) return "";
  const std::string wanted = services.Page.ToUtf8(aircraftClass);
  for (const auto& parked : catalogues.Listed->Parked)
    if (EqualNoCase(parked.Class, wanted)) return parked.Key;
  return "";
}

std::string ProposedMapName(const Document& doc, const Services& services, std::string_view path) {
  const CodePage& page = services.Page;
  path = Trim(path);
  std::string name = GetFileName(GetParentFolderName(path));
  if (name.empty())
    name = GetBaseName(path);
  else
    name += MapMark(GetBaseName(path));
  std::replace(name.begin(), name.end(), '_', ' ');
  name = ShownText(page, page.ToUtf8(name));
  if (name.empty()) name = path;
  UniqueTexts taken(page);
  for (const auto& row : doc.Maps) taken.Reserve(row.Name);
  return page.ToUtf8(taken.Make(std::move(name), path));
}

std::string WhyNotAircraftName(const Catalogues& catalogues, const Services& services,
                               std::string_view aircraftClass, std::string_view name) {
  const CodePage& page = services.Page;
  if (std::string why = WhyNotShown(page, name); !why.empty()) return why;
  const std::string wanted = page.LCase(PlaneNameText(page, name));
  for (const auto& row : catalogues.Aircraft) {
    if (row.Class == aircraftClass) continue;
    if (page.LCase(row.Name) == wanted || page.LCase(row.Class) == wanted)
      return "Another aircraft has this name: the one of the class \"" + page.ToUtf8(row.Class) +
             "\".";
  }
  return "";
}

std::string WhyNotWord(const Services& services, std::string_view what, std::string_view word) {
  if (!ExactText(services.Page, word).empty()) return "";
  return "The " + std::string(what) + " \"" + std::string(word) +
         "\" cannot stand in missions: it must be one word of letters that Windows-" +
         std::to_string(services.Page.Number()) + " has.";
}

std::string WhyNotMapName(const Document& doc, const Services& services, std::string_view path,
                          std::string_view name) {
  const CodePage& page = services.Page;
  if (std::string why = WhyNotShown(page, name); !why.empty()) return why;
  const std::string wanted = page.LCase(ShownText(page, name));
  for (const auto& row : doc.Maps)
    if (page.LCase(row.Name) == wanted && !EqualNoCase(Trim(row.Path), Trim(path)))
      return "Another map has this name: \"" + page.ToUtf8(row.Path) + "\".";
  return "";
}

}  // namespace rws
