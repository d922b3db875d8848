#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "catalogues/catalogues.h"
#include "mission/document.h"
#include "services/services.h"

/** Aircraft and maps that the user has added by hand, in a file of their own beside the tables.
   They win over the tables and over the lists of the game. Texts are UTF-8. */
namespace rws {

struct OwnAircraft {
  std::string Class;  // without "air."
  std::string Name;
  bool IsBlue = false, Flyable = true;
  std::string Key = {};                    // as home bases spell it, "" for unknown
  std::vector<std::string> Loadouts = {};  // keys
  std::string From = {};                   // where it was seen, for the user

  bool operator==(const OwnAircraft&) const = default;
};

struct OwnMap {
  std::string Path, Name;
  std::string From = {};

  bool operator==(const OwnMap&) const = default;
};

struct OwnEntries {
  std::vector<OwnAircraft> Aircraft;
  std::vector<OwnMap> Maps;
  /** Lines that are not understood, as "12: text". */
  std::vector<std::string> Troubles = {};
};

/** The file, which need not exist. */
std::string OwnEntriesFile(const Services& services);

/** The entries of the file's bytes. A line that is not understood is told and passed over; of two
    entries for one class or map the last counts. */
OwnEntries ParseOwnEntries(std::string_view bytes);

/** The file's bytes, "" for no file. A fault names the file and the reason. */
std::string ReadOwnEntriesFile(const Services& services);

/** The bytes with one entry added, or in place of those for the same class or map. All other lines
    stay as they are. */
std::string WithOwnAircraft(std::string_view bytes, const OwnAircraft& entry);
std::string WithOwnMap(std::string_view bytes, const OwnMap& entry);

/** Adds an entry to the file, or puts it in place of the one for the same class or map. A fault
    names the file and the reason, and leaves the file as it was. */
void AddOwnAircraft(const Services& services, const OwnAircraft& entry);
void AddOwnMap(const Services& services, const OwnMap& entry);

/** The entries of the user; none, logged, when the file cannot be read. */
OwnEntries ReadOwnEntries(const Services& services);

/** Puts the entries over the tables and lists that were applied before. Of an aircraft that these
    have, name, side and who may fly it change, and loadouts are added. */
void ApplyOwnEntries(Document& doc, Catalogues& catalogues, const Services& services,
                     const OwnEntries& own);

}  // namespace rws
