#pragma once

#include <QElapsedTimer>
#include <QObject>

namespace rws {

/** Lets the window repaint while a scan runs on its thread. Commands are refused meanwhile: keys
   and clicks are dropped, and a close is remembered and carried out when the scan has ended. */
class EventPump : public QObject {
  Q_OBJECT

 public:
  EventPump();
  ~EventPump() override;

  /** Runs waiting events, at most once in 10 milliseconds. */
  void Pump();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QElapsedTimer sincePump_;
  bool pumping_ = false;
};

}  // namespace rws
