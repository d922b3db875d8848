#pragma once

#include "mission/document.h"
#include "services/services.h"

namespace rws {

/** Reads "RWS_Maps.txt" into `Maps`: display name and map path, one map a line. A missing table is
    silent and leaves every mission without a map name. */
void LoadMaps(Document& doc, const Services& services);

}  // namespace rws
