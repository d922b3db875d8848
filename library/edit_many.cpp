#include "library/edit_many.h"

#include <algorithm>
#include <set>
#include <tuple>
#include <utility>

#include "library/columns.h"
#include "mission/backup_index.h"
#include "services/checksum.h"
#include "services/faults.h"
#include "services/paths.h"
#include "services/work.h"

namespace rws {

namespace {

bool Goes(const EditHooks& hooks, std::size_t done, std::size_t of, const std::string& path) {
  return !hooks.Going || hooks.Going({done, of, path, "Mission"});
}

std::string Joined(const std::vector<std::string>& texts) {
  std::string all;
  for (const auto& text : texts) all.append(all.empty() ? "" : "; ").append(text);
  return all;
}

/** Why an order that has no faults cannot be done to a mission all the same; "" if it can. */
std::string NamesNothing(const EditContext& context, const EditOrder& order,
                         const EditOutcome& outcome) {
  const std::size_t sets = order.Sets.size();
  for (std::size_t i = 0; context.MustName && i < outcome.Named.size(); ++i) {
    const bool isPattern =
        i < sets ? order.Sets[i].Path.IsPattern() : order.Removals[i - sets].Flights.IsPattern();
    if (outcome.Named[i] == 0 && !isPattern)
      return (i < sets ? order.Sets[i].Text : order.Removals[i - sets].Text) +
             ": names nothing in this mission";
  }
  return "";
}

void AddCounts(std::vector<std::size_t>& counts, const std::vector<std::size_t>& more) {
  counts.resize(std::max(counts.size(), more.size()));
  for (std::size_t i = 0; i < more.size(); ++i) counts[i] += more[i];
}

std::string ReadForEdit(const EditContext& context, const std::string& path,
                        const EditHooks& hooks) {
  if (hooks.Refuses)
    if (const std::string reason = hooks.Refuses(path); !reason.empty()) throw ValueFault(reason);
  return context.Services.Files.ReadFile(path, LineArray::kLargest);
}

/** The edited mission, whose outcome is right. Its new lines are empty where nothing changes. */
struct Made {
  EditedMission Mission;
  LineArray Lines;
};

Made MakeEdited(const EditContext& context, const EditOrder& order, const std::string& path,
                const std::string& old, EditedMission* faulty = nullptr) {
  Made made{EditRecords(context, order, path, old), {}};
  auto& faults = made.Mission.Outcome.Faults;
  if (faults.empty())
    if (const std::string why = NamesNothing(context, order, made.Mission.Outcome); !why.empty())
      faults.push_back(why);
  if (faults.empty() && made.Mission.IsEdited()) made.Lines = BuildEdited(context, made.Mission);
  if (faults.empty()) return made;
  const std::string reason = context.Services.Page.ToUtf8(Joined(faults));
  if (faulty) *faulty = std::move(made.Mission);
  throw ValueFault(reason);
}

class Planning {
 public:
  Planning(const EditContext& context, const EditOrder& order, const EditHooks& hooks)
      : context_(context), order_(order), hooks_(hooks) {}

  PlannedMission Plan(const std::string& path, std::vector<std::size_t>& named) const {
    PlannedMission planned;
    planned.Path = path;
    EditedMission faulty;
    const auto plan = [&] {
      const std::string old = ReadForEdit(context_, path, hooks_);
      planned.Sum = Sha1(old);
      const Made made = MakeEdited(context_, order_, path, old, &faulty);
      AddCounts(named, made.Mission.Outcome.Named);
      AddValues(planned, made.Mission);
      if (planned.Changes()) RequireReplaceable(context_.Services, path);
    };
    Trap(plan, [&](const Fault& caught) { planned.WhyNot = caught.Text; });
    for (const auto& refused : faulty.Outcome.Refused) AddRefused(planned, faulty.Before, refused);
    return planned;
  }

 private:
  static PlannedValue At(const ValuePlace& place) {
    const bool counts = place.Of != ValueOf::Mission && place.Of != ValueOf::Flight;
    PlannedValue value;
    value.Of = place.Of;
    value.Index = counts ? static_cast<std::uint32_t>(place.Index) : 0;
    value.Field = place.Field;
    value.Flight = place.FlightName;
    return value;
  }

  void AddRefused(PlannedMission& planned, const Mission& before,
                  const RefusedValue& refused) const {
    PlannedValue value = At(refused.Place);
    ResumeNext([&] { value.Old = ReadValue(before, refused.Place); });
    value.New = order_.Sets[refused.Place.Set].Value;
    value.WhyNot = context_.Services.Page.ToUtf8(refused.Reason);
    planned.Values.push_back(std::move(value));
  }

  /** A value that several entries name is told once, as the last of them leaves it. */
  void AddValues(PlannedMission& planned, const EditedMission& mission) const {
    const rws::Mission& edited = mission.Doc.Missions[0];
    std::set<std::tuple<ValueOf, std::size_t, std::size_t, std::string_view>> told;
    std::set<std::string_view> kept;
    for (const auto& flight : edited.Flights) kept.insert(flight.Name);
    for (const auto& flight : mission.Before.Flights) {
      if (kept.contains(flight.Name)) continue;
      PlannedValue removed;
      removed.Of = ValueOf::Flight;
      removed.Flight = flight.Name;
      planned.Values.push_back(std::move(removed));
    }
    // Where flights are removed the others have moved up, and values of theirs are found by name.
    const bool hasMoved = edited.Flights.size() != mission.Before.Flights.size();
    for (ValuePlace place : mission.Outcome.Places) {
      if (!told.emplace(place.Of, place.Flight, place.Index, place.Field).second) continue;
      PlannedValue value = At(place);
      value.Old = ReadValue(mission.Before, place);
      if (hasMoved && !place.FlightName.empty()) {
        if (!kept.contains(place.FlightName)) continue;
        const auto found =
            std::find_if(edited.Flights.begin(), edited.Flights.end(),
                         [&](const Flight& one) { return one.Name == value.Flight; });
        place.Flight = static_cast<std::size_t>(found - edited.Flights.begin());
      }
      value.New = ReadValue(edited, place);
      if (value.Old != value.New) planned.Values.push_back(std::move(value));
    }
    for (const auto& refused : mission.Left) AddRefused(planned, mission.Before, refused);
  }

  const EditContext& context_;
  const EditOrder& order_;
  const EditHooks& hooks_;
};

class Applying {
 public:
  Applying(const EditContext& context, const EditPlan& plan, const EditWriting& writing,
           const EditHooks& hooks)
      : context_(context), plan_(plan), writing_(writing), hooks_(hooks) {}

  EditReport Run() {
    std::vector<const PlannedMission*> wanted;
    for (const auto& mission : plan_.Missions) {
      if (!mission.WhyNot.empty()) report_.Left.push_back({mission.Path, mission.WhyNot});
      const bool isSeen = !mission.Sum.empty();
      if (mission.IsWanted && mission.WhyNot.empty() && (!isSeen || mission.Changes()))
        wanted.push_back(&mission);
    }
    bool goes = true;
    for (std::size_t i = 0; i < wanted.size(); ++i) {
      const std::string& path = wanted[i]->Path;
      goes = goes && report_.Stopped.empty() && Goes(hooks_, i, wanted.size(), path);
      if (goes)
        Apply(*wanted[i]);
      else
        report_.NotTried.push_back(path);
    }
    Goes(hooks_, wanted.size(), wanted.size(), "");
    return std::move(report_);
  }

 private:
  void Apply(const PlannedMission& planned) {
    const std::string& path = planned.Path;
    std::string old;
    Made made;
    const auto make = [&] {
      old = ReadForEdit(context_, path, hooks_);
      if (!planned.Sum.empty() && Sha1(old) != planned.Sum)
        throw ValueFault("it has changed since the preview");
      made = MakeEdited(context_, plan_.Order, path, old);
      AddCounts(report_.Named, made.Mission.Outcome.Named);
      if (!made.Lines.empty()) RequireReplaceable(writing_.Services, path);
    };
    const auto leave = [&](const Fault& caught) { report_.Left.push_back({path, caught.Text}); };
    if (!Trap(make, leave) || made.Lines.FileText() == old || made.Lines.empty()) return;
    if (hooks_.Before && !Trap([&] { hooks_.Before(path, old); }, leave)) return;
    const bool isWritten = Write(made, path, old);
    if (hooks_.After)
      Trap([&] { hooks_.After(path, made.Lines.FileText(), isWritten); },
           [&](const Fault& caught) {
             report_.Warnings.push_back({path, caught.Text});
           });
    if (!isWritten) return;
    report_.Done.push_back(path);
    for (const auto& warning : made.Mission.Outcome.Warnings)
      report_.Warnings.push_back({path, context_.Services.Page.ToUtf8(warning)});
    if (writing_.Backup && writing_.BackupFolder.empty())
      LimitBackups(writing_.Services, path, writing_.BackupsKept);
  }

  /** True if the new text stands in the file. A failure behind that ends the run, as does an old
      text that could not be put back. */
  bool Write(const Made& made, const std::string& path, const std::string& old) {
    const Services& services = writing_.Services;
    const WriteRules rules{writing_.Backup, writing_.BackupFolder, old};
    std::string reason;
    bool isWritten = false;
    const auto write = [&] {
      isWritten =
          WriteMissionFile(services, made.Mission.Doc.Missions[0], made.Lines, rules, &reason);
    };
    Trap(write, [&](const Fault& caught) {
      if (reason.empty()) reason = caught.Text;
      report_.Stopped = path + ": " + reason;
      ResumeNext([&] { isWritten = services.Files.ReadFile(path) == made.Lines.FileText(); });
    });
    if (!isWritten) report_.Left.push_back({path, reason});
    return isWritten;
  }

  const EditContext& context_;
  const EditPlan& plan_;
  const EditWriting& writing_;
  const EditHooks& hooks_;
  EditReport report_;
};

}  // namespace

bool PlannedMission::Changes() const {
  return WhyNot.empty() && std::any_of(Values.begin(), Values.end(), [](const PlannedValue& value) {
           return value.WhyNot.empty();
         });
}

EditPlan PlanEdits(const EditContext& context, EditOrder order,
                   const std::vector<std::string>& paths, const EditHooks& hooks) {
  EditPlan plan;
  plan.Order = std::move(order);
  plan.Named.resize(plan.Order.Sets.size() + plan.Order.Removals.size());
  const Planning planning(context, plan.Order, hooks);
  for (std::size_t i = 0; i < paths.size() && !plan.IsCancelled; ++i) {
    plan.IsCancelled = !Goes(hooks, i, paths.size(), paths[i]);
    if (!plan.IsCancelled) plan.Missions.push_back(planning.Plan(paths[i], plan.Named));
  }
  Goes(hooks, paths.size(), paths.size(), "");
  return plan;
}

EditPlan UnseenPlan(EditOrder order, const std::vector<std::string>& paths) {
  EditPlan plan;
  plan.Order = std::move(order);
  for (const auto& path : paths) plan.Missions.emplace_back().Path = path;
  return plan;
}

EditReport ApplyEdits(const EditContext& context, const EditPlan& plan, const EditWriting& writing,
                      const EditHooks& hooks) {
  return Applying(context, plan, writing, hooks).Run();
}

void RequireReplaceable(const Services& services, const std::string& path) {
  const FileSystem& files = services.Files;
  files.RequireWritable(path);
  const std::string file = files.GetAbsolutePathName(files.FollowLinks(path));
  if (!files.CanWriteInto(GetParentFolderName(file)))
    throw FileFault(fault::Permission, "write", path, "its folder is read-only");
}

std::string EndText(const EditReport& report) {
  std::string text = WorkEndText(report.Done.size(), report.Left.size());
  const std::size_t left = report.NotTried.size();
  if (left > 0) text += ", " + std::to_string(left) + " not tried";
  return text;
}

std::string ReportText(const CodePage& page, const EditReport& report) {
  std::string text = EndText(report) + "\n";
  const auto add = [&](const std::string& path, const std::string& reason) {
    text += PathText(page, path) + ": " + reason + "\n";
  };
  if (!report.Stopped.empty()) text += "Stopped: " + report.Stopped + "\n";
  for (const auto& [path, reason] : report.Left) add(path, reason);
  for (const auto& [path, reason] : report.Warnings) add(path, reason);
  for (const auto& path : report.NotTried) add(path, "not tried");
  return text;
}

}  // namespace rws
