#pragma once

#include <cstdint>
#include <string>

#include "services/preferences.h"
#include "services/services.h"

/** The store of files that commands have deleted or replaced, a folder within "Recovery". */
namespace rws {

/** What the names of recovery folders begin with. */
inline const std::string kRecoveryFolder = "Recovery";

/** Where unsaved edits and, in a folder of it, the files of the store lie. */
std::string RecoveryFolder(const Services& services);

/** That folder. */
std::string StoreFolder(const Services& services);

/** Makes a folder that is not there. */
void MakeFolder(const Services& services, const std::string& path);

/** The beginning of a name, so that what is added to it still makes a name. */
std::string ShortName(const std::string& name);

/** Puts a copy of a file into the store and gives its path: the time, a number and the name. A
    failure is a fault. */
std::string KeepInStore(const Services& services, const std::string& path);

struct StoreLimits {
  /** Days that a file is kept, and bytes of all together; the oldest go first. */
  int Days = 30;
  std::uint64_t Bytes = std::uint64_t{256} << 20;
};

/** As the user has chosen. */
StoreLimits LimitsOf(const Preferences& prefs);

/** Deletes what goes beyond the limits; what a running session may still need is younger. */
void LimitStore(const Services& services, const StoreLimits& limits);

std::uint64_t StoreBytes(const Services& services);

}  // namespace rws
