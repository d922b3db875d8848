#include "services/services.h"

#include "services/paths.h"

namespace rws {

std::string DataFile(const Services& services, const std::string& name) {
  const std::string own = BuildPath(services.AppPath, name);
  return services.Files.FileExists(own) ? own : ShippedFile(services, name);
}

std::string ShippedFile(const Services& services, const std::string& name) {
  const std::string beside = BuildPath(services.ProgramPath, name);
  if (services.Files.FileExists(beside)) return beside;
  const std::string shared = BuildPath(SharedFolder(services.ProgramPath), name);
  return services.Files.FileExists(shared) ? shared : beside;
}

std::string SharedFolder(const std::string& programPath) {
  return BuildPath(BuildPath(GetParentFolderName(programPath), "share"), "rws-edit");
}

}  // namespace rws
