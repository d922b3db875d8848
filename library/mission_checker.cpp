#include "library/mission_checker.h"

#include <mutex>
#include <unordered_map>
#include <utility>

#include "services/paths.h"

namespace rws {

struct MissionChecker::Found {
  std::mutex Mutex;
  std::unordered_map<std::string, std::vector<Finding>> ByPath;
};

MissionChecker::MissionChecker(const FileSystem& files, std::shared_ptr<const CheckTables> tables,
                               std::string game, unsigned threads)
    : tables_(std::move(tables)),
      game_(std::make_shared<GameFiles>(files, std::move(game))),
      found_(std::make_shared<Found>()),
      reader_(files, tables_->Page(), threads) {}

MissionChecker::~MissionChecker() = default;

void MissionChecker::Add(const CheckRequest& request) {
  ReadRequest reading{request.Folders, request.Files, request.Tree, request.Excluded};
  reading.OnRead = [tables = tables_, game = game_, found = found_](const MissionFacts& facts,
                                                                    const std::string& briefing,
                                                                    std::string&& bytes) {
    const MissionToCheck mission{BuildPath(facts.Folder, facts.FileName),
                                 LineArray::FromFileAsIs(std::move(bytes)), facts.Kind,
                                 facts.KindGuessed, briefing};
    auto findings = CheckMission(*tables, *game, mission);
    const std::lock_guard lock(found->Mutex);
    found->ByPath[mission.Path] = std::move(findings);
  };
  reader_.Add(std::move(reading));
}

void MissionChecker::Stop() {
  reader_.Stop();
  found_ = std::make_shared<Found>();
}

std::vector<CheckedMission> MissionChecker::Take(std::size_t most) {
  return Join(reader_.Take(most));
}

std::vector<CheckedMission> MissionChecker::Wait() { return Join(reader_.Wait()); }

std::vector<CheckedMission> MissionChecker::Join(std::vector<MissionFacts> read) {
  std::vector<CheckedMission> checked;
  const std::lock_guard lock(found_->Mutex);
  for (auto& facts : read) {
    CheckedMission& mission = checked.emplace_back();
    mission.Path = BuildPath(facts.Folder, facts.FileName);
    if (facts.Fault == MissionFault::Unreadable) mission.FaultText = std::move(facts.FaultText);
    if (auto node = found_->ByPath.extract(mission.Path); !node.empty())
      mission.Findings = std::move(node.mapped());
  }
  return checked;
}

}  // namespace rws
