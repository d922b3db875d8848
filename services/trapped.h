#pragma once

#include "services/error_log.h"

namespace rws {

/** A handler of a control's event that logs a fault under its name and ends; none reaches the event
    loop. */
template <class Handler>
auto Trapped(const Services& services, const char* name, Handler handler) {
  return [&services, name, handler](auto... arguments) {
    LogAndLeave(services, name, [&] { handler(arguments...); });
  };
}

}  // namespace rws
