#pragma once

#include <string>

#include "services/services.h"

namespace rws {

/** Address of the text file that holds the latest published version. */
std::string VersionAddress(const Services& services);
/** Address of the page that a newer version is offered at. */
std::string SiteAddress(const Services& services);

/** The latest published version, or "Unable to make connection." Waits for the answer while user
    interface events run. */
std::string GetVersionText(const Services& services);

/** Tells what came of the check: offers the site for a version that sorts after this one, says
    nothing of one that sorts before. */
void TellVersion(const Services& services, const std::string& fetched);

}  // namespace rws
