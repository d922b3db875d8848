#pragma once

#include <string>
#include <tuple>
#include <type_traits>
#include <utility>

#include "mission/records.h"

/** The fields of the records, a table each: what walks over a record reads it from here, so that a
    field that is added cannot be forgotten by one of them. */
namespace rws {

/** How two records are compared when an edit decides about Update. */
enum class Compared {
  No,
  Exactly,
  ByValue,  // as numbers: "" and "0" are equal, and so are two spellings of one
  Inside,   // by the fields of its elements
};

/** What a field is to the user. */
enum class Holds {
  Content,  // a part of the mission, which an edit changes
  State     // where the record stands in the program: no difference in it is an edit
};

template <class Value>
constexpr bool kIsText = std::is_same_v<Value, std::string> || std::is_same_v<Value, SharedText>;

/** True for a value that is neither an array nor a record. */
template <class Value>
constexpr bool kIsPlain = kIsText<Value> || std::is_arithmetic_v<Value>;

template <class Member>
struct Field {
  const char* Name;
  Member Pointer;
  Compared How;
  Holds What;
};

template <class Member>
constexpr Field<Member> MakeField(const char* name, Member pointer, Compared how, Holds what) {
  return {name, pointer, how, what};
}

/** In the order of the record's declaration. */
template <class Record>
struct FieldsOf;

#define RWS_FIELD(name, how) MakeField(#name, &Record::name, Compared::how, Holds::Content)
#define RWS_STATE(name, how) MakeField(#name, &Record::name, Compared::how, Holds::State)

template <>
struct FieldsOf<Waypoint> {
  using Record = Waypoint;
  static constexpr auto kTable = std::make_tuple(
      RWS_FIELD(Alt, Exactly), RWS_FIELD(Speed, Exactly), RWS_FIELD(Type, No),
      RWS_FIELD(Marker, Exactly), RWS_FIELD(X, No), RWS_FIELD(Y, No), RWS_FIELD(Dist, No),
      RWS_FIELD(Line, No), RWS_STATE(KeptRow, No), RWS_STATE(KeptTriggers, No));
};

template <>
struct FieldsOf<PlaneSlot> {
  using Record = PlaneSlot;
  static constexpr auto kTable = std::make_tuple(
      RWS_FIELD(Skill, Exactly), RWS_FIELD(Skin, Exactly), RWS_FIELD(NoseArt, Exactly),
      RWS_FIELD(Pilot, Exactly), RWS_FIELD(Reserved, Exactly), RWS_FIELD(NumberOn, Exactly));
};

template <>
struct FieldsOf<Flight> {
  using Record = Flight;
  static constexpr auto kTable = std::make_tuple(
      RWS_FIELD(Fuel, Exactly), RWS_FIELD(Planes, Exactly), RWS_FIELD(Skill, Exactly),
      RWS_FIELD(Weapons, Exactly), RWS_FIELD(StartTime, ByValue), RWS_FIELD(OnlyAI, Exactly),
      RWS_FIELD(Class, Exactly), RWS_FIELD(Parachute, Exactly), RWS_FIELD(Name, Exactly),
      RWS_FIELD(PlaneSlots, Inside), RWS_FIELD(Waypoints, Inside), RWS_FIELD(LastWaypoint, No),
      RWS_FIELD(ArmyWord, No), RWS_FIELD(Status, Exactly), RWS_STATE(Shown, No),
      RWS_STATE(KeptName, No), RWS_STATE(KeptIn, No));
};

template <>
struct FieldsOf<BornPlace> {
  using Record = BornPlace;
  static constexpr auto kTable = std::make_tuple(
      RWS_FIELD(Army, Exactly), RWS_FIELD(Radius, Exactly), RWS_FIELD(Planes, No), RWS_FIELD(X, No),
      RWS_FIELD(Y, No), RWS_FIELD(HasNumbers, No), RWS_STATE(KeptPlanes, No));
};

template <>
struct FieldsOf<Mission> {
  using Record = Mission;
  static constexpr auto kTable = std::make_tuple(
      RWS_STATE(Loaded, No), RWS_STATE(DirPath, Exactly), RWS_STATE(FileName, Exactly),
      RWS_STATE(BaseName, No), RWS_FIELD(MapName, Exactly), RWS_FIELD(MapPath, No),
      RWS_FIELD(Time, Exactly), RWS_FIELD(CloudHeight, Exactly), RWS_FIELD(CloudType, Exactly),
      RWS_FIELD(Army, Exactly), RWS_FIELD(Player, Exactly), RWS_FIELD(PlayerNum, Exactly),
      RWS_FIELD(Lines, Exactly), RWS_STATE(AsRead, No), RWS_FIELD(Flights, Inside),
      RWS_STATE(Modified, No), RWS_STATE(NotWritten, No), RWS_STATE(KeepsLines, No),
      RWS_FIELD(BornPlaces, Inside), RWS_FIELD(HasBornPlace, No),
      RWS_FIELD(BriefSoundLine, Exactly), RWS_FIELD(BriefSound, Exactly),
      RWS_FIELD(TimeConstant, Exactly), RWS_FIELD(WeaponsConstant, Exactly));
};

#undef RWS_FIELD
#undef RWS_STATE

/** Calls `visit` with each field of a kind of record. */
template <class Record, class Visit>
constexpr void ForEachField(Visit visit) {
  std::apply([&](const auto&... field) { (visit(field), ...); }, FieldsOf<Record>::kTable);
}

namespace detail {

struct AnyValue {
  template <class T>
  operator T() const;
};

/** True if the table names the fields of its record, all of them, in their order. */
template <class Record, class... Members>
constexpr bool IsComplete(const std::tuple<Field<Members Record::*>...>&) {
  return requires { Record{std::declval<Members>()...}; }
  &&!requires { Record{std::declval<Members>()..., AnyValue()}; };
}

}  // namespace detail

static_assert(detail::IsComplete<Waypoint>(FieldsOf<Waypoint>::kTable));
static_assert(detail::IsComplete<PlaneSlot>(FieldsOf<PlaneSlot>::kTable));
static_assert(detail::IsComplete<Flight>(FieldsOf<Flight>::kTable));
static_assert(detail::IsComplete<BornPlace>(FieldsOf<BornPlace>::kTable));
static_assert(detail::IsComplete<Mission>(FieldsOf<Mission>::kTable));

}  // namespace rws
