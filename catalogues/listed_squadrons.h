#pragma once

#include "catalogues/listed_names.h"

namespace rws {

/** Puts the regiments of the lists in place of the table's. A code that the table has stays in its
    group; one whose own file tells its air force goes to the group of the others of that, any other
    to the group of the last code before it that the table has. */
void ApplyListedSquadrons(Catalogues& catalogues, const Services& services,
                          const ListedNames& names);

}  // namespace rws
