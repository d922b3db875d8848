#include "library/check.h"

#include <algorithm>
#include <array>

#include "library/checking.h"
#include "services/faults.h"
#include "services/text.h"

namespace rws {

namespace {

constexpr std::size_t kMostDigits = 9;

std::string_view WithoutPackage(std::string_view planeClass) {
  for (const std::string_view package :
       {"com.maddox.il2.objects.air.", "il2.objects.air.", "objects.air.", "air."})
    if (planeClass.size() >= package.size() &&
        EqualNoCase(planeClass.substr(0, package.size()), package))
      return planeClass.substr(package.size());
  return {};
}

}  // namespace

std::string_view SeverityWord(Severity severity) {
  constexpr std::array<std::string_view, 3> kWords = {"note", "warning", "error"};
  return kWords[static_cast<std::size_t>(severity)];
}

std::string PlaceText(const Finding& finding, const CodePage& page) {
  std::string text;
  const auto add = [&](const std::string& part) {
    text.append(text.empty() ? "" : ", ").append(part);
  };
  if (!finding.Flight.empty())
    add("flight " + page.ToUtf8(finding.Flight));
  else if (!finding.Section.empty())
    add("[" + page.ToUtf8(finding.Section) + "]");
  if (finding.Plane >= 0) add("plane " + std::to_string(finding.Plane + 1));
  if (finding.Waypoint >= 0) add("waypoint " + std::to_string(finding.Waypoint + 1));
  if (finding.Line >= 0) add("line " + std::to_string(finding.Line + 1));
  return text;
}

std::optional<int> StrictWhole(std::string_view text) {
  const auto digits = text.substr(text.starts_with('-') ? 1 : 0);
  if (digits.empty() || digits.size() > kMostDigits ||
      digits.find_first_not_of("0123456789") != digits.npos)
    return {};
  return std::stoi(std::string(text));
}

Checking::Checking(const CheckTables& tables, GameFiles& game, const MissionToCheck& mission)
    : Tables(tables),
      Game(game),
      Mission(mission),
      Text(mission.Lines),
      Main(MainSection(Text)),
      GamePath(game.GameOf(mission.Path)),
      Bases(HomeBaseLines(Text)) {
  ListWing();
}

void Checking::ListWing() {
  const auto* section = Text.Find("Wing");
  for (std::size_t i = section ? section->First : 0; section && i < section->Last; ++i) {
    WingFlight flight{KeyOf(Text.Lines()[i]).Key, i};
    if (flight.Name.empty()) continue;
    flight.Section = Text.Find(flight.Name);
    if (flight.Section) {
      flight.Class = WithoutPackage(Text.ValueOf(*flight.Section, "Class"));
      flight.Plane = Tables.FindPlane(flight.Class);
      flight.Planes =
          std::clamp(StrictWhole(Text.ValueOf(*flight.Section, "Planes")).value_or(1), 1, 4);
      flight.OnlyAI = StrictWhole(Text.ValueOf(*flight.Section, "OnlyAI")) == 1;
    }
    Wing.push_back(flight);
  }
}

Finding& Checking::Tell(Severity severity, std::string_view kind, const FindingPlace& place,
                        std::string text) {
  Finding& finding = Findings.emplace_back();
  finding.Severity = severity;
  finding.Kind = kind;
  if (place.Section) finding.Section = place.Section->Name;
  finding.Flight = place.Flight;
  finding.Plane = static_cast<std::int32_t>(place.Plane);
  finding.Waypoint = static_cast<std::int32_t>(place.Waypoint);
  if (place.Line != KeptText::npos) finding.Line = static_cast<std::int32_t>(place.Line);
  finding.Text = std::move(text);
  return finding;
}

void Checking::MendBy(const std::string& assignment) {
  ResumeNext([&] { Findings.back().Mend = ParseAssignment(assignment); });
}

void Checking::MendFlight(std::string_view flight, const std::string& fieldAndValue) {
  if (flight.find_first_of("*[]=") != flight.npos) return;
  const auto* section = Text.Find(flight);
  // What is no flight to the reader is none to an edit.
  if (!section || Text.ValueOf(*section, "Planes").empty()) return;
  MendBy("flight[" + std::string(section->Name) + "]." + fieldAndValue);
}

std::string Checking::Quoted(std::string_view bytes) const {
  return "\"" + Tables.Page().ToUtf8(bytes) + "\"";
}

const WingFlight* Checking::FlightNamed(std::string_view name) const {
  const auto found = std::find_if(Wing.begin(), Wing.end(),
                                  [&](const WingFlight& flight) { return flight.Name == name; });
  return found == Wing.end() ? nullptr : &*found;
}

Checking::KeyValue Checking::ValueOf(const KeptSection& section, std::string_view key) const {
  const std::size_t line = Text.LineOf(section, key);
  if (line == KeptText::npos) return {};
  return {line, KeyOf(Text.Lines()[line]).Value};
}

std::vector<Finding> CheckMission(const CheckTables& tables, GameFiles& game,
                                  const MissionToCheck& mission) {
  Checking check(tables, game, mission);
  if (check.Text.Sections().empty()) {
    check.Tell(Severity::Error, "no-section", {}, "The file holds no section: it is no mission.");
    return std::move(check.Findings);
  }
  CheckMain(check);
  CheckPlayer(check);
  CheckTexts(check);
  CheckSections(check);
  CheckWing(check);
  CheckRoutes(check);
  CheckHomeBases(check);
  CheckObjects(check);
  CheckTargets(check);
  CheckAge(check);
  CheckRewriting(check);
  std::stable_sort(check.Findings.begin(), check.Findings.end(),
                   [](const Finding& a, const Finding& b) { return a.Line < b.Line; });
  return std::move(check.Findings);
}

}  // namespace rws
