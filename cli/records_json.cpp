#include "cli/records_json.h"

#include <nlohmann/json.hpp>

#include "services/code_page.h"

namespace rws {

namespace {

using Json = nlohmann::ordered_json;

Json Record(const Flight& flight);

Json Text(std::string_view bytes) {
  std::string utf8;
  for (const char byte : bytes) AppendUtf8(utf8, static_cast<unsigned char>(byte));
  return utf8;
}

template <class Array, class Convert>
Json List(const Array& array, Convert convert) {
  Json list = Json::array();
  for (std::size_t i = 0; i < array.size(); ++i) list.push_back(convert(array[i]));
  return list;
}

Json Record(const PlaneSlot& slot) {
  return {{"Skill", Text(slot.Skill)},       {"Skin", Text(slot.Skin)},
          {"NoseArt", Text(slot.NoseArt)},   {"Pilot", Text(slot.Pilot)},
          {"Reserved", Text(slot.Reserved)}, {"NumberOn", Text(slot.NumberOn)}};
}

Json Record(const Waypoint& waypoint) {
  return {{"Alt", Text(waypoint.Alt)},
          {"Speed", Text(waypoint.Speed)},
          {"Type", Text(waypoint.Type)},
          {"Marker", Text(waypoint.Marker)},
          {"X", waypoint.X},
          {"Y", waypoint.Y},
          {"Dist", waypoint.Dist},
          {"Line", Text(waypoint.Line)}};
}

Json Record(const BornPlace& place) {
  return {{"Army", place.Army},
          {"Radius", place.Radius},
          {"Planes", List(place.Planes, Text)},
          {"X", place.X},
          {"Y", place.Y}};
}

template <class Item>
Json Records(const Item& items) {
  return List(items, [](const auto& item) { return Record(item); });
}

Json Record(const Flight& flight) {
  return {{"Fuel", Text(flight.Fuel)},
          {"Planes", Text(flight.Planes)},
          {"Skill", Text(flight.Skill)},
          {"Weapons", Text(flight.Weapons)},
          {"StartTime", Text(flight.StartTime)},
          {"OnlyAI", Text(flight.OnlyAI)},
          {"Class", Text(flight.Class)},
          {"Parachute", Text(flight.Parachute)},
          {"Name", Text(flight.Name)},
          {"PlaneSlots", Records(flight.PlaneSlots)},
          {"Waypoints", Records(flight.Waypoints)},
          {"LastWaypoint", Text(flight.LastWaypoint)},
          {"ArmyWord", Text(flight.ArmyWord)},
          {"Status", Text(flight.Status)},
          {"Shown", flight.Shown}};
}

}  // namespace

std::string MissionJson(const Mission& mission) {
  const Json json = {{"Loaded", mission.Loaded},
                     {"DirPath", Text(mission.DirPath)},
                     {"FileName", Text(mission.FileName)},
                     {"BaseName", Text(mission.BaseName)},
                     {"MapName", Text(mission.MapName)},
                     {"MapPath", Text(mission.MapPath)},
                     {"Time", Text(mission.Time)},
                     {"CloudHeight", Text(mission.CloudHeight)},
                     {"CloudType", Text(mission.CloudType)},
                     {"Army", Text(mission.Army)},
                     {"Player", Text(mission.Player)},
                     {"PlayerNum", Text(mission.PlayerNum)},
                     {"Lines", List(mission.Lines, Text)},
                     {"Flights", Records(mission.Flights)},
                     {"Modified", mission.Modified},
                     {"BornPlaces", Records(mission.BornPlaces)},
                     {"HasBornPlace", mission.HasBornPlace},
                     {"BriefSoundLine", Text(mission.BriefSoundLine)},
                     {"BriefSound", Text(mission.BriefSound)},
                     {"TimeConstant", mission.TimeConstant},
                     {"WeaponsConstant", mission.WeaponsConstant}};
  return json.dump(-1, ' ', true);
}

}  // namespace rws
