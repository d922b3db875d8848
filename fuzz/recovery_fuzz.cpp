#include "fuzz/support.h"
#include "mission/backup_index.h"
#include "mission/interrupted.h"
#include "mission/update_note.h"
#include "services/checksum.h"
#include "services/faults.h"
#include "session/packing.h"
#include "session/recovery.h"

/** Reads what an earlier run may have left: unsaved edits, the note of an update that was under
   way, the list of origins of backups. Each is read as it stands, and also with a checksum that is
    right, which damage alone would never bring about. */

namespace {

using namespace rws;

Services Own() {
  static const std::string folder = fuzz::WriteScratch("RWS Backup/test.mis", "[MAIN]\r\n");
  Services services = fuzz::QuietServices();
  services.AppPath = folder;
  return services;
}

std::string Signed(std::string_view rest) {
  std::string text = "RWS Edit unsaved edits " + RecordsVersion() + "\n";
  return text.append(Sha1(rest)).append("\n").append(rest);
}

void ReadMission(std::string_view bytes) {
  Mission mission;
  if (!ResumeNext([&] { mission = UnpackMission(bytes); })) return;
  const std::string packed = PackMission(mission);
  const Mission again = UnpackMission(packed);
  fuzz::Require(PackMission(again) == packed && fuzz::ContentOf(again) == fuzz::ContentOf(mission),
                "A mission is unpacked as it was packed.");
}

/** Edits are read whole, or the reason is told. */
void ReadEdits(const Services& services, const std::string& bytes) {
  fuzz::WriteScratch("Recovery/one.edits", bytes);
  for (const auto& edits : FindRecovered(services)) {
    if (!edits.Fault.empty()) {
      fuzz::Require(edits.Mission.Lines.empty() && edits.Mission.Flights.empty(),
                    "What is damaged is not read by half.");
      continue;
    }
    TextOf(services, edits);
    HasChangedSince(services, edits);
  }
}

void ReadNotes(const Services& services, std::string_view bytes) {
  const std::string copy = CopyPath(services);
  const std::string name = copy.substr(services.AppPath.size() + 1);
  fuzz::WriteScratch(NotePath(name), bytes);
  if (const auto note = ReadNote(services, copy))
    fuzz::Require(bytes.find(note->Mission) != bytes.npos, "A note tells what stands in it.");
  fuzz::WriteScratch("RWS Backup/" + BackupOriginsPath(services).substr(services.AppPath.size() +
                                                                        sizeof("/RWS Backup")),
                     bytes);
  for (const auto& backup : ListBackups(services, "/missions/test.mis"))
    fuzz::Require(backup.Origin == BackupOrigin::Unknown || !backup.OriginPath.empty(),
                  "An origin that is known is told.");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes = fuzz::TextOf(data, size);
  static const Services services = Own();
  ReadMission(bytes);
  ReadEdits(services, size % 8 == 0
                          ? std::string(bytes)
                          : Signed("2026-03-04 05:06\n11:/a/test.mis\n" + std::string(bytes)));
  ReadNotes(services, bytes);
  return 0;
}
