#pragma once

#include "catalogues/catalogues.h"
#include "services/services.h"

namespace rws {

/** Reads "RWS_DF.txt" into `DogFightAircraft`, fresh each time the home bases are edited. A missing
    table is silent; a row of fewer than three columns is logged and ends the reading. */
void ReadDogFight(Catalogues& catalogues, const Services& services);

}  // namespace rws
