// Every operation on files, with every step failing in every way, looked at by one rule: what was
// there is there whole, old or new; the user is told what is so; the session knows it too.

#include <gtest/gtest.h>

#include <iostream>
#include <random>
#include <set>

#include "mission/interrupted.h"
#include "services/faults.h"
#include "services/paths.h"
#include "services/text.h"
#include "session/half_renamed.h"
#include "session/recording.h"
#include "tests/faults/disk.h"
#include "tests/faults/operations.h"

namespace rws::test {
namespace {

/** The user chose these, or the games's own file system did. */
struct Surroundings {
  bool Backups, Apart;
};
constexpr Surroundings kSurroundings[] = {
    {false, false}, {true, false}, {false, true}, {true, true}};

bool IsOwn(const std::string& path) { return path.starts_with("program/"); }
/** Copies, backups and the store: what stands there beside the operation's subject. */
bool IsAside(const std::string& path) {
  return path.starts_with("program/RWS Backup/") || path.starts_with("program/Recovery/Files/") ||
         path.starts_with("program/$$$TEMP");
}
bool IsHalfWritten(const std::string& path) { return Contains(path, ".rws"); }

/** An operation that nothing disturbs. */
struct PlainRun {
  std::vector<MetStep> Steps;
  DiskState Before, After;
  /** As a kill before each step would leave it; then, behind `Whole`, within the writing ones. */
  std::vector<DiskState> Killed;
  std::size_t Whole = 0;
  std::string Signature;
};

/** Runs an operation on a desk, with something in the way. */
void RunOn(OperationDesk& desk, const Operation& operation, bool apart,
           const std::function<void(const FileStep&)>& before) {
  desk.World.Services.Files.BeforeStep = [&before, apart](const FileStep& step) {
    before(step);
    const bool crosses =
        (step.Action == "move" || step.Action == "link") &&
        GetParentFolderName(step.Path) != GetParentFolderName(std::string(step.Into));
    if (apart && crosses)
      throw FileFault(fault::OtherDisk, step.Action, step.Path, "Invalid cross-device link");
  };
  operation.Run(desk);
  desk.World.Services.Files.BeforeStep = nullptr;
}

PlainRun RunPlain(const Operation& operation, const Surroundings& at) {
  OperationDesk desk(operation, at.Backups);
  PlainRun run;
  const std::string root = desk.Box.Path();
  run.Before = DiskState::Of(root);
  std::vector<DiskState> within;
  RunOn(desk, operation, at.Apart, [&](const FileStep& step) {
    run.Steps.push_back({std::string(step.Action), step.Path});
    run.Signature += std::string(step.Action) + " " + step.Path.substr(root.size()) + "\n";
    run.Killed.push_back(DiskState::Of(root));
    if (step.Bytes.empty()) return;
    within.push_back(run.Killed.back());
    const std::string into = Replace(std::string(step.Into).substr(root.size() + 1), "\\", "/");
    auto& file = within.back().Files[into];
    file.Bytes += step.Bytes.substr(0, step.Bytes.size() / 2);
    if (file.Same.empty()) file.Same = into;
  });
  run.After = DiskState::Of(root);
  run.Killed.push_back(run.After);
  run.Whole = run.Killed.size();
  run.Killed.insert(run.Killed.end(), within.begin(), within.end());
  return run;
}

/** The one rule, for what an operation has left behind. */
class Rule {
 public:
  Rule(const Operation& operation, const PlainRun& plain, DiskState now)
      : operation_(operation), plain_(plain), now_(std::move(now)) {}

  /** Each file that was there is there whole, old or new; "" is told where an old one is to be kept
      that is not. */
  void ExpectAllThere(const std::string& told) const {
    for (const auto& [path, file] : plain_.Before.Files)
      if (!path.ends_with(".note") && !path.ends_with(".lock")) ExpectThere(path, file.Bytes, told);
  }

  /** No file is half written, or of nobody. */
  void ExpectNothingElse(bool killed) const {
    for (const auto& [path, file] : now_.Files) {
      if (IsHalfWritten(path) || path.ends_with(".lock")) {
        EXPECT_TRUE(killed) << "left: " << path;
        continue;
      }
      if (IsAside(path)) continue;
      const bool isKnown = plain_.Before.Find(path) || plain_.After.Find(path);
      EXPECT_TRUE(isKnown || path.ends_with("tmp")) << path;
      const std::string *old = plain_.Before.Find(path), *made = plain_.After.Find(path);
      if (isKnown) {
        EXPECT_TRUE((old && file.Bytes == *old) || (made && file.Bytes == *made)) << path;
      } else {
        EXPECT_TRUE(plain_.Before.HoldsSomewhere(file.Bytes)) << path;
      }
    }
  }

  /** True if all that is not aside stands as the operation was to leave it. */
  bool IsDone() const { return SubjectOf(now_) == SubjectOf(plain_.After); }

 private:
  static std::map<std::string, std::string> SubjectOf(const DiskState& disk) {
    std::map<std::string, std::string> subject;
    for (const auto& [path, file] : disk.Files)
      if (!IsAside(path)) subject[path] = file.Bytes;
    return subject;
  }

  bool StandsUnderAName(const std::string& path, const std::string& bytes) const {
    for (const auto& [at, file] : now_.Files) {
      if (file.Bytes != bytes || IsHalfWritten(at)) continue;
      const std::string* made = plain_.After.Find(at);
      if (at == path || IsOwn(path) || (made && *made == bytes) || at.ends_with("tmp")) return true;
      if (*operation_.MayBeBackupAlone != '\0' && IsAside(at)) return true;
    }
    return false;
  }

  void ExpectThere(const std::string& path, const std::string& old, const std::string& told) const {
    const std::string *made = plain_.After.Find(path), *is = now_.Find(path);
    const bool isKept = plain_.After.HoldsSomewhere(old), isReplaced = made && *made != old;
    if (is && *is == old) return;
    // What cannot be kept is deleted all the same, and the user told.
    const bool mayGo = !isKept || Contains(told, "cannot be brought back by Undo");
    if (isReplaced && is && *is == *made) {
      EXPECT_TRUE(mayGo || now_.HoldsSomewhere(old)) << "not kept: " << path;
    } else if (!made && !isKept) {
      return;
    } else if (!made && mayGo && !is) {
      return;
    } else if (!made && IsKeptAside(old)) {
      EXPECT_TRUE(now_.HoldsSomewhere(old)) << "gone: " << path;
    } else {
      EXPECT_TRUE(StandsUnderAName(path, old)) << "not there: " << path;
    }
  }

  /** The operation itself leaves it in a backup or the store alone. */
  bool IsKeptAside(const std::string& bytes) const {
    for (const auto& [at, file] : plain_.After.Files)
      if (file.Bytes == bytes && !IsAside(at)) return false;
    return true;
  }

  const Operation& operation_;
  const PlainRun& plain_;
  DiskState now_;
};

/** What the session holds is what stands on disk, or is marked as unsaved. */
void ExpectInStep(const OperationDesk& desk) {
  const auto& world = desk.World;
  for (std::size_t i = 0; i < world.Doc.Missions.size(); ++i) {
    const Mission& mission = world.Doc.Missions[i];
    const std::string& path = world.Doc.MissionFiles[i];
    EXPECT_EQ(mission.FileName + mission.BaseName, GetFileName(path) + GetBaseName(path));
    if (!mission.Loaded || mission.NotWritten || IsUnsaved(world, i)) continue;
    // Read again in vain, it is asked about before it is written.
    if (world.Services.Files.IsGone(path) || Contains(desk.Told, "cannot be read")) continue;
    const std::string shown = TextOf(world.Services, {"", path, "", mission, ""});
    EXPECT_TRUE(shown == world.Services.Files.ReadFile(path)) << path << " is shown otherwise";
  }
}

void ExpectTold(const Operation& operation, const OperationDesk& desk, const FaultyDisk& disk,
                FaultKind kind) {
  const std::string told =
      desk.Told + (*operation.OnlyLogged != '\0' ? Joined(desk.World.Log) : "");
  const bool named = std::any_of(disk.Failed.begin(), disk.Failed.end(), [&](const auto& step) {
    return Contains(told, GetFileName(step.Path));
  });
  EXPECT_TRUE(named) << "names no file: " << told;
  EXPECT_TRUE(Contains(told, FaultyDisk::Reason(kind))) << "gives no reason: " << told;
}

void TryFault(const Operation& operation, const Surroundings& at, const PlainRun& plain,
              FaultKind kind, std::size_t step) {
  OperationDesk desk(operation, at.Backups);
  FaultyDisk disk(kind, step);
  RunOn(desk, operation, at.Apart, [&](const FileStep& next) { disk.Before(next); });
  ASSERT_FALSE(disk.Failed.empty());
  const Rule rule(operation, plain, DiskState::Of(desk.Box.Path()));
  rule.ExpectAllThere(desk.Told);
  rule.ExpectNothingElse(false);
  if (!rule.IsDone()) ExpectTold(operation, desk, disk, kind);
  if (desk.Rereads) desk.Reread("Command");
  ExpectInStep(desk);
}

/** The program was killed, and is started again. */
void TryKill(const Operation& operation, const PlainRun& plain, const DiskState& left) {
  Rule(operation, plain, left).ExpectAllThere("");
  Rule(operation, plain, left).ExpectNothingElse(true);
  const Sandbox box;
  const std::string root = box.Path();
  left.PutInto(root);
  const World next(box.Path("program"));
  for (const auto& found : FindInterrupted(next.Services)) GiveBack(next.Services, found);
  const std::string names =
      FinishRenames(next.Services, FindHalfRenamed(next.Services, box.Path("in")));
  EXPECT_TRUE(names.empty() || Contains(names, "already exists")) << names;
  for (const auto& found : FindRecovered(next.Services)) EXPECT_EQ(found.Fault, "");
  const DiskState now = DiskState::Of(root);
  for (const auto& [path, file] : now.Files)
    EXPECT_FALSE(path.starts_with("program/$$$TEMP") && !path.ends_with(".kept") &&
                 !path.ends_with(".kept.note") && !IsHalfWritten(path))
        << path;
  Rule(operation, plain, now).ExpectAllThere("");
}

/** All cases of an operation in these surroundings; gives their number. `seen` are the sequences of
    steps that it has been tried with: the same steps would be the same cases. */
int TryAll(const Operation& operation, const Surroundings& at, std::set<std::string>& seen) {
  const PlainRun plain = RunPlain(operation, at);
  EXPECT_GT(plain.Steps.size(), 1U);
  EXPECT_FALSE(plain.Before.Files == plain.After.Files) << "it does nothing";
  if (!seen.insert(plain.Signature).second) return 0;
  int cases = 0;
  for (const FaultKind kind : kFaultKinds)
    for (std::size_t i = 0; i < plain.Steps.size(); ++i) {
      const MetStep& step = plain.Steps[i];
      if (!FaultyDisk::Befalls(kind, step.Action)) continue;
      SCOPED_TRACE(FaultyDisk::Reason(kind) + (" at step " + std::to_string(i) + ", ") +
                   step.Action + " " + step.Path);
      TryFault(operation, at, plain, kind, i);
      ++cases;
    }
  for (std::size_t i = 0; i < plain.Killed.size(); ++i) {
    const MetStep step = i < plain.Steps.size() ? plain.Steps[i] : MetStep{"the end or within", ""};
    SCOPED_TRACE("killed at " + std::to_string(i) + ", " + step.Action + " " + step.Path);
    TryKill(operation, plain, plain.Killed[i]);
    ++cases;
  }
  return cases;
}

TEST(Faults, LeaveAllWholeAndAreTold) {
  UseQuickFolder();
  // Paths are part of what some files hold.
  Sandbox::OneName = std::to_string(std::random_device{}());
  int all = 0;
  for (const Operation& operation : Operations()) {
    SCOPED_TRACE(operation.Name);
    std::set<std::string> seen;
    int cases = 0;
    for (const auto& at : kSurroundings) {
      SCOPED_TRACE(std::string(at.Backups ? "backups" : "no backups") +
                   (at.Apart ? ", other file systems" : ""));
      cases += TryAll(operation, at, seen);
    }
    std::cout << operation.Name << ": " << cases << " cases\n";
    all += cases;
  }
  Sandbox::OneName.clear();
  std::cout << "In all: " << all << " cases\n";
  EXPECT_GT(all, 5000);
}

}  // namespace
}  // namespace rws::test
