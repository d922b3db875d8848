#pragma once

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "library/facts.h"
#include "services/code_page.h"
#include "services/file_system.h"

namespace rws {

/** What is to be read. */
struct ReadRequest {
  /** Folders whose missions are read. */
  std::vector<std::string> Folders = {};
  /** Single missions, full paths as they are spelled on disk. */
  std::vector<std::string> Files = {};
  /** Also the folders below, each once however many links lead there. */
  bool Tree = false;
  /** Comma-separated fragments of file names that are left out. */
  std::string Excluded = {};
  /** Texts that are looked for in missions and briefings, at most 32: bytes in the lower case of
      the code page. */
  std::vector<std::string> Texts = {};
  /** Is called in the threads with each mission that was read: its facts, but for those of the
      briefing, the name of that file, and the bytes. */
  std::function<void(const MissionFacts&, const std::string& briefing, std::string&& bytes)>
      OnRead = {};
};

struct ReadProgress {
  /** Missions found until now, and how many of them are read. */
  std::size_t Found = 0, Read = 0;
  /** Nothing is under way. What was read may still wait to be taken. */
  bool Idle = true;
};

/** Reads missions in threads of its own. Who asks is never called and never waits: he takes, when
    it suits him, what was read until then. All members are for one thread. */
class MissionReader {
 public:
  /** As many threads as the machine has cores for 0. Hooks of the file system are called in them.
   */
  MissionReader(const FileSystem& files, const CodePage& page, unsigned threads = 0);
  /** Waits for the files that are being read, and drops the rest. */
  ~MissionReader();
  MissionReader(const MissionReader&) = delete;
  MissionReader& operator=(const MissionReader&) = delete;

  /** Adds to what is under way. Gives the number that the facts of this request bear. */
  std::uint32_t Add(ReadRequest request);
  /** Drops all that is under way and all that was not taken. */
  void Stop();
  ReadProgress Progress() const;
  /** At most so many missions that were read, each as soon as it can be had; in no order. One that
      is gone has a stamp that says so, one that cannot be read tells why in `FaultText`. */
  std::vector<MissionFacts> Take(std::size_t most);
  /** As above, but waits until there are some; none mean that nothing is under way. For programs
      without a window. */
  std::vector<MissionFacts> Wait();
  /** What went wrong beside single missions, UTF-8: each folder that could not be listed. */
  std::vector<std::string> TakeTroubles();

 private:
  struct Job;
  struct Task;
  class Worker;

  void Push(Task task);  // with the lock
  void Run(const std::stop_token& stop);
  bool IsLive(const Job& job) const;
  std::vector<MissionFacts> TakeLocked(std::size_t most);

  FileSystem files_;
  const CodePage page_;
  mutable std::mutex mutex_;
  std::condition_variable hasTask_, hasResult_;
  std::deque<Task> tasks_;
  std::deque<std::vector<MissionFacts>> results_;
  std::vector<std::string> troubles_;
  ReadProgress progress_;
  std::size_t pending_ = 0;  // tasks that wait or run
  std::uint32_t lastRequest_ = 0, firstLive_ = 1;
  std::vector<std::jthread> threads_;  // last, so that they end first
};

}  // namespace rws
