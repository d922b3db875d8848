#pragma once

#include "mission/line_array.h"

/** Steps on lines that others have changed since. */
namespace rws {

/** `now`, lines that others have changed since they were `from`, with what a step has changed from
    `from` to `to`. What others put in or wrote stays, also where the step had another line. */
LineArray PatchedLines(const LineArray& now, const LineArray& from, const LineArray& to);

}  // namespace rws
