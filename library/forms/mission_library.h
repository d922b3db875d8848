#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QString>
#include <QTimer>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "library/index.h"
#include "library/mission_reader.h"

namespace rws {

/** What is known of the missions that a window works with. They are read in the background, and
    what was read comes into the index in slices that are too short to be felt. */
class MissionLibrary : public QObject {
  Q_OBJECT

 public:
  /** `names` is asked whenever an index begins. */
  MissionLibrary(const CodePage& page, std::function<IndexNames()> names, QObject* parent);
  ~MissionLibrary() override;

  /** From now on the missions of a folder, full paths as they are spelled on disk; those that are
      new or have changed are read. The list of another folder begins anew. `excluded` as in
      `ReadRequest`. */
  void Follow(const std::vector<std::string>& paths, const std::string& excluded = {});
  /** From now on all missions that are found in a folder, and in the folders below it. Begins
      anew. */
  void ReadFolder(const std::string& folder, bool tree, const std::string& excluded = {});
  /** Reads missions once more, and their briefings; of the paths only those that it has. */
  void ReadAgain(const std::vector<std::string>& paths);
  /** Reads no more. Of missions that are not read only the names are known. */
  void Stop();

  bool IsBusy() const { return busy_; }
  /** How many milliseconds it has been busy. */
  qint64 BusyFor() const { return busy_ ? sinceBusy_.elapsed() : 0; }
  ReadProgress Progress() const;
  /** "8,200 of 20,000 missions read". */
  QString ProgressText() const;
  /** Folders that could not be listed, with the reason. */
  const std::vector<std::string>& Troubles() const { return troubles_; }
  /** Missions of `ReadFolder` that were gone when they were to be read. */
  const std::vector<std::string>& Gone() const { return gone_; }

  const MissionIndex& Index() const { return *index_; }
  /** The row of a mission by its place among the paths that are followed; `npos` as long as it is
      not known. */
  std::size_t RowOf(std::size_t path) const;

 Q_SIGNALS:
  /** There is another index. */
  void Emptied();
  /** A mission has been read. */
  void MissionRead(std::size_t row);
  /** Rows have come, gone or been read; told a few times a second at most. */
  void RowsChanged();
  void ProgressChanged();

 private:
  void Begin();
  void Work();
  void Tick();
  /** True when all paths have been looked at. */
  bool LookAtPaths(const QElapsedTimer& slice);
  void LookAt(std::size_t path);
  void ReadLookedAt();
  void TakeRead(const QElapsedTimer& slice);
  void Put(const MissionFacts& facts);
  void End();
  MissionReader& Reader();

  CodePage page_;
  std::function<IndexNames()> names_;
  FileSystem files_;
  std::unique_ptr<MissionIndex> index_;
  std::vector<std::string> paths_, toRead_, troubles_, gone_;
  std::vector<std::size_t> rows_;  // by path
  std::string excluded_;
  std::size_t lookedAt_ = 0;
  bool busy_ = false, changed_ = false;
  QElapsedTimer sinceBusy_, sinceTold_;
  QTimer timer_{this};
  /** Last, so that its threads end first. Made when it is needed. */
  std::unique_ptr<MissionReader> reader_;
};

/** Words for the user: "37 of 500", with the digits in groups. */
QString CountText(std::size_t count, std::size_t of);

}  // namespace rws
