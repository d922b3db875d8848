#include <array>

#include "fuzz/support.h"
#include "mission/kept_reader.h"
#include "mission/line_ends.h"
#include "mission/reader.h"

/** Reads a mission from the disk, in the way that the first byte of the input says. */

namespace {

using namespace rws;

Document Listed(const Services& services, std::string_view bytes) {
  Document doc;
  doc.MissionDir = fuzz::WriteScratch("a.mis", bytes);
  fuzz::Require(GetMissionFiles(doc, services), "What lies in the folder is listed.");
  LoadMissionArray(doc, services);
  return doc;
}

Mission ReadInMemory(const Services& services, std::string_view bytes, UntouchedLines rule) {
  Document doc = fuzz::OneMission();
  if (rule == UntouchedLines::Keep)
    ReadKeptMission(doc, services, doc.Missions[0], std::string(bytes));
  else
    ReadMissionText(doc, services, 0, LinesOfFile(std::string(bytes)).FileText());
  return doc.Missions[0];
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  constexpr std::array kRules{UntouchedLines::Anew, UntouchedLines::Keep, UntouchedLines::Ask};
  const auto rule = kRules[size ? data[0] % kRules.size() : 0];
  const std::string_view bytes = size ? fuzz::TextOf(data + 1, size - 1) : "";
  const Services& services = fuzz::QuietServices();
  Document doc = Listed(services, bytes);
  doc.Untouched = rule;
  LoadMission(doc, services, 0);

  std::optional<std::string> repaired;
  if (rule == UntouchedLines::Anew) repaired = RepairedLineEnds(bytes);
  fuzz::RequireSame(services.Files.ReadFile(doc.MissionFiles[0]),
                    repaired ? std::string_view(*repaired) : bytes,
                    "Reading changes nothing of a file but line ends that it could not read.");
  fuzz::RequireSame(fuzz::ContentOf(doc.Missions[0]),
                    fuzz::ContentOf(ReadInMemory(services, bytes, rule)),
                    "A file is read as its text is.");
  return 0;
}
