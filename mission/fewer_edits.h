#pragma once

#include "mission/records.h"

namespace rws {

/** True if a mission holds some of the edits that led from `read` to `edited`, or none, and nothing
    else: each value is that of one of the two, and what both of them have is still there. All three
    are of one file, read with its lines kept. Lines of the text itself take no part. */
bool HasFewerEdits(const Mission& read, const Mission& edited, const Mission& result);

}  // namespace rws
