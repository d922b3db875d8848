#pragma once

#include <string>
#include <string_view>

#include "catalogues/catalogues.h"
#include "services/services.h"

/** Groups and their regiments. A `group` is a flight's name: its last two characters are cut off
   and the rest is sought among the regiment codes, first row first. A group of fewer than two
   characters is logged and has no match. */
namespace rws {

/** Reads "RWS_Squadron.txt": lines of one group name that follow each other make one row. Rows are
    filled from the first on and none is dropped. A missing table is silent. */
void LoadRegiments(Catalogues& catalogues, const Services& services);

/** Army colour word of a group, or "". */
std::string GetArmyByGroup(const Catalogues& catalogues, const Services& services,
                           std::string_view group);

/** Country of a group, or "Unknown". */
std::string GetCountryByGroup(const Catalogues& catalogues, const Services& services,
                              std::string_view group);

/** Name of the row that a group stands in, or "None". */
std::string GetCntyNameByGroup(const Catalogues& catalogues, const Services& services,
                               std::string_view group);

/** Free text of a group's regiment, or "". The one lookup that minds blanks around a code. */
std::string GetUserDatabyGroup(const Catalogues& catalogues, const Services& services,
                               std::string_view group);

/** Army colour word of a group in any letter case, or of the row whose country begins with the
    whole group; else "". */
std::string GetColorByGroup(const Catalogues& catalogues, const Services& services,
                            std::string_view group);

}  // namespace rws
