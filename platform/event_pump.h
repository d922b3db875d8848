#pragma once

#include <QElapsedTimer>
#include <QObject>

namespace rws {

/** Lets the window repaint while a scan runs on its thread. Commands are refused meanwhile: keys
   and clicks are dropped, but for those on a progress dialog, and a close is remembered and carried
    out when the scan has ended. */
class EventPump : public QObject {
  Q_OBJECT

 public:
  /** Events run at most once in `interval` milliseconds. */
  explicit EventPump(qint64 interval = 100);

  void Pump();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  qint64 interval_;
  QElapsedTimer sincePump_;
  bool pumping_ = false;
};

}  // namespace rws
