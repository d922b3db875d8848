#pragma once

#include <string_view>

#include "services/faults.h"
#include "services/services.h"

namespace rws {

/** Adds one line to "Error.txt" in `AppPath`: the description directly followed by the procedure
    name. The file is opened and closed for each line, so that a crash loses none. Never fails; a
   log that cannot be written is given up. */
void LogError(const Services& services, std::string_view description,
              std::string_view procedureName);

/** The same services without a log: what is only tried is no fault of the run. */
Services Silent(const Services& services);

/** Runs `body`; a fault is logged under the procedure's name and ends it. False if it failed. */
template <class Body>
bool LogAndLeave(const Services& services, std::string_view procedureName, Body&& body) {
  return Trap(body, [&](const Fault& caught) { LogError(services, caught.Text, procedureName); });
}

}  // namespace rws
