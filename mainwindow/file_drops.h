#pragma once

#include <QDropEvent>
#include <QObject>
#include <QWidget>
#include <string>

#include "services/file_system.h"

namespace rws {

/** Lets a folder, a mission or a briefing be dropped anywhere on a window, also on its text boxes,
    to which text can still be dragged. Of several the first that fits counts; anything else is
    refused while it is dragged. */
class FileDrops : public QObject {
  Q_OBJECT

 public:
  /** To be made when the window has all its controls. */
  FileDrops(QWidget& window, const FileSystem& files);

 Q_SIGNALS:
  void Dropped(const std::string& path);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Take(QDropEvent& event);
  std::string FirstFitting(const QMimeData& data) const;

  QWidget& window_;
  const FileSystem& files_;
};

}  // namespace rws
