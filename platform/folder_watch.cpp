#include "platform/folder_watch.h"

#include <QFileInfo>

namespace rws {

namespace {

/** Others write in several steps; one look at the end does. */
constexpr int kSettleMilliseconds = 300, kPollMilliseconds = 4000;

}  // namespace

FolderWatch::FolderWatch(QObject* parent) : QObject(parent) {
  settle_.setSingleShot(true);
  settle_.setInterval(kSettleMilliseconds);
  poll_.setInterval(kPollMilliseconds);
  connect(&watcher_, &QFileSystemWatcher::directoryChanged, &settle_, qOverload<>(&QTimer::start));
  connect(&watcher_, &QFileSystemWatcher::fileChanged, &settle_, qOverload<>(&QTimer::start));
  connect(&poll_, &QTimer::timeout, this, &FolderWatch::Poll);
  connect(&settle_, &QTimer::timeout, this, [this] {
    seen_ = State();
    // A file that was replaced is another one to the watcher.
    if (!file_.isEmpty() && !watcher_.files().contains(file_) && QFileInfo::exists(file_))
      watcher_.addPath(file_);
    Q_EMIT Changed();
  });
  poll_.start();
}

void FolderWatch::Watch(const QString& folder, const QString& file) {
  if (folder != folder_) {
    if (!folder_.isEmpty()) watcher_.removePath(folder_);
    if (!folder.isEmpty()) watcher_.addPath(folder);
    folder_ = folder;
  }
  if (file != file_ || (!file.isEmpty() && !watcher_.files().contains(file))) {
    if (!watcher_.files().isEmpty()) watcher_.removePaths(watcher_.files());
    if (!file.isEmpty() && QFileInfo::exists(file)) watcher_.addPath(file);
    file_ = file;
  }
  seen_ = State();
}

void FolderWatch::LookAgain() { settle_.start(); }

void FolderWatch::Poll() {
  // A long start comes by here before any folder is watched.
  if (settle_.isActive() || folder_.isEmpty()) return;
  const QString now = State();
  if (now == seen_) return;
  seen_ = now;
  settle_.start();
}

QString FolderWatch::State() const {
  const auto stateOf = [](const QString& path) {
    const QFileInfo info(path);
    return QStringLiteral("%1 %2").arg(info.size()).arg(info.lastModified().toMSecsSinceEpoch());
  };
  return stateOf(folder_) + u' ' + stateOf(file_);
}

}  // namespace rws
