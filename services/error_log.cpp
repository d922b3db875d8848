#include "services/error_log.h"

#include "services/paths.h"

namespace rws {

void LogError(const Services& services, std::string_view description,
              std::string_view procedureName) {
  const std::string line = std::string(description).append(procedureName);
  if (services.LogSink) return services.LogSink(line);
  ResumeNext([&] {
    services.Files.AppendToFile(BuildPath(services.AppPath, "Error.txt"), line + "\r\n");
  });
}

Services Silent(const Services& services) {
  Services silent = services;
  silent.LogSink = [](const std::string&) {};
  return silent;
}

}  // namespace rws
