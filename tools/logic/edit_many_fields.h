#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "library/edit_many.h"

/** What "Edit Many Missions" offers. Texts are those of mission text. */
namespace rws {

enum class ManyEditor { Switch, Number, List, Clock, Loadout, Picture };

/** A value that many missions can be given. */
struct ManyField {
  std::string_view Caption;
  ValueOf Of;
  std::string_view Field;
  ManyEditor Editor;
  int Least = 0, Most = 0;  // of a number; of a list, the value of its first entry
  std::vector<std::string_view> Entries = {};

  bool IsOfFlights() const { return Of != ValueOf::Mission; }
};

/** All of them, in the order in which they are offered. */
const std::vector<ManyField>& ManyFields();

/** Which flights are meant, as it is chosen. */
enum class ManyFlights { All, Name, Class, Aircraft, Squadron, Army };

/** A row of the form. */
struct ManyRow {
  std::size_t Field = 0;  // in `ManyFields`
  std::string Value;      // as a file has it
  ManyFlights Flights = ManyFlights::All;
  std::string Chosen;  // what they are chosen by; "*" stands for anything
};

/** What the rows ask for; a fault names the row that cannot be. */
EditOrder OrderOf(const std::vector<ManyRow>& rows);

/** Caption of a value's field, with the number of its plane. */
std::string FieldCaption(const PlannedValue& value);
/** A value in words: "Rain/Snow" for a weather of 5, "on" for a switch. */
std::string ValueWords(const PlannedValue& value, const std::string& text);

/** Loadouts that fit what flights are chosen by, as pairs of a text and the word of the file; those
    that all aircraft have where that may be several. */
std::vector<std::pair<std::string, std::string>> LoadoutsFor(const Catalogues& tables,
                                                             ManyFlights flights,
                                                             const std::string& chosen);

}  // namespace rws
