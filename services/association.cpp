#include "services/association.h"

#include "services/paths.h"
#include "services/system_facts.h"
#include "services/text.h"

namespace rws {

namespace {

constexpr char kMission[] = ".mis", kBriefing[] = ".properties";
constexpr char kOpenCommand[] = "\\shell\\open\\command";

/** The class of this program's files with an ending. */
std::string ClassOf(const char* ending) { return std::string(kProgramTitle) + ending; }

std::string DataOf(const Services& services, const std::string& key) {
  return GetRegValue(services.Settings, SettingsRoot::ClassesRoot, key, "", "");
}

void Put(const Services& services, const std::string& key, const std::string& data) {
  SetRegValue(services.Settings, SettingsRoot::ClassesRoot, key, "", data);
}

void Delete(const Services& services, const std::string& key) {
  DeleteRegKey(services.Settings, SettingsRoot::ClassesRoot, key);
}

/** Deletes an ending's key unless it leads to another program by now. */
void DeleteEnding(const Services& services, const char* ending) {
  if (EqualNoCase(DataOf(services, ending), ClassOf(ending))) Delete(services, ending);
}

/** True if the desktop did its part. */
bool AskDesktop(const Services& services, bool on) {
  if (!services.System.Associate) return true;
  const std::string reason = services.System.Associate(on);
  if (reason.empty()) return true;
  services.Ask.MsgBox(reason, Buttons::Ok, Icon::Exclamation, kProgramTitle);
  return false;
}

}  // namespace

bool IsAssociated(const Services& services) {
  if (services.System.IsAssociated) return services.System.IsAssociated();
  return !DataOf(services, ClassOf(kMission)).empty();
}

void AssociateOn(const Services& services) {
  if (!AskDesktop(services, true)) return;
  // Without quotes: the program takes the whole rest of the command line for one path.
  const std::string command = BuildPath(services.ProgramPath, services.ProgramName) + " %1";
  Put(services, ClassOf(kMission), kProgramTitle);
  Put(services, ClassOf(kBriefing), "RWS Briefing");
  Put(services, kMission, ClassOf(kMission));
  Put(services, kBriefing, ClassOf(kBriefing));
  Put(services, ClassOf(kMission) + kOpenCommand, command);
  Put(services, ClassOf(kBriefing) + kOpenCommand, command);
  NotifyAssocChanged(services);
}

void AssociateOff(const Services& services) {
  if (!AskDesktop(services, false)) return;
  DeleteEnding(services, kMission);
  DeleteEnding(services, kBriefing);
  Delete(services, ClassOf(kMission));
  Delete(services, ClassOf(kBriefing));
  NotifyAssocChanged(services);
}

}  // namespace rws
