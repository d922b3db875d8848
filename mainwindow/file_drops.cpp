#include "mainwindow/file_drops.h"

#include <QApplication>
#include <QDir>
#include <QMimeData>
#include <QUrl>
#include <algorithm>

#include "platform/qt_text.h"
#include "services/text.h"

namespace rws {

namespace {

bool IsOfDrag(const QEvent& event) {
  return event.type() == QEvent::DragEnter || event.type() == QEvent::DragMove ||
         event.type() == QEvent::Drop;
}

/** Never a move, after which the other program would delete the file. */
Qt::DropAction HarmlessAction(Qt::DropActions offered) {
  for (const auto action : {Qt::CopyAction, Qt::LinkAction})
    if (offered.testFlag(action)) return action;
  return Qt::IgnoreAction;
}

}  // namespace

FileDrops::FileDrops(QWidget& window, const FileSystem& files)
    : QObject(&window), window_(window), files_(files) {
  window.setAcceptDrops(true);
  window.installEventFilter(this);
  for (auto* control : window.findChildren<QWidget*>())
    if (control->acceptDrops()) control->installEventFilter(this);
}

bool FileDrops::eventFilter(QObject* watched, QEvent* event) {
  if (!IsOfDrag(*event)) return QObject::eventFilter(watched, event);
  auto& drop = static_cast<QDropEvent&>(*event);
  if (watched == &window_) {
    Take(drop);
    return true;
  }
  if (!drop.mimeData()->hasUrls()) return false;
  // Goes on to the window.
  drop.ignore();
  return true;
}

void FileDrops::Take(QDropEvent& event) {
  event.ignore();
  const auto action = HarmlessAction(event.possibleActions());
  if (action == Qt::IgnoreAction || QApplication::activeModalWidget()) return;
  const std::string path = FirstFitting(*event.mimeData());
  if (path.empty()) return;
  event.setDropAction(action);
  event.accept();
  if (event.type() == QEvent::Drop) Q_EMIT Dropped(path);
}

std::string FileDrops::FirstFitting(const QMimeData& data) const {
  // Each costs a look at the disk, at every move of the mouse.
  constexpr qsizetype kMost = 20;
  const auto urls = data.urls();
  for (const QUrl& url : urls.first(std::min(kMost, urls.size()))) {
    if (!url.isLocalFile()) continue;
    const std::string path = ToPath(QDir::toNativeSeparators(url.toLocalFile())),
                      folded = FoldName(path);
    const bool fits = folded.ends_with(".mis") || folded.ends_with(".properties");
    if (fits ? files_.FileExists(path) : files_.FolderExists(path)) return path;
  }
  return "";
}

}  // namespace rws
