#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "mission/document.h"
#include "services/services.h"

/** What the fuzz targets share. Of a fault that the program itself throws as its answer to bad
   input `ResumeNext` is the judge; whatever else leaves a target is a finding. */
namespace rws::fuzz {

/** Services that log nothing, ask nothing and know no folder. The clock stands still. */
const Services& QuietServices();

/** Ends the run with a finding, and says which promise was broken. */
void Require(bool holds, std::string_view promise);

/** The same for two texts that are to be one; both are printed. */
void RequireSame(std::string_view is, std::string_view should, std::string_view promise);

/** The same for a text that is to hold another. */
void RequireHolds(std::string_view text, std::string_view part, std::string_view promise);

/** The input as text. */
std::string_view TextOf(const std::uint8_t* data, std::size_t size);

/** Writes a file into a folder of this process alone, and gives the folder. It lies where `TMPDIR`
    says; who sets that clears it. */
const std::string& WriteScratch(const std::string& name, std::string_view bytes);

/** A document of one mission that is not read. */
Document OneMission();

/** All content of a mission as one text, for a comparison; where it stands in the program is left
    out. */
std::string ContentOf(const Mission& mission);

}  // namespace rws::fuzz
