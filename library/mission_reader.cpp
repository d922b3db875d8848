#include "library/mission_reader.h"

#include <algorithm>
#include <map>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "library/briefings.h"
#include "library/text_finder.h"
#include "mission/briefing_file.h"
#include "mission/line_array.h"
#include "services/faults.h"
#include "services/paths.h"
#include "services/text.h"

namespace rws {

namespace {

constexpr std::size_t kFilesATask = 16, kMostTexts = 32;
/** No briefing comes near it. */
constexpr std::uint64_t kMostBriefing = 1024 * 1024;
/** A text beyond it leaves no memory behind for the next ones. */
constexpr std::size_t kUsualMission = 4 * 1024 * 1024;

std::vector<std::string> Fragments(const std::string& excluded) {
  std::vector<std::string> fragments;
  const std::string folded = FoldName(excluded);
  for (const auto part : SplitAt(folded, ','))
    if (!part.empty()) fragments.emplace_back(part);
  return fragments;
}

bool IsLeftOut(const std::string& name, const std::vector<std::string>& fragments) {
  if (fragments.empty()) return false;
  const std::string folded = FoldName(name);
  return std::any_of(fragments.begin(), fragments.end(),
                     [&](const std::string& part) { return Contains(folded, part); });
}

}  // namespace

struct MissionReader::Job {
  std::uint32_t Number = 0;
  ReadRequest Request;
  std::vector<std::string> Excluded;
  std::vector<TextFinder> Texts;
  std::unordered_set<std::string> Seen;  // folders, without links; with the lock
};

/** A folder to be listed, or missions of it to be read. */
struct MissionReader::Task {
  enum Work { ListRoot, ListBelow, ListNamed, ReadListed, ReadNamed };

  Work What;
  std::shared_ptr<MissionReader::Job> For;
  std::string Folder;
  std::string Real = {};  // where a folder below another really is
  MissionKind Kind = MissionKind::Unknown;
  std::vector<ListedMission> Missions = {};
};

/** What one thread works with. */
class MissionReader::Worker {
 public:
  Worker(MissionReader& reader, const FileSystem& files) : reader_(reader), files_(files) {}

  void Do(Task task, const std::stop_token& stop) {
    const bool isListed = task.What == Task::ReadListed || task.What == Task::ReadNamed;
    if (!isListed) task.Kind = KindOfFolder(files_.GetAbsolutePathName(task.Folder));
    if (task.What == Task::ListNamed)
      ListNamed(std::move(task));
    else if (isListed)
      ReadAll(task, stop);
    else
      List(std::move(task));
  }

 private:
  using Folders = std::vector<std::pair<std::string, std::string>>;

  void List(Task task) {
    if (task.What == Task::ListRoot) {
      task.Real = files_.RealPath(files_.GetAbsolutePathName(task.Folder));
      const std::lock_guard lock(reader_.mutex_);
      if (!task.For->Seen.insert(task.Real).second) return;
    }
    const auto entries = files_.ListFolder(task.Folder);
    task.Missions = ListedMissions(entries);
    std::erase_if(task.Missions, [&](const ListedMission& mission) {
      return IsLeftOut(mission.Name, task.For->Excluded);
    });
    const Folders below = task.For->Request.Tree ? FoldersBelow(task, entries) : Folders();
    task.What = Task::ReadListed;
    PushBelow(below, std::move(task));
  }

  /** A folder that cannot be listed may still let its files be read. */
  void ListNamed(Task task) {
    std::unordered_map<std::string, std::string> briefings;
    ResumeNext([&] {
      for (auto& mission : ListedMissions(files_.ListFolder(task.Folder)))
        briefings[std::move(mission.Name)] = std::move(mission.Briefing);
    });
    for (auto& mission : task.Missions) mission.Briefing = briefings[mission.Name];
    task.What = Task::ReadNamed;
    PushBelow({}, std::move(task));
  }

  Folders FoldersBelow(const Task& task, const std::vector<FolderEntry>& entries) const {
    Folders below;
    for (const auto& entry : entries)
      if (entry.IsFolder)
        below.emplace_back(BuildPath(task.Folder, entry.Name),
                           files_.FollowLinks(BuildPath(task.Real, entry.Name)));
    return below;
  }

  void PushBelow(const Folders& below, Task task) {
    auto missions = std::exchange(task.Missions, {});
    const std::lock_guard lock(reader_.mutex_);
    if (!reader_.IsLive(*task.For)) return;
    for (const auto& [path, real] : below)
      if (task.For->Seen.insert(real).second) reader_.Push({Task::ListBelow, task.For, path, real});
    reader_.progress_.Found += missions.size();
    for (std::size_t i = 0; i < missions.size(); i += kFilesATask) {
      Task part = task;
      const auto first = missions.begin() + static_cast<std::ptrdiff_t>(i);
      const auto count = std::min(kFilesATask, missions.size() - i);
      part.Missions.assign(std::make_move_iterator(first),
                           std::make_move_iterator(first + static_cast<std::ptrdiff_t>(count)));
      reader_.Push(std::move(part));
    }
  }

  void ReadAll(const Task& task, const std::stop_token& stop) {
    std::vector<MissionFacts> results;
    for (const auto& mission : task.Missions) {
      if (stop.stop_requested()) return;
      results.push_back(Read(task, mission));
      // The next one may take long.
      if (results.back().Stamp.Size > kUsualMission) Publish(*task.For, results);
    }
    Publish(*task.For, results);
  }

  void Publish(const Job& job, std::vector<MissionFacts>& results) {
    {
      const std::lock_guard lock(reader_.mutex_);
      if (!results.empty() && reader_.IsLive(job)) {
        reader_.progress_.Read += results.size();
        reader_.results_.push_back(std::move(results));
      }
    }
    results.clear();
    reader_.hasResult_.notify_all();
  }

  MissionFacts Read(const Task& task, const ListedMission& mission) {
    MissionFacts facts;
    facts.Folder = task.Folder;
    facts.FileName = mission.Name;
    facts.Kind = task.Kind;
    facts.Request = task.For->Number;
    const std::string path = BuildPath(task.Folder, mission.Name);
    Trap(
        [&] {
          // A pipe of that name would be waited for.
          if (task.What == Task::ReadNamed && !files_.FileExists(path))
            throw FileNotFoundFault(path);
          ReadFile(path, *task.For, mission.Briefing, facts);
        },
        [&](const Fault& caught) {
          facts.Fault = MissionFault::Unreadable;
          facts.FaultText = caught.Text;
          if (caught.Number != fault::FileNotFound) facts.Stamp = files_.Stamp(path);
        });
    if (!mission.Briefing.empty())
      ReadBriefing(BuildPath(task.Folder, mission.Briefing), task.For->Texts, facts);
    return facts;
  }

  void ReadFile(const std::string& path, const Job& job, const std::string& briefing,
                MissionFacts& facts) {
    std::string bytes = files_.ReadFile(path, LineArray::kLargest, &facts.Stamp);
    factsReader_.Read(bytes, facts);
    Look(bytes, job.Texts, facts);
    if (bytes.size() > kUsualMission) factsReader_ = {};
    facts.KindGuessed = facts.Kind == MissionKind::Unknown;
    if (facts.KindGuessed) facts.Kind = GuessedKind(facts);
    if (job.Request.OnRead) job.Request.OnRead(facts, briefing, std::move(bytes));
  }

  /** One that cannot be read leaves the mission without. */
  void ReadBriefing(const std::string& path, const std::vector<TextFinder>& texts,
                    MissionFacts& facts) {
    ResumeNext([&] {
      const std::string bytes = files_.ReadFile(path, kMostBriefing);
      Briefing briefing = ParseBriefing(bytes);
      facts.BriefingName = std::move(briefing.Name);
      facts.BriefingShort = std::move(briefing.Short);
      Look(bytes, texts, facts);
    });
  }

  static void Look(std::string_view bytes, const std::vector<TextFinder>& texts,
                   MissionFacts& facts) {
    for (std::size_t i = 0; i < texts.size(); ++i)
      if (texts[i].IsIn(bytes)) facts.TextsFound |= 1U << i;
  }

  MissionReader& reader_;
  const FileSystem& files_;
  FactsReader factsReader_;
};

MissionReader::MissionReader(const FileSystem& files, const CodePage& page, unsigned threads)
    : files_(files.ForThreads()), page_(page) {
  if (threads == 0) threads = std::max(1U, std::thread::hardware_concurrency());
  for (unsigned i = 0; i < threads; ++i)
    threads_.emplace_back([this](const std::stop_token& stop) { Run(stop); });
}

MissionReader::~MissionReader() {
  Stop();
  {
    const std::lock_guard lock(mutex_);
    for (auto& thread : threads_) thread.request_stop();
  }
  hasTask_.notify_all();
  threads_.clear();
}

bool MissionReader::IsLive(const Job& job) const { return job.Number >= firstLive_; }

void MissionReader::Push(Task task) {
  tasks_.push_back(std::move(task));
  ++pending_;
  // Not one: before glibc 2.41 a wake-up for one thread can be lost among several, and the task
  // would lie there for ever.
  hasTask_.notify_all();
}

std::uint32_t MissionReader::Add(ReadRequest request) {
  const auto job = std::make_shared<Job>();
  job->Request = std::move(request);
  job->Excluded = Fragments(job->Request.Excluded);
  for (const auto& text : job->Request.Texts)
    if (job->Texts.size() < kMostTexts) job->Texts.emplace_back(page_, text);
  std::map<std::string, std::vector<ListedMission>> files;
  for (const auto& path : job->Request.Files)
    files[GetParentFolderName(path)].push_back({GetFileName(path), ""});
  const std::lock_guard lock(mutex_);
  if (pending_ == 0 && results_.empty()) progress_ = {};
  job->Number = ++lastRequest_;
  for (auto& [folder, missions] : files)
    Push({Task::ListNamed, job, folder, "", MissionKind::Unknown, std::move(missions)});
  for (const auto& folder : job->Request.Folders) Push({Task::ListRoot, job, folder});
  return job->Number;
}

void MissionReader::Stop() {
  const std::lock_guard lock(mutex_);
  firstLive_ = lastRequest_ + 1;
  tasks_.clear();
  results_.clear();
  troubles_.clear();
  pending_ = 0;
  progress_ = {};
}

void MissionReader::Run(const std::stop_token& stop) {
  Worker worker(*this, files_);
  while (true) {
    std::unique_lock lock(mutex_);
    // Not the wait that takes the token: it waits for its callback by an atomic, which in libraries
    // without a call of the system for that can sleep for ever.
    hasTask_.wait(lock, [&] { return stop.stop_requested() || !tasks_.empty(); });
    if (stop.stop_requested()) return;
    Task task = std::move(tasks_.front());
    tasks_.pop_front();
    lock.unlock();
    const auto job = task.For;
    std::string trouble;
    Trap([&] { worker.Do(std::move(task), stop); },
         [&](const Fault& caught) { trouble = caught.Text; });
    lock.lock();
    if (!IsLive(*job)) continue;
    if (!trouble.empty()) troubles_.push_back(std::move(trouble));
    --pending_;
    hasResult_.notify_all();
  }
}

ReadProgress MissionReader::Progress() const {
  const std::lock_guard lock(mutex_);
  ReadProgress progress = progress_;
  progress.Idle = pending_ == 0;
  return progress;
}

std::vector<MissionFacts> MissionReader::TakeLocked(std::size_t most) {
  std::vector<MissionFacts> taken;
  while (!results_.empty() && taken.size() < most) {
    auto& batch = results_.front();
    const std::size_t count = std::min(batch.size(), most - taken.size());
    const auto from = batch.end() - static_cast<std::ptrdiff_t>(count);
    taken.insert(taken.end(), std::make_move_iterator(from), std::make_move_iterator(batch.end()));
    batch.erase(from, batch.end());
    if (batch.empty()) results_.pop_front();
  }
  return taken;
}

std::vector<MissionFacts> MissionReader::Take(std::size_t most) {
  const std::lock_guard lock(mutex_);
  return TakeLocked(most);
}

std::vector<MissionFacts> MissionReader::Wait() {
  std::unique_lock lock(mutex_);
  hasResult_.wait(lock, [&] { return !results_.empty() || pending_ == 0; });
  return TakeLocked(SIZE_MAX);
}

std::vector<std::string> MissionReader::TakeTroubles() {
  const std::lock_guard lock(mutex_);
  return std::exchange(troubles_, {});
}

}  // namespace rws
