#include "mission/kept_merge.h"

#include <algorithm>
#include <map>
#include <optional>
#include <utility>

#include "mission/kept_bases.h"
#include "mission/kept_flights.h"
#include "mission/kept_keys.h"
#include "mission/kept_reader.h"
#include "services/error_log.h"
#include "services/faults.h"
#include "services/numbers.h"
#include "services/text.h"

namespace rws {

namespace {

/** A mission on its way from what its lines say to what its records say. */
class Merge {
 public:
  Merge(const Document& doc, const Services& services, const Mission& edited)
      : edited_(edited), read_(edited), text_(edited.Lines), patch_(edited.Lines) {
    ReadKeptRecords(doc, services, read_);
  }

  LineArray Run() {
    EditMain();
    EditFlights();
    EditHomeBases(text_, patch_, read_.BornPlaces, edited_.BornPlaces);
    return patch_.IsEmpty() ? edited_.Lines : patch_.Result();
  }

 private:
  void EditMain();
  void EditFlights();
  bool IsCopy(const Flight& flight) const;
  void EditWing(const KeptSection* wing);
  void AddFlights(const KeptSection* wing);
  std::size_t PlaceOfNewFlights(const KeptSection* wing) const;

  const Mission& edited_;
  Mission read_;
  KeptText text_;
  LinePatch patch_;
  /** For each flight that was read the edited one that it has become; null for one removed. */
  std::vector<const Flight*> became_;
  /** Flights that the lines do not hold. */
  struct NewFlight {
    const Flight* Record;
    bool IsCopy;
    /** The section ahead of which it goes; null for one behind all others. */
    const KeptSection* Next;
  };
  std::vector<NewFlight> added_;
};

std::string ConstantText(std::int16_t value) { return value == 0 ? "" : std::to_string(value); }

void Merge::EditMain() {
  const KeptSection main = MainSection(text_);
  const auto set = [&](std::string_view key, const std::string& read, const std::string& edited) {
    if (read != edited) SetKey(text_, patch_, main, kMainKeys, key, edited);
  };
  set("MAP", read_.MapPath, edited_.MapPath);
  set("TIME", read_.Time, edited_.Time);
  set("TIMECONSTANT", ConstantText(read_.TimeConstant), ConstantText(edited_.TimeConstant));
  set("WEAPONSCONSTANT", ConstantText(read_.WeaponsConstant),
      ConstantText(edited_.WeaponsConstant));
  set("CloudType", read_.CloudType, edited_.CloudType);
  if (read_.CloudHeight != edited_.CloudHeight) {
    const auto old = text_.ValueOf(main, "CloudHeight");
    const bool whole = !old.empty() && !Contains(old, ".");
    set("CloudHeight", read_.CloudHeight,
        whole || edited_.CloudHeight.empty() ? edited_.CloudHeight
                                             : FormatNumber(edited_.CloudHeight, "0.0"));
  }
  set("player", read_.Player, edited_.Player);
  set("army", read_.Army, edited_.Army);
  set("playerNum", read_.PlayerNum, edited_.PlayerNum);
  set("briefSound", std::string(KeyOf(read_.BriefSoundLine).Value),
      std::string(KeyOf(edited_.BriefSoundLine).Value));
}

/** The line of "[Wing]" that lists a flight; `npos` if none does. */
std::size_t WingLine(const KeptText& text, const KeptSection& wing, std::string_view name) {
  for (std::size_t i = wing.First; i < wing.Last; ++i)
    if (KeyOf(text.Lines()[i]).Key == name) return i;
  return text.LineOf(wing, name);
}

void Merge::EditWing(const KeptSection* wing) {
  std::map<std::string, const Flight*> relisted;  // by names in lower case; null for one removed
  for (std::size_t i = 0; i < became_.size(); ++i)
    if (const auto& name = read_.Flights[i].Name; !became_[i] || became_[i]->Name != name)
      relisted[LowerKey(name)] = became_[i];
  if (!wing || relisted.empty()) return;
  for (std::size_t line = wing->First; line < wing->Last; ++line) {
    const auto flight = relisted.find(LowerKey(KeyOf(text_.Lines()[line]).Key));
    if (flight == relisted.end()) continue;
    if (!flight->second) {
      patch_.Remove(line);
      continue;
    }
    WordLine words(text_.Lines()[line]);
    words.Set(0, flight->second->Name);
    patch_.Replace(line, words.Text());
  }
}

/** Behind the last line of all flights. */
std::size_t Merge::PlaceOfNewFlights(const KeptSection* wing) const {
  std::size_t place = 0;
  for (const auto* flight : FlightSections(text_))
    for (const auto* section : SectionsOfFlight(text_, *flight))
      place = std::max(place, EndOfSection(text_, *section));
  if (place > 0) return place;
  if (wing) return EndOfSection(text_, *wing);
  for (const char* next : {"Chiefs", "NStationary", "Stationary", "Buildings"})
    if (const auto* section = text_.Find(next)) return section->Header;
  return text_.Lines().size();
}

void Merge::AddFlights(const KeptSection* wing) {
  if (added_.empty()) return;
  const std::size_t place = PlaceOfNewFlights(wing);
  if (!wing) patch_.Insert(place, "[Wing]");
  for (const auto& flight : added_) {
    std::size_t line = wing ? EndOfSection(text_, *wing) : place;
    if (wing && flight.Next) line = std::min(line, WingLine(text_, *wing, flight.Next->Name));
    patch_.Insert(line, "  " + flight.Record->Name);
  }
  for (const auto& flight : added_)
    for (const auto& line : LinesOfNewFlight(*flight.Record, flight.IsCopy))
      patch_.Insert(flight.Next ? flight.Next->Header : place, line);
}

/** A flight that comes back with the lines of an earlier text is none, though another one may have
    got the name that it was read by. */
bool Merge::IsCopy(const Flight& flight) const {
  if (flight.KeptIn == edited_.AsRead) return true;
  const auto isOriginal = [&](const Flight& other) {
    return EqualNoCase(other.KeptName, flight.KeptName) && other.KeptIn == flight.KeptIn;
  };
  return &*std::find_if(edited_.Flights.begin(), edited_.Flights.end(), isOriginal) != &flight;
}

void Merge::EditFlights() {
  const auto sections = FlightSections(text_);
  became_ = BecomesOfFlights(text_, edited_);
  std::map<std::string, std::size_t> byName;
  for (std::size_t i = 0; i < sections.size(); ++i) byName[LowerKey(sections[i]->Name)] = i;
  for (const auto& flight : edited_.Flights) {
    const auto found = byName.find(LowerKey(flight.KeptName));
    const bool known = found != byName.end();
    const std::size_t index = known ? found->second : sections.size();
    if (!known || became_[index] != &flight) {
      added_.push_back({&flight, known && IsCopy(flight), nullptr});
      continue;
    }
    EditFlight(text_, patch_, *sections[index], read_.Flights[index], flight);
    // One that was taken out, and written so, comes back at its place.
    for (auto& added : added_)
      if (!added.Next) added.Next = sections[index];
  }
  for (std::size_t i = 0; i < sections.size(); ++i)
    if (!became_[i])
      for (const auto* section : SectionsOfFlight(text_, *sections[i]))
        patch_.RemoveRange(section->Header, EndOfSection(text_, *section));
  const KeptSection* wing = text_.Find("Wing");
  EditWing(wing);
  AddFlights(wing);
}

}  // namespace

LineArray MergedLines(const Document& doc, const Services& services, const Mission& mission) {
  return Merge(doc, services, mission).Run();
}

bool BuildKeptFile(const Document& doc, const Services& services, const Mission& mission,
                   LineArray& output, std::string* reason) {
  MergeFault wrong{"The mission was never read.", {}};
  const auto build = [&] {
    if (!mission.Loaded) return;
    output = MergedLines(doc, services, mission);
    wrong = CheckMerged(doc, services, mission, output);
  };
  Trap(build, [&](const Fault& caught) { wrong = {caught.Text, {}}; });
  if (wrong.None()) return true;
  for (const auto& line : wrong.Lines) wrong.Reason += "\n" + line;
  LogError(services, wrong.Reason, "BuildKeptFile");
  if (reason) *reason = wrong.Reason;
  return false;
}

}  // namespace rws
