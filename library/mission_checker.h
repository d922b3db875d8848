#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "library/check.h"
#include "library/check_files.h"
#include "library/check_tables.h"
#include "library/mission_reader.h"

namespace rws {

/** What a run has found in one mission. */
struct CheckedMission {
  std::string Path;
  std::string FaultText;  // why it could not be read, UTF-8; "" if it was
  std::vector<rws::Finding> Findings;
};

/** What is to be checked. */
struct CheckRequest {
  std::vector<std::string> Folders = {}, Files = {};
  /** Also the folders below. */
  bool Tree = false;
  /** Comma-separated fragments of file names that are left out. */
  std::string Excluded = {};
};

/** Checks missions as they are on disk, in threads of its own. Who asks takes, when it suits him,
    what was found until then. All members are for one thread. */
class MissionChecker {
 public:
  /** `game` is the game of all missions; with "" each has the one that it lies in. */
  MissionChecker(const FileSystem& files, std::shared_ptr<const CheckTables> tables,
                 std::string game, unsigned threads = 0);
  ~MissionChecker();

  /** Adds to what is under way. */
  void Add(const CheckRequest& request);
  /** Drops all that is under way and all that was not taken. */
  void Stop();
  ReadProgress Progress() const { return reader_.Progress(); }
  /** At most so many missions that were checked, in no order. */
  std::vector<CheckedMission> Take(std::size_t most);
  /** As above, but waits until there are some; none mean that nothing is under way. */
  std::vector<CheckedMission> Wait();
  /** What went wrong beside single missions, UTF-8. */
  std::vector<std::string> TakeTroubles() { return reader_.TakeTroubles(); }

 private:
  struct Found;

  std::vector<CheckedMission> Join(std::vector<MissionFacts> read);

  std::shared_ptr<const CheckTables> tables_;
  std::shared_ptr<GameFiles> game_;
  /** What the threads have found and nobody has taken; a stop leaves it to them. */
  std::shared_ptr<Found> found_;
  MissionReader reader_;  // last, so that its threads end first
};

}  // namespace rws
