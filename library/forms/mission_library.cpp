#include "library/forms/mission_library.h"

#include <algorithm>
#include <thread>
#include <utility>

#include "platform/qt_text.h"
#include "services/numbers.h"
#include "services/paths.h"

namespace rws {

namespace {

constexpr int kTickMilliseconds = 10, kToldMilliseconds = 120;
constexpr qint64 kSliceNanoseconds = 4'000'000;
constexpr std::size_t kTakenAtOnce = 32;

bool IsOver(const QElapsedTimer& slice) { return slice.nsecsElapsed() > kSliceNanoseconds; }

std::string FolderOf(const std::vector<std::string>& paths) {
  return paths.empty() ? "" : GetParentFolderName(paths.front());
}

}  // namespace

QString CountText(std::size_t count, std::size_t of) {
  return QObject::tr("%1 of %2").arg(FromPath(GroupedNumber(count)), FromPath(GroupedNumber(of)));
}

MissionLibrary::MissionLibrary(const CodePage& page, std::function<IndexNames()> names,
                               QObject* parent)
    : QObject(parent), page_(page), names_(std::move(names)) {
  index_ = std::make_unique<MissionIndex>(IndexNames(), page_);
  timer_.setInterval(kTickMilliseconds);
  timer_.setObjectName(QStringLiteral("libraryTimer"));
  connect(&timer_, &QTimer::timeout, this, &MissionLibrary::Tick);
}

MissionLibrary::~MissionLibrary() = default;

MissionReader& MissionLibrary::Reader() {
  // The hooks of a file system are for the thread of its window; this one has none.
  if (!reader_) reader_ = std::make_unique<MissionReader>(files_, page_);
  return *reader_;
}

void MissionLibrary::Begin() {
  if (reader_) reader_->Stop();
  troubles_.clear();
  gone_.clear();
  rows_.clear();
  paths_.clear();
  index_ = std::make_unique<MissionIndex>(names_(), page_);
  Q_EMIT Emptied();
}

void MissionLibrary::Work() {
  if (!busy_) sinceBusy_.start();
  busy_ = true;
  if (!timer_.isActive()) timer_.start();
}

void MissionLibrary::Follow(const std::vector<std::string>& paths, const std::string& excluded) {
  if (FolderOf(paths) != FolderOf(paths_)) Begin();
  // What is not read yet is found anew.
  if (reader_) reader_->Stop();
  excluded_ = excluded;
  if (paths != paths_) {
    paths_ = paths;
    rows_.assign(paths_.size(), MissionIndex::npos);
    // A list that is filtered knows at once what it knew, and of new missions their names.
    if (index_->Missions() > 0)
      for (std::size_t i = 0; i < paths_.size(); ++i) rows_[i] = index_->AddUnread(paths_[i]);
    changed_ = true;
  }
  lookedAt_ = 0;
  toRead_.clear();
  if (!paths_.empty()) Work();
}

void MissionLibrary::ReadFolder(const std::string& folder, bool tree, const std::string& excluded) {
  Begin();
  ReadRequest request{{folder}};
  request.Tree = tree;
  request.Excluded = excluded;
  Reader().Add(std::move(request));
  Work();
}

void MissionLibrary::ReadAgain(const std::vector<std::string>& paths) {
  ReadRequest request;
  for (const auto& path : paths)
    if (index_->Find(path) != MissionIndex::npos) request.Files.push_back(path);
  if (request.Files.empty()) return;
  Reader().Add(std::move(request));
  Work();
}

void MissionLibrary::Stop() {
  if (reader_) reader_->Stop();
  lookedAt_ = paths_.size();
  toRead_.clear();
  End();
}

void MissionLibrary::End() {
  timer_.stop();
  busy_ = false;
  if (std::exchange(changed_, false)) Q_EMIT RowsChanged();
  Q_EMIT ProgressChanged();
}

ReadProgress MissionLibrary::Progress() const {
  return reader_ ? reader_->Progress() : ReadProgress();
}

QString MissionLibrary::ProgressText() const {
  const ReadProgress progress = Progress();
  return tr("%1 missions read").arg(CountText(progress.Read, progress.Found));
}

std::size_t MissionLibrary::RowOf(std::size_t path) const {
  return path < rows_.size() ? rows_[path] : MissionIndex::npos;
}

void MissionLibrary::Tick() {
  QElapsedTimer slice;
  slice.start();
  if (lookedAt_ < paths_.size()) {
    if (LookAtPaths(slice)) ReadLookedAt();
  } else {
    // Asked before what it has is taken: what comes between the two is taken next time.
    const bool idle = !reader_ || reader_->Progress().Idle;
    TakeRead(slice);
    if (idle && !IsOver(slice)) return End();
  }
  Q_EMIT ProgressChanged();
  if (!changed_ || (sinceTold_.isValid() && sinceTold_.elapsed() < kToldMilliseconds)) return;
  changed_ = false;
  sinceTold_.start();
  Q_EMIT RowsChanged();
}

bool MissionLibrary::LookAtPaths(const QElapsedTimer& slice) {
  while (lookedAt_ < paths_.size() && !IsOver(slice)) LookAt(lookedAt_++);
  return lookedAt_ == paths_.size();
}

void MissionLibrary::LookAt(std::size_t path) {
  std::size_t& row = rows_[path];
  if (row == MissionIndex::npos) {
    row = index_->AddUnread(paths_[path]);
    changed_ = true;
  }
  const IndexedMission& mission = (*index_)[row];
  bool isKnown = mission.IsRead;
  if (isKnown) {
    const FileStamp now = files_.Stamp(paths_[path]);
    isKnown = now.Exists && now.Size == mission.Size && now.Modified == mission.Changed;
  }
  if (!isKnown) toRead_.push_back(paths_[path]);
}

void MissionLibrary::ReadLookedAt() {
  ReadRequest request;
  // A folder as a whole is listed once and costs no look at each file.
  if (toRead_.size() == paths_.size())
    request = {{FolderOf(paths_)}, {}, false, excluded_};
  else
    request.Files = std::exchange(toRead_, {});
  toRead_.clear();
  if (!request.Files.empty() || !request.Folders.empty()) Reader().Add(std::move(request));
}

void MissionLibrary::TakeRead(const QElapsedTimer& slice) {
  if (!reader_) return;
  while (!IsOver(slice)) {
    const auto taken = reader_->Take(kTakenAtOnce);
    for (const auto& facts : taken) Put(facts);
    if (taken.empty()) break;
  }
  for (auto& trouble : reader_->TakeTroubles()) troubles_.push_back(std::move(trouble));
}

void MissionLibrary::Put(const MissionFacts& facts) {
  changed_ = true;
  const std::size_t row = index_->Put(facts);
  if (row != MissionIndex::npos) return MissionRead(row);
  std::string path = BuildPath(facts.Folder, facts.FileName);
  if (paths_.empty()) return gone_.push_back(std::move(path));
  // Gone from the disk, it is still listed; its row is nobody's from now on.
  const auto listed = std::find(paths_.begin(), paths_.end(), path);
  if (listed != paths_.end())
    rows_[static_cast<std::size_t>(listed - paths_.begin())] = index_->AddUnread(path);
}

}  // namespace rws
