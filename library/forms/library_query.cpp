#include "library/forms/library_query.h"

#include <algorithm>
#include <utility>

#include "services/paths.h"

namespace rws {

namespace {

/** While the user goes on typing a text is not looked for yet. */
constexpr int kPauseMilliseconds = 250, kTickMilliseconds = 10, kToldMilliseconds = 120;
constexpr qint64 kSliceNanoseconds = 3'000'000;
constexpr std::size_t kTakenAtOnce = 32, kAskedAtOnce = 4000;

bool AsksFor(const Query& query, QueryKey key) {
  return std::any_of(query.Terms.begin(), query.Terms.end(),
                     [key](const QueryTerm& term) { return term.Key == key; });
}

}  // namespace

LibraryQuery::LibraryQuery(MissionLibrary& library, QObject* parent)
    : QObject(parent), library_(library) {
  pause_.setObjectName(QStringLiteral("textPause"));
  pause_.setSingleShot(true);
  pause_.setInterval(kPauseMilliseconds);
  timer_.setObjectName(QStringLiteral("textTimer"));
  timer_.setInterval(kTickMilliseconds);
  connect(&pause_, &QTimer::timeout, this, [this] { timer_.start(); });
  connect(&timer_, &QTimer::timeout, this, &LibraryQuery::Tick);
  connect(&library_, &MissionLibrary::Emptied, this, &LibraryQuery::Make);
  connect(&library_, &MissionLibrary::MissionRead, this, &LibraryQuery::Forget);
}

LibraryQuery::~LibraryQuery() = default;

void LibraryQuery::SetLine(const std::string& line) {
  if (line == line_) return;
  line_ = line;
  Make();
  Q_EMIT Changed();
}

void LibraryQuery::Make() {
  query_ = ParseQuery(line_);
  filter_.reset();
  asked_.clear();
  next_ = 0;
  timer_.stop();
  pause_.stop();
  if (reader_) reader_->Stop();
  if (!query_.Fault && !query_.Terms.empty()) {
    filter_ = std::make_unique<Filter>(query_, library_.Index());
    filter_->Unsaved = unsaved_;
    if (!filter_->Texts().empty()) pause_.start();
  }
  Q_EMIT LookingChanged();
}

void LibraryQuery::SetUnsaved(std::unordered_set<std::size_t> rows) {
  if (rows == unsaved_) return;
  unsaved_ = std::move(rows);
  if (!filter_) return;
  filter_->Unsaved = unsaved_;
  if (AsksFor(query_, QueryKey::Is)) Q_EMIT Changed();
}

/** What was found in its file may no longer stand there. */
void LibraryQuery::Forget(std::size_t row) {
  if (!filter_ || filter_->Texts().empty()) return;
  if (row < asked_.size()) asked_[row] = false;
  next_ = std::min(next_, row);
  if (!pause_.isActive() && !timer_.isActive()) timer_.start();
}

bool LibraryQuery::IsLooking() const { return pause_.isActive() || timer_.isActive(); }

QString LibraryQuery::LookingText() const {
  if (!IsLooking()) return {};
  const ReadProgress progress = reader_ ? reader_->Progress() : ReadProgress();
  if (progress.Found == 0) return tr("Looking for the text...");
  return tr("Looking for the text: %1 missions").arg(CountText(progress.Read, progress.Found));
}

void LibraryQuery::Tick() {
  AskForTexts();
  const bool idle = !reader_ || reader_->Progress().Idle;
  const bool isDone = TakeTexts() && idle && next_ >= library_.Index().size();
  if (isDone) timer_.stop();
  if (changed_ && (isDone || !sinceTold_.isValid() || sinceTold_.elapsed() >= kToldMilliseconds)) {
    changed_ = false;
    sinceTold_.start();
    Q_EMIT Changed();
  }
  Q_EMIT LookingChanged();
}

/** Of those that are read, so that what else is known of them leaves out as many as it can. */
void LibraryQuery::AskForTexts() {
  const MissionIndex& index = library_.Index();
  ReadRequest request;
  QElapsedTimer slice;
  slice.start();
  asked_.resize(index.size());
  for (; next_ < index.size() && request.Files.size() < kAskedAtOnce; ++next_) {
    if (slice.nsecsElapsed() > kSliceNanoseconds) break;
    if (asked_[next_] || index[next_].IsGone || !index[next_].IsRead) continue;
    if (!filter_->KnowsTexts(next_) && !filter_->MayMatch(next_)) continue;
    asked_[next_] = true;
    request.Files.push_back(index.Path(next_));
  }
  if (request.Files.empty()) return;
  request.Texts = filter_->Texts();
  if (!reader_) reader_ = std::make_unique<MissionReader>(FileSystem(), index.Page());
  reader_->Add(std::move(request));
}

/** True when there is no more to take now. */
bool LibraryQuery::TakeTexts() {
  if (!reader_) return true;
  QElapsedTimer slice;
  slice.start();
  while (slice.nsecsElapsed() < kSliceNanoseconds) {
    const auto taken = reader_->Take(kTakenAtOnce);
    if (taken.empty()) return true;
    for (const auto& facts : taken) {
      const auto row = library_.Index().Find(BuildPath(facts.Folder, facts.FileName));
      if (row == MissionIndex::npos) continue;
      filter_->SetTexts(row, facts.TextsFound);
      changed_ = true;
    }
  }
  return false;
}

}  // namespace rws
