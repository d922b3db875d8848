#include "fuzz/support.h"
#include "mission/kept_merge.h"
#include "mission/kept_reader.h"
#include "mission/kept_text.h"
#include "mission/pending_lines.h"
#include "mission/reader.h"

/** Reads a mission with its lines kept, and writes it without an edit. */

namespace {

using namespace rws;

/** Sections and words point into the text, in order and whole. */
void RequireOrder(const LineArray& lines) {
  const KeptText text(lines);
  std::size_t next = 0;
  for (const auto& section : text.Sections()) {
    fuzz::Require(section.Header >= next && section.First == section.Header + 1 &&
                      section.Last >= section.First && section.Last <= lines.size(),
                  "Sections follow each other.");
    next = section.Last;
  }
  for (std::size_t i = 0; i < lines.size(); ++i) {
    for (const auto& word : KeptWords(lines[i]))
      fuzz::Require(lines[i].substr(word.At, word.Text.size()) == word.Text && !word.Text.empty(),
                    "Words stand where they are said to stand.");
    const KeptKey key = KeyOf(lines[i]);
    fuzz::Require(lines[i].substr(key.ValueAt, key.Value.size()) == key.Value,
                  "Values stand where they are said to stand.");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes(fuzz::TextOf(data, size));
  const Services& services = fuzz::QuietServices();
  Document doc = fuzz::OneMission();
  Mission& mission = doc.Missions[0];
  ReadKeptMission(doc, services, mission, bytes);
  fuzz::Require(mission.Loaded, "Every text is read.");
  fuzz::RequireSame(mission.Lines.FileText(), bytes, "Every byte is kept.");
  RequireOrder(mission.Lines);
  LineArray written;
  std::string reason;
  const bool done = BuildKeptFile(doc, services, mission, written, &reason);
  fuzz::RequireSame(reason, "", "Without an edit nothing is refused.");
  fuzz::Require(done && written.FileText() == bytes, "Without an edit no byte changes.");
  fuzz::Require(SameMeaning(mission.Lines, written), "A text means the same as itself.");
  Mission again = mission;
  ReadKeptRecords(doc, services, again);
  fuzz::Require(fuzz::ContentOf(again) == fuzz::ContentOf(mission),
                "The records of the same lines are the same.");
  return 0;
}
