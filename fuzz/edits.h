#pragma once

#include <fuzzer/FuzzedDataProvider.h>

#include "mission/records.h"

namespace rws::fuzz {

/** Edits a mission as the window can: up to six times, each edit chosen by bytes of the input. */
void EditSomehow(FuzzedDataProvider& from, Mission& mission);

/** The values that an edit can give a mission, as one text. */
std::string EditedValues(const Mission& mission);

}  // namespace rws::fuzz
