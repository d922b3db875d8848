#include "services/services.h"

#include "services/paths.h"

namespace rws {

std::string DataFile(const Services& services, const std::string& name) {
  const std::string own = BuildPath(services.AppPath, name);
  return services.Files.FileExists(own) ? own : BuildPath(services.ProgramPath, name);
}

}  // namespace rws
