#pragma once

#include <QObject>
#include <QTimer>
#include <memory>
#include <optional>
#include <unordered_set>
#include <vector>

#include "library/filter.h"
#include "library/forms/mission_library.h"

namespace rws {

/** The missions of a library for which the line that the user types holds. Texts are looked for in
    the files, in the background; what is found comes bit by bit. */
class LibraryQuery : public QObject {
  Q_OBJECT

 public:
  LibraryQuery(MissionLibrary& library, QObject* parent);
  ~LibraryQuery() override;

  /** UTF-8. */
  void SetLine(const std::string& line);
  const std::string& Line() const { return line_; }
  /** Why the line cannot be understood; nothing is left out then. */
  const std::optional<QueryFault>& Fault() const { return query_.Fault; }
  /** False for a line that leaves nothing out. */
  bool IsActive() const { return filter_ != nullptr; }
  bool Matches(std::size_t row) { return !filter_ || filter_->Matches(row); }

  /** Rows with unsaved edits, for `is:unsaved`. */
  void SetUnsaved(std::unordered_set<std::size_t> rows);

  /** Files are being looked through for a text. */
  bool IsLooking() const;
  /** How far that is, in words. */
  QString LookingText() const;

 Q_SIGNALS:
  /** What matches has changed, but for what the library itself tells. */
  void Changed();
  void LookingChanged();

 private:
  void Make();
  void Forget(std::size_t row);
  void Tick();
  void AskForTexts();
  bool TakeTexts();

  MissionLibrary& library_;
  std::string line_;
  Query query_;
  std::unique_ptr<Filter> filter_;
  std::unordered_set<std::size_t> unsaved_;
  /** Rows whose file is being looked through or was, and how far all have been gone through. */
  std::vector<bool> asked_;
  std::size_t next_ = 0;
  bool changed_ = false;
  QElapsedTimer sinceTold_;
  QTimer pause_{this}, timer_{this};
  std::unique_ptr<MissionReader> reader_;  // last
};

}  // namespace rws
