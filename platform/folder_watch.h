#pragma once

#include <QDateTime>
#include <QFileSystemWatcher>
#include <QTimer>

namespace rws {

/** Tells that a folder or a file in it may have changed: by the system's own notice, and by a look
    every few seconds for drives that give none. Many changes in a row are told once. */
class FolderWatch : public QObject {
  Q_OBJECT

 public:
  explicit FolderWatch(QObject* parent);

  /** From now on these, and no others; "" for none. */
  void Watch(const QString& folder, const QString& file);
  /** Tells a change again in a moment. */
  void LookAgain();

 Q_SIGNALS:
  void Changed();

 private:
  void Poll();
  /** Both as they are now, in a text. */
  QString State() const;

  QFileSystemWatcher watcher_;
  QTimer settle_{this}, poll_{this};
  QString folder_, file_, seen_;
};

}  // namespace rws
