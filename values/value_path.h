#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/** How a script names values of a mission: "Time", "flight[r0100].plane[0].Skin", "base[0].Army".
    Paths and values are in the encoding of mission text. */
namespace rws {

enum class ValueOf { Mission, Flight, Plane, Waypoint, Base };

/** Which flights are meant. "*" in the text stands for any run of letters. An aircraft is given by
    the name that the tables have for it, a squadron by its code or by that name. */
struct FlightChoice {
  enum Kind { Name, Class, Army, Aircraft, Squadron };
  Kind By = Name;
  std::string Text;

  /** True if it may fit several flights, or none. */
  bool IsPattern() const { return By != Name || Text.find('*') != Text.npos; }
};

struct ValuePath {
  ValueOf Of = ValueOf::Mission;
  /** Of flights, planes and waypoints. */
  FlightChoice Flights;
  /** Of planes, waypoints and home bases, counted from 0; nothing for "*", all of them. */
  std::optional<std::size_t> Index;
  /** As the program spells it, whatever the letter case that was given. */
  std::string_view Field;

  /** True if it need not name something in every mission. */
  bool IsPattern() const;
};

/** A path and what is to stand there. */
struct Assignment {
  ValuePath Path;
  std::string Value;
  std::string Text;  // as it was given, for messages
};

/** Reads "PATH=VALUE"; the value begins behind the first "=" that is in no brackets. A fault that
    names what is wrong. */
Assignment ParseAssignment(std::string_view text);

/** Reads "flight[...]"; a fault that names what is wrong. */
FlightChoice ParseFlight(std::string_view text);

/** True if `text` fits a pattern in which "*" is any run of letters, without regard to case. */
bool FitsPattern(std::string_view text, std::string_view pattern);

}  // namespace rws
