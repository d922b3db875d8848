#include "tools/logic/edit_many_fields.h"

#include <algorithm>

#include "library/index.h"
#include "services/clock.h"
#include "services/faults.h"
#include "services/numbers.h"
#include "services/text.h"

namespace rws {

namespace {

const ManyField* FieldOf(const PlannedValue& value) {
  for (const auto& field : ManyFields())
    if (field.Of == value.Of && field.Field == value.Field) return &field;
  return nullptr;
}

FlightChoice ChoiceOf(const ManyRow& row) {
  if (row.Flights == ManyFlights::All) return {FlightChoice::Name, "*"};
  if (Trim(row.Chosen).empty())
    throw ValueFault("it is not said which flights are meant; \"*\" stands for any letters");
  constexpr std::pair<ManyFlights, std::string_view> kWords[] = {
      {ManyFlights::Name, ""},
      {ManyFlights::Class, "class="},
      {ManyFlights::Aircraft, "aircraft="},
      {ManyFlights::Squadron, "squadron="},
      {ManyFlights::Army, "army="}};
  const auto* word = std::find_if(std::begin(kWords), std::end(kWords),
                                  [&](const auto& one) { return one.first == row.Flights; });
  FlightChoice choice =
      ParseFlight("flight[" + std::string(word->second) + std::string(Trim(row.Chosen)) + "]");
  return choice;
}

}  // namespace

const std::vector<ManyField>& ManyFields() {
  static const std::vector<ManyField> fields = [] {
    ManyField weather{"Weather", ValueOf::Mission, "CloudType", ManyEditor::List, 0, 0};
    for (std::uint8_t i = 0; i < kWeathers; ++i) weather.Entries.push_back(WeatherWord(i));
    constexpr auto mission = ValueOf::Mission;
    constexpr auto flight = ValueOf::Flight;
    constexpr auto plane = ValueOf::Plane;
    return std::vector<ManyField>{
        weather,
        {"Cloud Height", mission, "CloudHeight", ManyEditor::Number, 50, 2500},
        {"Mission Time", mission, "Time", ManyEditor::Clock},
        {"Static Time", mission, "TimeConstant", ManyEditor::Switch},
        {"No User Loadout", mission, "WeaponsConstant", ManyEditor::Switch},
        {"Army", mission, "Army", ManyEditor::List, 1, 0, {"Red", "Blue"}},
        {"# of Planes", flight, "Planes", ManyEditor::Number, 1, 4},
        {"Skill Level",
         flight,
         "Skill",
         ManyEditor::List,
         0,
         0,
         {"Rookie", "Average", "Veteran", "Ace"}},
        {"Fuel Load", flight, "Fuel", ManyEditor::Number, 0, 100},
        {"Weapon Load", flight, "Weapons", ManyEditor::Loadout},
        {"Delay Start", flight, "StartTime", ManyEditor::Number, 0, 120},
        {"AI Only", flight, "OnlyAI", ManyEditor::Switch},
        {"Parachute", flight, "Parachute", ManyEditor::Switch},
        {"Skin", plane, "Skin", ManyEditor::Picture},
        {"Nose Art", plane, "NoseArt", ManyEditor::Picture},
        {"Markings", plane, "NumberOn", ManyEditor::Switch}};
  }();
  return fields;
}

EditOrder OrderOf(const std::vector<ManyRow>& rows) {
  EditOrder order;
  for (const auto& row : rows) {
    const ManyField& field = ManyFields()[row.Field];
    const auto add = [&] {
      CheckText(row.Value);
      Assignment set;
      set.Path.Of = field.Of;
      if (field.IsOfFlights()) set.Path.Flights = ChoiceOf(row);
      set.Path.Field = field.Field;
      set.Value = row.Value;
      set.Text = field.Caption;
      order.Sets.push_back(std::move(set));
    };
    Trap(add, [&](const Fault& caught) {
      throw ValueFault(std::string(field.Caption) + ": " + caught.Text);
    });
  }
  return order;
}

std::string FieldCaption(const PlannedValue& value) {
  const ManyField* field = FieldOf(value);
  std::string caption(field ? field->Caption : value.Field);
  if (value.Of == ValueOf::Plane) caption += ", plane " + std::to_string(value.Index + 1);
  return caption;
}

std::string ValueWords(const PlannedValue& value, const std::string& text) {
  const ManyField* field = FieldOf(value);
  if (!field) return text;
  if (field->Editor == ManyEditor::Switch) return Val(text) != 0 ? "on" : "off";
  if (field->Editor == ManyEditor::Clock && IsNumeric(text)) return HoursToClock(text);
  if (field->Editor != ManyEditor::List || !IsNumeric(text)) return text;
  const double entry = Val(text) - field->Least;
  for (std::size_t i = 0; i < field->Entries.size(); ++i)
    if (entry == static_cast<double>(i)) return std::string(field->Entries[i]);
  return text;
}

std::vector<std::pair<std::string, std::string>> LoadoutsFor(const Catalogues& tables,
                                                             ManyFlights flights,
                                                             const std::string& chosen) {
  std::vector<std::pair<std::string, std::string>> loadouts;
  for (const auto& aircraft : tables.Aircraft) {
    const bool isChosen =
        (flights == ManyFlights::Class && EqualNoCase(aircraft.Class, Trim(chosen))) ||
        (flights == ManyFlights::Aircraft && EqualNoCase(Trim(aircraft.Name), Trim(chosen)));
    if (!isChosen) continue;
    for (const auto& [text, key] : aircraft.Weapons)
      if (key && !key->empty()) loadouts.emplace_back(text, *key);
    return loadouts;
  }
  return {{"Default", "default"}, {"Empty", "none"}};
}

}  // namespace rws
