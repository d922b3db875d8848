#include "cli/edit.h"

#include <algorithm>
#include <iostream>
#include <optional>
#include <utility>

#include "catalogues/aircraft.h"
#include "catalogues/squadrons.h"
#include "cli/lists.h"
#include "library/edit_many.h"
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
      : services_(services), options_(options), edit_(edit) {}

  int Run() {
    auto order = ReadOrder(services_, edit_);
    if (!order || !FilesAreRight()) return kBadUsage;
    order_ = std::move(*order);
    named_.resize(order_.Sets.size() + order_.Removals.size());
    tables_ = TablesFor(services_, options_, edit_, order_);
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
  bool FilesAreRight();
  void Prepare(const std::string& path);
  void TakeNamed(const Job& job, const EditOutcome& outcome);
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
  EditOrder order_;
  std::vector<Job> jobs_;
  /** How many values or flights each entry of the order has named in all files. */
  std::vector<std::size_t> named_;
  bool failed_ = false;
};

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

void Editing::Prepare(const std::string& path) {
  Job job{path, services_.Files.ReadFile(path, LineArray::kLargest), {}, {}};
  const EditContext context{services_, tables_, BaseFor(services_, options_, path, edit_.Lines),
                            edit_.Force};
  EditedMission edited = EditRecords(context, order_, path, job.Old);
  const auto& faults = edited.Outcome.Faults;
  TakeNamed(job, edited.Outcome);
  if (faults.empty()) job.New = BuildEdited(context, edited);
  for (const auto& reason : faults) Fail(path, services_.Page.ToUtf8(reason));
  job.Doc = std::move(edited.Doc);
  jobs_.push_back(std::move(job));
}

/** A name must be there in every file, a pattern need not. */
void Editing::TakeNamed(const Job& job, const EditOutcome& outcome) {
  for (const auto& warning : outcome.Warnings)
    Complain(job.Path + ": " + services_.Page.ToUtf8(warning));
  for (std::size_t i = 0; i < outcome.Named.size(); ++i) {
    named_[i] += outcome.Named[i];
    if (outcome.Named[i] == 0 && !IsPattern(i))
      Fail(job.Path, EntryText(i) + ": names nothing in this mission");
  }
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
  for (const Job& job : jobs_)
    if (job.Changes()) Tried(job.Path, [&] { RequireReplaceable(writing, job.Path); });
  if (edit_.BackupFolder.empty() || failed_) return;
  Tried(edit_.BackupFolder, [&] { MakeBackupFolder(writing, edit_.BackupFolder); });
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

std::optional<EditOrder> ReadOrder(const Services& services, const EditOptions& edit) {
  EditOrder order;
  bool isRight = true;
  const auto bytes = [&](const std::string& text) {
    auto inPage = services.Page.FromUtf8(text);
    if (!inPage)
      throw ValueFault("code page " + std::to_string(services.Page.Number()) +
                       " lacks a letter of it");
    return *inPage;
  };
  const auto tried = [&](const std::string& text, const auto& read) {
    isRight &= Trap(read, [&](const Fault& caught) { Complain(text + ": " + caught.Text); });
  };
  for (const auto& text : edit.Sets)
    tried("--set " + text, [&] {
      order.Sets.push_back(ParseAssignment(bytes(text)));
      CheckText(order.Sets.back().Value);
    });
  for (const auto& text : edit.Removals)
    tried("--remove " + text, [&] {
      order.Removals.push_back({ParseFlight(bytes(text)), bytes(text)});
    });
  if (isRight && edit.Sets.empty() && edit.Removals.empty())
    tried("edit", [] { throw ValueFault("nothing is to be changed: give --set or --remove"); });
  if (!isRight) return {};
  return order;
}

Catalogues TablesFor(const Services& services, const CliOptions& options, const EditOptions& edit,
                     const EditOrder& order) {
  Catalogues tables;
  if (!NeedsTables(order)) return tables;
  Document doc;
  LoadAircraftArray(doc, tables, services);
  LoadRegiments(tables, services);
  ApplyNames(doc, tables, services, options, edit.Files[0]);
  return tables;
}

void MakeBackupFolder(const Services& services, const std::string& folder) {
  if (!services.Files.FolderExists(folder)) services.Files.CreateFolder(folder);
  if (!services.Files.CanWriteInto(folder))
    throw FileFault(fault::Permission, "write", folder, "the folder is read-only");
}

int Edit(const Services& services, const CliOptions& options, const EditOptions& edit) {
  return Editing(services, options, edit).Run();
}

}  // namespace rws
