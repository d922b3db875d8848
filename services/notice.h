#pragma once

#include "services/faults.h"
#include "services/services.h"

namespace rws {

/** Runs `body`; a fault ends it and is told in the status bar, without a box or a line in the log.
    False if it failed. */
template <class Body>
bool NoticeAndLeave(const Services& services, Body&& body) {
  return Trap(body, [&](const Fault& caught) {
    if (services.Ask.Notice) services.Ask.Notice(caught.Text);
  });
}

}  // namespace rws
