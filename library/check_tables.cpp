#include "library/check_tables.h"

#include <algorithm>
#include <iterator>

#include "catalogues/aircraft.h"
#include "catalogues/dogfight.h"
#include "catalogues/listed_names.h"
#include "catalogues/maps.h"
#include "catalogues/own_entries.h"
#include "catalogues/squadrons.h"
#include "services/error_log.h"
#include "services/text.h"

namespace rws {

namespace {

/** Aircraft by which tables that know a version are told from older ones. */
constexpr std::string_view kOf410[] = {"Fulmar1", "Swordfish1",      "CantZ1007bis", "Do217_K1",
                                       "RE_2002", "SPITFIRE5B12LBS", "HE_111H12",    "R_5"};
constexpr std::string_view kOf411[] = {"TBD1",     "CantZ506B", "HS_123A1",
                                       "HS_123B1", "IK_3",      "KI_45_HEI"};

Services QuietOnes(const Services& services) {
  Services quiet = Silent(services);
  quiet.Files = services.Files.ForThreads();
  quiet.Ask = {};
  quiet.Ask.MsgBox = [](const std::string&, Buttons, Icon, const std::string&) {
    return Answer::Ok;
  };
  quiet.Ask.Notice = [](const std::string&) {};
  quiet.System = {};
  quiet.System.PumpEvents = [] {};
  quiet.Window = {};
  return quiet;
}

}  // namespace

CheckTables::CheckTables(const Catalogues& tables, const std::vector<MapRow>& maps,
                         const Services& services)
    : services_(QuietOnes(services)) {
  maps_.Maps = maps;
  for (const auto& aircraft : tables.Aircraft) {
    Plane plane{aircraft.Name, aircraft.Flyable, aircraft.Folder, {}};
    for (const auto& entry : aircraft.Weapons)
      if (entry.Key) plane.Loadouts.insert(Lower(*entry.Key));
    planes_.emplace(Lower(aircraft.Class), std::move(plane));
    parked_.insert(Lower(aircraft.Class));
    if (!aircraft.ParkedClass.empty()) parked_.insert(Lower(aircraft.ParkedClass));
  }
  for (const auto& row : tables.Squadrons)
    for (const auto& regiment : row.Regiments) squadrons_.insert(Lower(Trim(regiment.Code)));
  for (const auto& map : maps) mapPaths_.insert(Lower(Trim(map.Path)));
  for (const auto& plane : tables.DogFightAircraft)
    basePlanes_.insert(Lower(Trim(plane.InternalName)));
  const auto hasOneOf = [&](const auto& classes) {
    return std::any_of(std::begin(classes), std::end(classes), [&](std::string_view planeClass) {
      return FindPlane(planeClass) != nullptr;
    });
  };
  if (!planes_.empty() && !hasOneOf(kOf411))
    age_ = hasOneOf(kOf410) ? GameAge::V410 : GameAge::Before410;
}

const CheckTables::Plane* CheckTables::FindPlane(std::string_view planeClass) const {
  const auto found = planes_.find(Lower(planeClass));
  return found == planes_.end() ? nullptr : &found->second;
}

bool CheckTables::HasParked(std::string_view planeClass) const {
  return parked_.empty() || parked_.contains(Lower(planeClass));
}

bool CheckTables::HasSquadron(std::string_view code) const {
  return squadrons_.empty() || squadrons_.contains(Lower(code));
}

bool CheckTables::HasMap(std::string_view path) const {
  return mapPaths_.empty() || mapPaths_.contains(Lower(path));
}

bool CheckTables::HasBasePlane(std::string_view word) const {
  return basePlanes_.empty() || basePlanes_.contains(Lower(word));
}

std::shared_ptr<const CheckTables> ReadCheckTables(const Services& services,
                                                   const Catalogues& inUse) {
  Services reading = services;
  reading.Window.Close = [] {};
  Document doc;
  Catalogues tables;
  LoadMaps(doc, reading);
  LoadRegiments(tables, reading);
  LoadAircraftArray(doc, tables, reading);
  if (inUse.Listed)
    ApplyListedNames(doc, tables, reading, *inUse.Listed,
                     inUse.UnlistedFlyable ? Unlisted::Flyable : Unlisted::NotFlyable);
  ApplyOwnEntries(doc, tables, reading, ReadOwnEntries(reading));
  ReadDogFight(tables, reading);
  return std::make_shared<const CheckTables>(tables, doc.Maps, services);
}

}  // namespace rws
