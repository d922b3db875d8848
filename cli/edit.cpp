#include "cli/edit.h"

#include <algorithm>
#include <iostream>
#include <optional>
#include <utility>

#include "catalogues/aircraft.h"
#include "catalogues/squadrons.h"
#include "mission/kept_text.h"
#include "mission/mission_file.h"
#include "mission/unified_diff.h"
#include "services/faults.h"
#include "services/paths.h"
#include "values/mission_edit.h"

namespace rws {

namespace {

/** One file on its way. */
struct Job {
  std::string Path;
  std::string Old;
  Document Doc;
  LineArray New;

  bool Changes() const { return New.FileText() != Old; }
};

class Editing {
 public:
  Editing(const Services& services, const CliOptions& options, const EditOptions& edit)
      : services_(services),
        options_(options),
        edit_(edit),
        rules_{tables_, services, edit.Force} {}

  int Run() {
    if (!TakeOrder() || !FilesAreRight()) return kBadUsage;
    LoadTables();
    for (const auto& path : edit_.Files) Tried(path, [&] { Prepare(path); });
    TellWhatNamesNothing();
    if (failed_) return kFailed;
    if (edit_.DryRun) return Show();
    if (!edit_.Output.empty()) return WriteOutput();
    return WriteAll();
  }

 private:
  template <class Body>
  bool Tried(const std::string& path, const Body& body) {
    return Trap(body, [&](const Fault& caught) { Fail(path, caught.Text); });
  }
  void Fail(const std::string& path, const std::string& reason) {
    failed_ = true;
    Complain(path + ": " + reason);
  }

  /** An argument in the page of the missions. */
  std::string Bytes(const std::string& text) const {
    auto bytes = services_.Page.FromUtf8(text);
    if (!bytes)
      throw ValueFault("code page " + std::to_string(services_.Page.Number()) +
                       " lacks a letter of it");
    return *bytes;
  }
  /** An entry of the order: the sets come first, then the removals. */
  const std::string& EntryText(std::size_t entry) const {
    const std::size_t sets = edit_.Sets.size();
    return entry < sets ? edit_.Sets[entry] : edit_.Removals[entry - sets];
  }
  bool IsPattern(std::size_t entry) const {
    const std::size_t sets = order_.Sets.size();
    return entry < sets ? order_.Sets[entry].Path.IsPattern()
                        : order_.Removals[entry - sets].Flights.IsPattern();
  }
  bool TakeOrder();
  bool FilesAreRight();
  void LoadTables();
  void Prepare(const std::string& path);
  void Change(Job& job);
  void Prove(Job& job, const Mission& edited, const std::vector<ValuePlace>& places);
  void TellWhatNamesNothing();
  int Show();
  int WriteOutput();
  int WriteAll();
  void RequireWritable(const Services& writing);
  void Write(const Services& writing, const Job& job);

  const Services& services_;
  const CliOptions& options_;
  const EditOptions& edit_;
  Catalogues tables_;
  EditRules rules_;
  EditOrder order_;
  std::vector<Job> jobs_;
  /** How many values or flights each entry of the order has named in all files. */
  std::vector<std::size_t> named_;
  bool failed_ = false;
};

bool Editing::TakeOrder() {
  for (const auto& text : edit_.Sets)
    Tried("--set " + text, [&] {
      order_.Sets.push_back(ParseAssignment(Bytes(text)));
      order_.Sets.back().Text = text;
      CheckText(order_.Sets.back().Value);
    });
  for (const auto& text : edit_.Removals)
    Tried("--remove " + text, [&] { order_.Removals.push_back({ParseFlight(Bytes(text)), text}); });
  named_.resize(order_.Sets.size() + order_.Removals.size());
  if (named_.empty() && !failed_) Fail("edit", "nothing is to be changed: give --set or --remove");
  return !failed_;
}

bool Editing::FilesAreRight() {
  const FileSystem& files = services_.Files;
  if (!edit_.Output.empty() && edit_.Files.size() > 1)
    Fail(edit_.Output, "--output takes one file");
  std::vector<std::pair<FileStamp, std::string>> seen;
  for (const auto& path : edit_.Files) {
    if (!edit_.Output.empty() && files.IsSameFile(path, edit_.Output))
      Fail(path, "the output would replace the mission itself");
    const FileStamp stamp = files.Stamp(path);
    for (const auto& [other, name] : seen)
      if (stamp.Exists && stamp == other && files.IsSameFile(path, name))
        Fail(path, "the file is named twice");
    seen.emplace_back(stamp, path);
  }
  return !failed_;
}

/** They take most of the time of a run. */
void Editing::LoadTables() {
  constexpr std::string_view kFields[] = {"Class", "Weapons", "OnlyAI", "Player", "NoseArt"};
  const auto needs = [&](const FlightChoice& choice) { return choice.By == FlightChoice::Army; };
  bool isNeeded = false;
  for (const auto& set : order_.Sets)
    isNeeded =
        isNeeded || needs(set.Path.Flights) ||
        std::find(std::begin(kFields), std::end(kFields), set.Path.Field) != std::end(kFields);
  for (const auto& removal : order_.Removals) isNeeded = isNeeded || needs(removal.Flights);
  if (!isNeeded) return;
  Document doc;
  LoadAircraftArray(doc, tables_, services_);
  LoadRegiments(tables_, services_);
}

void Editing::Prepare(const std::string& path) {
  Job job{path, services_.Files.ReadFile(path, LineArray::kLargest), {}, {}};
  job.Doc = ReadMission(services_, options_, path, job.Old, edit_.Lines);
  const Mission& mission = job.Doc.Missions[0];
  if (!mission.Loaded) throw ValueFault("the mission cannot be read");
  const KeptText text(mission.Lines);
  if (!text.Find("MAIN") && !text.Find("Wing"))
    throw ValueFault("this is no mission: it has neither [MAIN] nor [Wing]");
  Change(job);
  jobs_.push_back(std::move(job));
}

/** A name must be there in every file, a pattern need not. */
void Editing::Change(Job& job) {
  Mission& mission = job.Doc.Missions[0];
  const EditOutcome outcome = EditMission(mission, order_, rules_);
  for (const auto& warning : outcome.Warnings) Complain(job.Path + ": " + warning);
  for (const auto& reason : outcome.Faults) Fail(job.Path, services_.Page.ToUtf8(reason));
  for (std::size_t i = 0; i < outcome.Named.size(); ++i) {
    named_[i] += outcome.Named[i];
    if (outcome.Named[i] == 0 && !IsPattern(i))
      Fail(job.Path, EntryText(i) + ": names nothing in this mission");
  }
  if (!outcome.Faults.empty()) return;
  const Mission edited = mission;
  job.New = BuildMission(job.Doc, services_);
  Prove(job, edited, outcome.Places);
}

/** What will be read from the new file must be what was asked for. */
void Editing::Prove(Job& job, const Mission& edited, const std::vector<ValuePlace>& places) {
  const Document read = ReadMission(services_, options_, job.Path, job.New.FileText(), edit_.Lines);
  for (const auto& text : LostValues(edited, read.Missions[0], places))
    Fail(job.Path, text + ": the value would be lost" +
                       (edit_.Lines == ReadAs::Anew ? " when all lines are written anew" : ""));
  if (read.Missions[0].Flights.size() != edited.Flights.size())
    Fail(job.Path, "flights would be lost");
}

void Editing::TellWhatNamesNothing() {
  if (failed_) return;
  for (std::size_t i = 0; i < named_.size(); ++i)
    if (named_[i] == 0) Fail(EntryText(i), "names nothing in any mission");
}

int Editing::Show() {
  for (const Job& job : jobs_)
    std::cout << UnifiedDiff(job.Path, edit_.Output.empty() ? job.Path : edit_.Output, job.Old,
                             job.New.FileText());
  return std::cout.flush() ? kDone : kFailed;
}

int Editing::WriteOutput() {
  const auto write = [&] {
    const FileSystem& files = services_.Files;
    const std::string folder = GetParentFolderName(files.GetAbsolutePathName(edit_.Output));
    if (!files.FolderExists(folder)) throw PathNotFoundFault(folder);
    files.ReplaceFile(edit_.Output, jobs_[0].New.FileText());
  };
  return Tried(edit_.Output, write) ? kDone : kFailed;
}

/** Before the first file is touched. */
void Editing::RequireWritable(const Services& writing) {
  const FileSystem& files = writing.Files;
  for (const Job& job : jobs_) {
    if (!job.Changes()) continue;
    Tried(job.Path, [&] {
      files.RequireWritable(job.Path);
      const std::string file = files.GetAbsolutePathName(files.FollowLinks(job.Path));
      if (!files.CanWriteInto(GetParentFolderName(file)))
        throw FileFault(fault::Permission, "write", job.Path, "its folder is read-only");
    });
  }
  if (edit_.BackupFolder.empty() || failed_) return;
  Tried(edit_.BackupFolder, [&] {
    if (!files.FolderExists(edit_.BackupFolder)) files.CreateFolder(edit_.BackupFolder);
    if (!files.CanWriteInto(edit_.BackupFolder))
      throw FileFault(fault::Permission, "write", edit_.BackupFolder, "the folder is read-only");
  });
}

int Editing::WriteAll() {
  std::optional<Services> writing;
  Tried("edit", [&] {
    writing = WritingServices(services_);
    RequireWritable(*writing);
  });
  if (failed_) return kFailed;
  std::size_t written = 0, left = 0;
  for (const Job& job : jobs_) {
    if (!job.Changes()) continue;
    if (failed_)
      ++left;
    else if (Tried(job.Path, [&] { Write(*writing, job); }))
      ++written;
  }
  if (!failed_) return kDone;
  if (written + left > 0)
    Complain("of the other missions " + std::to_string(written) + " were written before, and " +
             std::to_string(left) + " were not tried");
  return kFailed;
}

void Editing::Write(const Services& writing, const Job& job) {
  std::string reason;
  const WriteRules rules{!edit_.NoBackup, edit_.BackupFolder, job.Old};
  if (!WriteMissionFile(writing, job.Doc.Missions[0], job.New, rules, &reason))
    throw Fault(fault::FileIo, reason);
}

}  // namespace

int Edit(const Services& services, const CliOptions& options, const EditOptions& edit) {
  return Editing(services, options, edit).Run();
}

}  // namespace rws
