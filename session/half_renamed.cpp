#include "session/half_renamed.h"

#include "services/faults.h"
#include "services/paths.h"
#include "services/text.h"

namespace rws {

namespace {

constexpr std::string_view kDetour = "tmp";

bool IsOnDetour(const std::string& name) {
  const std::string folded = FoldName(name);
  return folded.ends_with(".mistmp") || folded.ends_with(".propertiestmp");
}

}  // namespace

std::string WantedName(const std::string& path) {
  return IsOnDetour(path) ? path.substr(0, path.size() - kDetour.size()) : "";
}

std::vector<HalfRenamed> FindHalfRenamed(const Services& services, const std::string& folder) {
  std::vector<HalfRenamed> found;
  ResumeNext([&] {
    for (const auto& name : services.Files.ListFileNames(folder, IsOnDetour))
      found.push_back({BuildPath(folder, name), BuildPath(folder, WantedName(name))});
  });
  return found;
}

std::string FinishRenames(const Services& services, const std::vector<HalfRenamed>& files) {
  std::string reason;
  for (const auto& file : files)
    Trap([&] { services.Files.MoveFile(file.Path, file.Wanted); },
         [&](const Fault& caught) {
           if (reason.empty()) reason = caught.Text;
         });
  return reason;
}

}  // namespace rws
