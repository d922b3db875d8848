#include <array>

#include "catalogues/aircraft.h"
#include "catalogues/countries.h"
#include "catalogues/dogfight.h"
#include "catalogues/maps.h"
#include "catalogues/squadrons.h"
#include "catalogues/table_text.h"
#include "catalogues/weapons.h"
#include "fuzz/support.h"
#include "services/text.h"

/** Loads the six tables, which the input holds one behind the other, parted by zero bytes, and
   looks up what they hold. */

namespace {

using namespace rws;

constexpr std::array kTables{"RWS_Aircraft.txt",  "RWS_Weapons.txt", "RWS_Squadron.txt",
                             "RWS_Countries.txt", "RWS_DF.txt",      "RWS_Maps.txt"};

/** Services whose tables are those of the input. Only what has changed is written. */
Services WriteTables(std::string_view input) {
  static std::array<std::string, kTables.size()> written;
  static bool first = true;
  const auto parts = SplitAt(input, '\0');
  Services services = fuzz::QuietServices();
  for (std::size_t i = 0; i < kTables.size(); ++i) {
    const std::string bytes(i < parts.size() ? parts[i] : "");
    if (first || bytes != written[i]) services.AppPath = fuzz::WriteScratch(kTables[i], bytes);
    written[i] = bytes;
  }
  static const std::string folder = services.AppPath;
  first = false;
  services.AppPath = services.ProgramPath = folder;
  return services;
}

void LookUp(Catalogues& tables, const Services& services) {
  for (std::size_t row = 0; row < tables.Aircraft.size() && row < 8; ++row) {
    const Aircraft aircraft = tables.Aircraft[row];
    fuzz::Require(!AircraftOf(tables, aircraft.Name) == false, "An aircraft is found by its name.");
    fuzz::Require(FindClass(tables, services.Page, aircraft.Class), "And by its class.");
    fuzz::Require(aircraft.Weapons.size() >= 2, "It has the usual loadouts.");
    const WeaponList list = MakeWeaponList(tables, aircraft.Name);
    DisplayWeps(tables, services, list.Tag, "2xFAB100");
    GetWeaponName(tables, services, aircraft.Name, list.Rows.back());
    GetPlaneName(tables, services, aircraft.Class);
  }
  for (std::size_t row = 0; row < tables.Squadrons.size() && row < 8; ++row) {
    const Squadron squadron = tables.Squadrons[row];
    fuzz::Require(!squadron.Regiments.empty(), "A group has regiments.");
    const std::string flight = squadron.Regiments[0].Code + "00";
    GetArmyByGroup(tables, services, flight);
    GetColorByGroup(tables, services, flight);
    GetUserDatabyGroup(tables, services, flight);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view input = fuzz::TextOf(data, size);
  const Services services = WriteTables(input);
  Document doc;
  Catalogues tables;
  LoadMaps(doc, services);
  LoadAircraftArray(doc, tables, services);
  LoadRegiments(tables, services);
  LoadAC(tables, services);
  ReadDogFight(tables, services);
  LookUp(tables, services);
  std::size_t commas = 0, kept = 0;
  const std::string text = TableText(services.Page, std::string(input));
  for (const char c : input) commas += c == ',';
  for (const char c : text) kept += c == ',';
  fuzz::Require(commas == kept, "No comma comes or goes.");
  return 0;
}
