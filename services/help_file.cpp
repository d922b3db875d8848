#include "services/help_file.h"

namespace rws {

std::string HelpFile(const Services& services) { return DataFile(services, kHelpFile); }

void OpenHelp(const Services& services) {
  constexpr int kHighestShellFailure = 32;
  const std::string path = HelpFile(services);
  const auto tell = [&](const std::string& reason) {
    services.Ask.MsgBox("The help \"" + path + "\" cannot be shown: " + reason, Buttons::Ok,
                        Icon::Exclamation, kProgramTitle);
  };
  if (!services.Files.FileExists(path)) return tell("the file does not exist.");
  if (services.System.Execute("open", path) <= kHighestShellFailure)
    tell("no program could be started for it.");
}

}  // namespace rws
