#pragma once

#include <string>

#include "services/services.h"

namespace rws {

/** The web site that this build was made to ask, as scheme and host; "" when it was given none. */
std::string BuiltInUpdateSite();

/** The latest published version, or "Unable to make connection." with what is known of the cause
    below it. Waits for the answer while user interface events run. */
std::string GetVersionText(const Services& services);

/** Tells what came of the check: offers the site for a version that sorts after this one, says
    nothing of one that sorts before. */
void TellVersion(const Services& services, const std::string& fetched);

}  // namespace rws
