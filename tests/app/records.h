#pragma once

#include <functional>
#include <string>

namespace rws::test {

/** What a test makes against the record of it, a file below the sources, that was looked over when
    it last changed. Waits a while for what is filled from behind. `RWS_TAKE_RECORDS=1` takes the
    record anew: read what git says of it. */
void ExpectRecord(const std::string& file, const std::function<std::string()>& make);

}  // namespace rws::test
