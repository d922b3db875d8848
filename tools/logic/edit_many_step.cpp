#include "tools/logic/edit_many_step.h"

#include <unordered_set>
#include <utility>

#include "services/checksum.h"
#include "services/faults.h"
#include "session/file_store.h"
#include "session/journal.h"
#include "session/reading.h"
#include "session/recording.h"

namespace rws {

namespace {

/** Keeps what missions were before they are written, for the step. */
class Keeping {
 public:
  explicit Keeping(Session& session) : session_(session) {}

  void Keep(const std::string& path, const std::string& old) {
    const Services& services = session_.Services;
    kept_ = {FileChange::Replaced, services.Files.FollowLinks(path), "", "", "", Sha1(old), ""};
    kept_.Stored = KeepInStore(services, kept_.Path);
  }
  void Close(const std::string& text, bool isWritten) {
    if (isWritten) {
      kept_.NewSum = Sha1(text);
      session_.History.Journal.Changes.push_back(std::move(kept_));
    } else {
      ResumeNext([&] { session_.Services.Files.DeleteFile(kept_.Stored, IfReadOnly::AllTheSame); });
    }
  }

 private:
  Session& session_;
  FileChange kept_;
};

/** Those in memory show what stands in their files now, by whatever way these were reached. One
   that cannot be read is shown as before; an Update of it asks first. */
void RereadDone(Session& session, EditReport& report) {
  if (report.Done.empty()) return;
  const FileSystem& files = session.Services.Files;
  std::unordered_set<std::string> done;
  for (const auto& path : report.Done) done.insert(files.RealPath(path));
  const Document& doc = session.Doc;
  for (std::size_t i = 0; i < doc.MissionFiles.size() && i < doc.Missions.size(); ++i)
    if (doc.Missions[i].Loaded && done.contains(files.RealPath(doc.MissionFiles[i])) &&
        !Reread(session, i))
      report.Warnings.push_back(
          {doc.MissionFiles[i], "it cannot be read; it is shown as it was before"});
}

}  // namespace

EditContext EditContextOf(const Session& session) {
  EditContext context{session.Services, session.Tables, {}};
  context.Base.Maps = session.Doc.Maps;
  context.Base.GamePath = session.Doc.GamePath;
  context.Base.Untouched = session.Doc.Untouched;
  context.Base.UntouchedOf = session.Doc.UntouchedOf;
  return context;
}

EditHooks EditHooksOf(const Session& session, TellWork going) {
  EditHooks hooks;
  hooks.Going = std::move(going);
  std::unordered_set<std::string> unsaved;
  for (const auto& path : UnsavedMissions(session))
    unsaved.insert(session.Services.Files.RealPath(path));
  hooks.Refuses = [&session, unsaved = std::move(unsaved)](const std::string& path) {
    const bool isUnsaved =
        !unsaved.empty() && unsaved.contains(session.Services.Files.RealPath(path));
    return std::string(isUnsaved ? "it has unsaved edits" : "");
  };
  return hooks;
}

EditReport ApplyAsStep(Session& session, const EditContext& context, const EditPlan& plan,
                       TellWork going) {
  Record(session, nullptr);
  EditHooks hooks = EditHooksOf(session, std::move(going));
  Keeping keeping(session);
  hooks.Before = [&](const std::string& path, const std::string& old) { keeping.Keep(path, old); };
  hooks.After = [&](const std::string&, const std::string& text, bool isWritten) {
    keeping.Close(text, isWritten);
  };
  EditReport report;
  {
    const Journaling journaling(session);
    const PausedJournal paused(session);
    const KnownFolder known(session.Services.Files, StoreFolder(session.Services));
    const EditWriting writing{session.Services, session.Prefs.bBackup, "",
                              session.Prefs.BackupsKept};
    report = ApplyEdits(context, plan, writing, hooks);
  }
  const std::size_t count = report.Done.size();
  AddFileStep(session,
              count == 1 ? "Edit of 1 mission" : "Edit of " + std::to_string(count) + " missions",
              true);
  RereadDone(session, report);
  return report;
}

}  // namespace rws
