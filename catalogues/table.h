#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "mission/line_array.h"
#include "services/services.h"

/** The comma-separated tables that lie beside the program. */
namespace rws {

/** Lines of a data table, without blank ones; nothing if there is no such file. A line feed ends a
    line with or without a carriage return before it, so that a table edited on any system loads.
   The lines are in the page of mission text, see `TableText`. A file that cannot be read is a
   fault. */
std::optional<LineArray> ReadTable(const Services& services, const std::string& name);

/** A column of a split row, counted from 0; "" for one that the row lacks. */
std::string Column(const std::vector<std::string_view>& columns, std::size_t index);

}  // namespace rws
