#pragma once

#include <string>
#include <string_view>

#include "mission/records.h"

/** Missions as bytes. */
namespace rws {

/** A text with its length before it. */
std::string PackText(std::string_view text);

/** Takes such a text from the beginning of `bytes`; a fault for bytes that are torn. */
std::string TakeText(std::string_view& bytes);

/** All fields of a mission. */
std::string PackMission(const Mission& mission);

/** The mission that was packed; a fault for bytes that are torn or of other records. */
Mission UnpackMission(std::string_view bytes);

/** Tells records of one version of the program from those of another. */
std::string RecordsVersion();

}  // namespace rws
