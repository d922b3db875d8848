#include "session/file_undo.h"

#include <algorithm>
#include <map>
#include <optional>

#include "services/checksum.h"
#include "services/faults.h"
#include "services/paths.h"
#include "session/file_store.h"

namespace rws {

namespace {

using Sum = std::optional<std::string>;

/** The files as they would be after a part of the changes: a sum, or nothing where none stands. A
    file whose bytes nobody minds has the sum "". */
class Outlook {
 public:
  explicit Outlook(const Services& services) : services_(services) {}

  bool Stands(const std::string& path) {
    const auto known = known_.find(path);
    if (known != known_.end()) return known->second.has_value();
    return services_.Files.FileExists(path) && services_.Files.Resolve(path) == path;
  }
  bool Holds(const std::string& path, const std::string& sum) {
    if (!Stands(path)) return false;
    const auto known = known_.find(path);
    if (known != known_.end() && !known->second->empty()) return *known->second == sum;
    return Sha1(services_.Files.ReadFile(path)) == sum;
  }
  void Set(const std::string& path, Sum sum) { known_[path] = std::move(sum); }
  Sum At(const std::string& path) {
    const auto known = known_.find(path);
    return known != known_.end() ? known->second : Sum(Stands(path) ? "" : Sum());
  }

 private:
  const Services& services_;
  std::map<std::string, Sum> known_;
};

std::string Quoted(const std::string& path) { return "\"" + path + "\""; }

/** Why the change cannot be taken back as things stand; "" if it can, and then they stand so. */
std::string CheckBack(Outlook& outlook, const FileChange& change) {
  const std::string& path = change.Path;
  const auto wants = [&](bool holds, const char* why) {
    return holds ? std::string() : Quoted(path) + why;
  };
  std::string why;
  switch (change.What) {
    case FileChange::Moved:
      if (!outlook.Stands(change.To)) return Quoted(change.To) + " is no longer there.";
      why = wants(!outlook.Stands(path), " is there again.");
      if (!why.empty()) return why;
      outlook.Set(path, outlook.At(change.To));
      outlook.Set(change.To, {});
      return "";
    case FileChange::Created:
      why = wants(outlook.Holds(path, change.NewSum), " has changed since, or has gone.");
      outlook.Set(path, {});
      return why;
    case FileChange::Deleted:
      why = wants(!outlook.Stands(path), " is there again.");
      break;
    case FileChange::Replaced:
      why = wants(outlook.Holds(path, change.NewSum), " has changed since, or has gone.");
      break;
  }
  if (why.empty())
    why = wants(!change.Stored.empty() && outlook.Holds(change.Stored, change.OldSum),
                " has no copy any more of what it was.");
  outlook.Set(path, change.OldSum);
  return why;
}

/** The same for doing it again. */
std::string CheckAgain(Outlook& outlook, const FileChange& change) {
  const std::string& path = change.Path;
  std::string why;
  switch (change.What) {
    case FileChange::Moved:
      if (!outlook.Stands(path)) return Quoted(path) + " is no longer there.";
      if (outlook.Stands(change.To)) return Quoted(change.To) + " is there again.";
      outlook.Set(change.To, outlook.At(path));
      outlook.Set(path, {});
      return "";
    case FileChange::Deleted:
      if (!outlook.Holds(path, change.OldSum))
        return Quoted(path) + " has changed since, or has gone.";
      outlook.Set(path, {});
      return "";
    case FileChange::Created:
      if (outlook.Stands(path)) return Quoted(path) + " is there again.";
      break;
    case FileChange::Replaced:
      if (!outlook.Holds(path, change.OldSum))
        return Quoted(path) + " has changed since, or has gone.";
      break;
  }
  if (change.StoredNew.empty() || !outlook.Holds(change.StoredNew, change.NewSum))
    return Quoted(path) + " has no copy any more of what it became.";
  outlook.Set(path, change.NewSum);
  return "";
}

/** Puts a file of the store to a path: over what the caller has looked at, else over nothing. */
void TakeFromStore(const Services& services, const std::string& stored, const std::string& path,
                   bool over) {
  if (!over && services.Files.FileExists(path)) throw FileExistsFault(path);
  services.Files.CopyFile(stored, path);
}

void DoBack(const Services& services, FileChange& change) {
  switch (change.What) {
    case FileChange::Moved:
      return services.Files.MoveFile(change.To, change.Path);
    case FileChange::Deleted:
      return TakeFromStore(services, change.Stored, change.Path, false);
    case FileChange::Created:
      if (change.StoredNew.empty()) change.StoredNew = KeepInStore(services, change.Path);
      return services.Files.DeleteFile(change.Path);
    case FileChange::Replaced:
      if (change.StoredNew.empty()) change.StoredNew = KeepInStore(services, change.Path);
      return TakeFromStore(services, change.Stored, change.Path, true);
  }
}

void DoAgain(const Services& services, FileChange& change) {
  switch (change.What) {
    case FileChange::Moved:
      return services.Files.MoveFile(change.Path, change.To);
    case FileChange::Deleted:
      return services.Files.DeleteFile(change.Path);
    case FileChange::Created:
      return TakeFromStore(services, change.StoredNew, change.Path, false);
    case FileChange::Replaced:
      return TakeFromStore(services, change.StoredNew, change.Path, true);
  }
}

/** The work in one direction, and what takes each part of it back. */
struct Way {
  std::string (*Check)(Outlook&, const FileChange&);
  void (*Act)(const Services&, FileChange&);
};

/** Works along `order`; what was done when one fails is done back. The one that failed may have
    been done too, all but the flush of its folder. */
std::string Run(const Services& services, const std::vector<FileChange*>& order, Way there,
                Way back) {
  std::string reason;
  const auto look = [&] {
    Outlook outlook(services);
    for (std::size_t i = 0; i < order.size() && reason.empty(); ++i)
      reason = there.Check(outlook, *order[i]);
  };
  Trap(look, [&](const Fault& caught) { reason = caught.Text; });
  if (!reason.empty()) return reason;
  std::size_t done = 0;
  const auto work = [&] {
    for (; done < order.size(); ++done) there.Act(services, *order[done]);
  };
  Trap(work, [&](const Fault& caught) {
    reason = caught.Text;
    ResumeNext([&] {
      Outlook now(services);
      if (back.Check(now, *order[done]).empty()) ++done;
    });
    while (done > 0) {
      --done;
      const auto restore = [&] { back.Act(services, *order[done]); };
      Trap(restore, [&](const Fault& second) { reason += ". " + second.Text; });
    }
  });
  return reason;
}

std::string FolderOf(const std::vector<FileChange*>& order) {
  return order.empty() ? "" : GetParentFolderName(order.front()->Path);
}

/** Each for itself. */
std::vector<std::string> Each(const Services& services, std::vector<FileChange>& changes, Way there,
                              Way back) {
  const KnownFolder known(services.Files, StoreFolder(services));
  std::vector<std::string> reasons;
  for (auto& change : changes)
    if (const std::string reason = Run(services, {&change}, there, back); !reason.empty())
      reasons.push_back(reason);
  return reasons;
}

}  // namespace

std::string UndoFiles(const Services& services, std::vector<FileChange>& changes) {
  std::vector<FileChange*> order;
  for (auto change = changes.rbegin(); change != changes.rend(); ++change)
    order.push_back(&*change);
  const KnownFolder known(services.Files, FolderOf(order));
  return Run(services, order, {CheckBack, DoBack}, {CheckAgain, DoAgain});
}

std::string RedoFiles(const Services& services, std::vector<FileChange>& changes) {
  std::vector<FileChange*> order;
  for (auto& change : changes) order.push_back(&change);
  const KnownFolder known(services.Files, FolderOf(order));
  return Run(services, order, {CheckAgain, DoAgain}, {CheckBack, DoBack});
}

std::vector<std::string> UndoEachFile(const Services& services, std::vector<FileChange>& changes) {
  return Each(services, changes, {CheckBack, DoBack}, {CheckAgain, DoAgain});
}

std::vector<std::string> RedoEachFile(const Services& services, std::vector<FileChange>& changes) {
  return Each(services, changes, {CheckAgain, DoAgain}, {CheckBack, DoBack});
}

std::vector<std::pair<std::string, std::string>> NetRenames(
    const std::vector<FileChange>& changes) {
  std::vector<std::pair<std::string, std::string>> moves;
  std::map<std::string, std::size_t> atNow;
  for (const auto& change : changes) {
    if (change.What != FileChange::Moved) continue;
    const auto known = atNow.find(change.Path);
    std::size_t move = moves.size();
    if (known != atNow.end()) {
      move = known->second;
      atNow.erase(known);
      moves[move].second = change.To;
    } else {
      moves.emplace_back(change.Path, change.To);
    }
    atNow[change.To] = move;
  }
  std::erase_if(moves, [](const auto& move) {
    return move.first == move.second ||
           GetParentFolderName(move.first) != GetParentFolderName(move.second);
  });
  return moves;
}

}  // namespace rws
