#pragma once

#include "services/services.h"

/** Opening mission and briefing files with this program from the desktop. */
namespace rws {

/** True if the desktop opens mission files with the program, whoever made it so. */
bool IsAssociated(const Services& services);

/** Makes the program the one for mission and briefing files. When the desktop refuses, the user is
    told why and nothing counts as associated. */
void AssociateOn(const Services& services);

/** Takes the above back. An ending that another program has taken over since stays with it. When
    the desktop refuses, the user is told why and the association stands. */
void AssociateOff(const Services& services);

}  // namespace rws
