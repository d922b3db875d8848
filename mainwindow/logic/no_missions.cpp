#include "mainwindow/logic/no_missions.h"

#include "services/faults.h"

namespace rws {

std::string WhyNoMissions(const Document& doc, const Services& services) {
  const std::string folder = "\"" + doc.MissionDir + "\"";
  const std::string choose = "\n\nChoose another folder with Directory";
  if (!services.Files.FolderExists(doc.MissionDir))
    return "The folder " + folder + " does not exist." + choose + ".";
  std::string why =
      "There are no missions in " + folder + ". A mission is a file whose name ends in \".mis\".";
  if (!doc.ExcludedNames.empty()) why += " Left out are names with " + doc.ExcludedNames + ".";
  Trap(
      [&] {
        services.Files.ListFileNames(doc.MissionDir, [](const std::string&) { return false; });
      },
      [&](const Fault& caught) { why = "The folder cannot be read.\n" + caught.Text; });
  return why + choose + ", or bring missions here with Copy From in the menu Tools.";
}

}  // namespace rws
