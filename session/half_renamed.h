#pragma once

#include <string>
#include <vector>

#include "services/services.h"

namespace rws {

/** A file that a rename has left on its way: "X.mistmp", "X.propertiestmp". */
struct HalfRenamed {
  std::string Path;
  /** The name that it was to get. */
  std::string Wanted;
};

/** The name that a file on its way was to get; "" for one that is not on its way. */
std::string WantedName(const std::string& path);

/** Those of a folder, sorted; a folder that cannot be read has none. */
std::vector<HalfRenamed> FindHalfRenamed(const Services& services, const std::string& folder);

/** Gives them their names, never over another file. Gives the first reason for which one could not
    get it, "" for none; the others get theirs all the same. */
std::string FinishRenames(const Services& services, const std::vector<HalfRenamed>& files);

}  // namespace rws
