#include "catalogues/own_entries.h"
#include "fuzz/support.h"
#include "map/map_pictures.h"

/** Reads the entries of the user's own, and adds to them; the same for pictures of maps. */

namespace {

using namespace rws;

void RequireAircraftAdded(std::string_view bytes) {
  const OwnEntries before = ParseOwnEntries(bytes);
  OwnAircraft entry{"NEW_PLANE", "New Plane", true, false, "New-Plane", {"2xFAB100"}, "here"};
  const OwnEntries after = ParseOwnEntries(WithOwnAircraft(bytes, entry));
  fuzz::Require(!after.Aircraft.empty() && after.Aircraft.back() == entry,
                "An entry is read as it was written.");
  fuzz::Require(after.Maps == before.Maps, "Entries of maps stay.");
  std::size_t others = 0;
  for (const auto& one : before.Aircraft) {
    if (one.Class == entry.Class) continue;
    fuzz::Require(others < after.Aircraft.size() && after.Aircraft[others] == one,
                  "Entries of others stay.");
    ++others;
  }
  fuzz::Require(after.Aircraft.size() == others + 1, "There is one entry for a class.");
}

void RequireMapAdded(std::string_view bytes) {
  const OwnMap entry{"New/load.ini", "New", "there"};
  const OwnEntries after = ParseOwnEntries(WithOwnMap(bytes, entry));
  fuzz::Require(!after.Maps.empty() && after.Maps.back() == entry,
                "An entry is read as it was written.");
  fuzz::Require(after.Aircraft == ParseOwnEntries(bytes).Aircraft, "Entries of aircraft stay.");
}

void RequirePictureAdded(std::string_view bytes) {
  const MapPicture picture{"New/load.ini", "new.png", {0, 1.5, 2000, 3000}, 0.5};
  const std::string text = WithMapPicture(bytes, picture);
  const auto read = PictureOfMap(text, "NEW/LOAD.INI");
  fuzz::Require(
      read && read->File == picture.File && read->Place.Bottom == 1.5 && read->Opacity == 0.5,
      "A picture is read as it was written.");
  fuzz::RequireSame(WithMapPicture(text, picture), text, "It is there once.");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes = fuzz::TextOf(data, size);
  RequireAircraftAdded(bytes);
  RequireMapAdded(bytes);
  RequirePictureAdded(bytes);
  Document doc;
  Catalogues tables;
  tables.Aircraft = {{"Red", "P-51D", "P_51D20NA", "", "", {{"Default", "default"}}, true, false}};
  ApplyOwnEntries(doc, tables, fuzz::QuietServices(), ParseOwnEntries(bytes));
  for (const auto& aircraft : tables.Aircraft)
    fuzz::Require(!aircraft.Name.empty() && !aircraft.Class.empty(), "Every aircraft has a name.");
  return 0;
}
