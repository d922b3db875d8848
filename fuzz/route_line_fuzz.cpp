#include "fuzz/support.h"
#include "mission/kept_flights.h"
#include "mission/kept_keys.h"
#include "mission/reader.h"
#include "mission/route_line.h"
#include "mission/writer.h"
#include "services/faults.h"
#include "services/numbers.h"
#include "services/text.h"

/** Reads a line of a route, writes the record, and reads that again. */

namespace {

using namespace rws;

/** The route of a mission whose one flight has this line. */
Flight Route(std::string_view line) {
  Document doc = fuzz::OneMission();
  std::string text = "[MAIN]\r\n[Wing]\r\n  a00\r\n[a00]\r\n  Planes 1\r\n[a00_Way]\r\n";
  ReadMissionText(doc, fuzz::QuietServices(), 0, text.append(line).append("\r\n[end]\r\n"));
  fuzz::Require(!doc.Missions[0].Flights.empty(), "The flight is found.");
  return doc.Missions[0].Flights[0];
}

LineArray Written(const Flight& flight) {
  LineArray lines;
  WaypointArray(fuzz::QuietServices(), lines, flight);
  return lines;
}

/** Every change of a word leaves all others as they are. */
void RequireWordsStay(std::string_view line) {
  WordLine words(line);
  fuzz::RequireSame(words.Text(), line, "Words and what is between them are the line.");
  if (words.size() == 0) return;
  const std::size_t place = line.size() % words.size();
  const std::string old(words.Word(place));
  words.Set(place, "new");
  words.Set(place, old);
  fuzz::RequireSame(words.Text(), line, "A word that is put back leaves the line as it was.");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string_view line = fuzz::TextOf(data, size);
  line = line.substr(0, line.find_first_of("\r\n"));
  RequireWordsStay(line);
  const RouteLine words(line);
  ResumeNext([&] { (void)words.X(), (void)words.Y(); });
  // The writer makes full stops of all commas.
  if (line.starts_with('[') || Contains(line, ",") || ContainsNoCase(line, "_way") ||
      ContainsNoCase(line, "planes "))
    return 0;
  const Flight flight = Route(line);
  if (flight.LastWaypoint != "0") return 0;
  // What the writer makes of a line it makes of its own text too.
  const LineArray written = Written(flight);
  fuzz::Require(written.size() == 2, "A line stays one line.");
  const Flight again = Route(written[1]);
  if (again.LastWaypoint != "0") return 0;
  const Waypoint &a = flight.Waypoints[0], &b = again.Waypoints[0];
  // A number that begins with its point is cut off ahead of it, and what is left is none.
  if (!IsNumeric(a.Alt) || !IsNumeric(a.Speed)) return 0;
  fuzz::RequireSame(b.Type + " " + b.Alt + " " + b.Speed, a.Type + " " + a.Alt + " " + a.Speed,
                    "A waypoint is read as it was written.");
  fuzz::Require(!WaypointDiffers(b, b), "A waypoint is the same as itself.");
  return 0;
}
