#include "map/map_things.h"

#include <algorithm>
#include <cmath>

#include "mission/kept_text.h"
#include "services/numbers.h"
#include "services/text.h"

namespace rws {

namespace {

using Words = std::vector<KeptWord>;

std::string_view WordAt(const Words& words, std::size_t place) {
  return place < words.size() ? words[place].Text : std::string_view();
}

std::optional<double> NumberAt(const Words& words, std::size_t place) {
  const auto number = ParseNumber(WordAt(words, place));
  return number && std::isfinite(*number) ? number : std::nullopt;
}

int WholeAt(const Words& words, std::size_t place, int most) {
  return static_cast<int>(std::clamp(NumberAt(words, place).value_or(0), 0.0, double(most)));
}

std::optional<MapPoint> PointAt(const Words& words, std::size_t place) {
  const auto x = NumberAt(words, place), y = NumberAt(words, place + 1);
  if (!x || !y) return {};
  return MapPoint{*x, *y};
}

std::uint8_t ArmyAt(const Words& words, std::size_t place) {
  constexpr int kLastArmy = 16;
  return static_cast<std::uint8_t>(WholeAt(words, place, kLastArmy));
}

/** Files tell the direction clockwise from east. */
float HeadingAt(const Words& words, std::size_t place) {
  const double degrees = std::fmod(NumberAt(words, place).value_or(0) + 90, 360);
  return static_cast<float>(degrees < 0 ? degrees + 360 : degrees);
}

/** Fills what there is of one mission, section by section. */
class Reading {
 public:
  explicit Reading(const LineArray& lines) : text_(lines) { things_.Lines = lines; }

  MapThings Read() {
    Each("NStationary", [&](const Words& words, std::size_t line) { TakeStatic(words, line, 1); });
    Each("Stationary", [&](const Words& words, std::size_t line) { TakeStatic(words, line, 0); });
    Each("Buildings", [&](const Words& words, std::size_t line) { TakeBuilding(words, line); });
    Each("Chiefs", [&](const Words& words, std::size_t line) { TakeUnit(words, line); });
    Each("Rocket", [&](const Words& words, std::size_t line) { TakeRocket(words, line); });
    Each("StaticCamera", [&](const Words& words, std::size_t line) { TakeCamera(words, line); });
    Each("Target", [&](const Words& words, std::size_t line) { TakeTarget(words, line); });
    Each("BornPlace", [&](const Words& words, std::size_t) { TakeBase(words); });
    Each("FrontMarker", [&](const Words& words, std::size_t line) { TakeMarker(words, line); });
    return std::move(things_);
  }

 private:
  template <class Visit>
  void Each(std::string_view name, Visit visit) {
    const auto* section = text_.Find(name);
    for (std::size_t i = section ? section->First : 0; section && i < section->Last; ++i) {
      KeptWordsInto(words_, things_.Lines[i]);
      if (!words_.empty()) visit(words_, i);
    }
  }

  void Add(const Words& words, std::size_t place, float heading, ObjectKind kind, std::uint8_t army,
           std::size_t line) {
    const auto point = PointAt(words, place);
    if (!point) {
      ++things_.Misplaced;
      return;
    }
    things_.Objects.push_back({*point, heading, kind, army, static_cast<std::uint32_t>(line)});
  }

  /** `shift` is 1 where a name stands ahead of the class. */
  void TakeStatic(const Words& words, std::size_t line, std::size_t shift) {
    const std::size_t before = things_.Objects.size();
    Add(words, shift + 2, HeadingAt(words, shift + 4), KindOfClass(WordAt(words, shift)),
        ArmyAt(words, shift + 1), line);
    if (shift && things_.Objects.size() > before) things_.ByName.emplace(words[0].Text, before);
  }

  void TakeBuilding(const Words& words, std::size_t line) {
    constexpr std::size_t kX = 3, kAngle = 5;
    Add(words, kX, HeadingAt(words, kAngle), ObjectKind::Building, 0, line);
  }

  void TakeRocket(const Words& words, std::size_t line) {
    constexpr std::size_t kArmy = 2, kX = 3, kAngle = 5, kAimX = 9;
    const std::size_t before = things_.Objects.size();
    Add(words, kX, HeadingAt(words, kAngle), ObjectKind::Rocket, ArmyAt(words, kArmy), line);
    if (things_.Objects.size() == before) return;
    things_.ByName.emplace(words[0].Text, before);
    const auto aim = PointAt(words, kAimX);
    if (!aim) return;
    MapObject& ramp = things_.Objects.back();
    ramp.Heading = static_cast<float>(HeadingOf(ramp.At, *aim));
    things_.Rockets.push_back({ramp.At, *aim, ramp.Army});
  }

  void TakeCamera(const Words& words, std::size_t line) {
    constexpr std::size_t kX = 0, kArmy = 3;
    Add(words, kX, 0, ObjectKind::Camera, ArmyAt(words, kArmy), line);
  }

  void TakeTarget(const Words& words, std::size_t line) {
    constexpr std::size_t kType = 0, kImportance = 1, kX = 5, kRadius = 7;
    const auto point = PointAt(words, kX);
    if (!point) {
      ++things_.Misplaced;
      return;
    }
    const double radius = std::max(NumberAt(words, kRadius).value_or(0), 0.0);
    things_.Targets.push_back({*point, radius, WholeAt(words, kType, 99),
                               WholeAt(words, kImportance, 99), static_cast<std::uint32_t>(line)});
  }

  void TakeBase(const Words& words) {
    constexpr std::size_t kArmy = 0, kRadius = 1, kX = 2;
    const auto point = PointAt(words, kX);
    const double radius = std::max(NumberAt(words, kRadius).value_or(0), 0.0);
    if (point) things_.Bases.push_back({bases_, *point, radius, ArmyAt(words, kArmy)});
    ++bases_;
  }

  void TakeMarker(const Words& words, std::size_t) {
    constexpr std::size_t kX = 1, kArmy = 3;
    // The game reads no others.
    if (!WordAt(words, 0).starts_with("FrontMarker")) return;
    if (const auto point = PointAt(words, kX))
      things_.Markers.push_back({*point, ArmyAt(words, kArmy)});
    else
      ++things_.Misplaced;
  }

  void TakeUnit(const Words& words, std::size_t line) {
    constexpr std::size_t kType = 1, kArmy = 2;
    MapUnit unit;
    unit.Name = words[0].Text;
    unit.Type = WordAt(words, kType);
    unit.Kind = KindOfUnit(unit.Type);
    unit.Army = ArmyAt(words, kArmy);
    unit.Line = static_cast<std::uint32_t>(line);
    if (const auto* road = text_.Find(std::string(unit.Name) + "_Road")) TakeRoad(unit, *road);
    if (unit.Road.empty())
      ++things_.Misplaced;
    else
      things_.Units.push_back(std::move(unit));
  }

  /** The road's own lines: those with times are set by the user, and the last one is. */
  void TakeRoad(MapUnit& unit, const KeptSection& road) {
    constexpr std::size_t kX = 0, kWidth = 2, kMinutes = 3;
    Words words;
    int bridge = 0;
    for (std::size_t i = road.First; i < road.Last; ++i) {
      KeptWordsInto(words, things_.Lines[i]);
      const auto point = PointAt(words, kX);
      if (!point) continue;
      const int number =
          static_cast<int>(std::clamp(-NumberAt(words, kWidth).value_or(0), 0.0, 1e6));
      // Both ends of a bridge bear its number.
      if (number && number == bridge && !unit.Road.empty())
        things_.Bridges.push_back({unit.Road.back().At, *point, number - 1});
      bridge = number == bridge ? 0 : number;
      unit.Road.push_back({*point, words.size() > kMinutes, NumberAt(words, kMinutes).value_or(0)});
    }
    if (!unit.Road.empty()) unit.Road.back().IsSet = true;
  }

  KeptText text_;
  MapThings things_;
  std::size_t bases_ = 0;
  Words words_;
};

struct KindRow {
  std::string_view Prefix;
  ObjectKind Kind;
};

ObjectKind KindIn(std::string_view text, const KindRow* rows, std::size_t count) {
  const auto* end = rows + count;
  const auto* row = std::find_if(rows, end, [&](const KindRow& each) {
    return EqualNoCase(text.substr(0, each.Prefix.size()), each.Prefix);
  });
  return row == end ? ObjectKind::Other : row->Kind;
}

constexpr std::array<KindRow, 14> kClassKinds{
    {{"vehicles.planes.", ObjectKind::Aircraft},
     {"vehicles.artillery.", ObjectKind::Artillery},
     {"vehicles.tanks.", ObjectKind::Armor},
     {"vehicles.cars.", ObjectKind::Vehicle},
     {"vehicles.trains.", ObjectKind::Train},
     {"vehicles.lights.", ObjectKind::Light},
     {"vehicles.stationary.Stationary$Wagon", ObjectKind::Train},
     {"vehicles.stationary.Stationary", ObjectKind::Vehicle},
     {"vehicles.stationary.Smoke", ObjectKind::Smoke},
     {"vehicles.stationary.Campfire", ObjectKind::Smoke},
     {"vehicles.aeronautics.", ObjectKind::Balloon},
     {"buildings.", ObjectKind::Building},
     {"ships.", ObjectKind::Ship},
     {"vehicles.ships.", ObjectKind::Ship}}};

constexpr std::array<KindRow, 4> kUnitKinds{{{"Armor.", ObjectKind::Armor},
                                             {"Vehicles.", ObjectKind::Vehicle},
                                             {"Trains.", ObjectKind::Train},
                                             {"Ships.", ObjectKind::Ship}}};

constexpr std::array<std::string_view, kObjectKinds> kKindNames{
    "Parked aircraft", "Ship",        "Tank",  "Vehicle", "Train",  "Gun",   "Rocket",
    "Building",        "Searchlight", "Smoke", "Balloon", "Camera", "Object"};

constexpr std::array<std::string_view, 8> kTargetNames{
    "Destroy", "Destroy area", "Destroy bridge", "Recon",
    "Escort",  "Defend",       "Defend area",    "Defend bridge"};

}  // namespace

ObjectKind KindOfClass(std::string_view className) {
  return KindIn(className, kClassKinds.data(), kClassKinds.size());
}

ObjectKind KindOfUnit(std::string_view type) {
  return KindIn(type, kUnitKinds.data(), kUnitKinds.size());
}

std::string_view KindName(ObjectKind kind) { return kKindNames[static_cast<std::size_t>(kind)]; }

std::string_view TargetName(int type) {
  const auto place = static_cast<std::size_t>(type);
  return place < kTargetNames.size() ? kTargetNames[place] : std::string_view();
}

MapThings ThingsOf(const LineArray& lines) { return Reading(lines).Read(); }

}  // namespace rws
