#pragma once

#include "catalogues/catalogues.h"
#include "services/services.h"

namespace rws {

/** Reads "RWS_Countries.txt" into `Countries`. True if rows were read: without any, no aircraft can
    be changed. A missing table is silent; a row of fewer than four columns is logged and ends the
    reading. */
bool LoadAC(Catalogues& catalogues, const Services& services);

}  // namespace rws
