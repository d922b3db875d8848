#pragma once

#include <QPointer>
#include <QScrollArea>
#include <map>
#include <string>

#include "controls/message_bar.h"
#include "services/services.h"

namespace rws {

/** The messages above the mission list, one below the other, each under an id of its own; the
    oldest one first. Takes no room without a message, and room for a few however many there are:
    then it scrolls. */
class MessageBars : public QScrollArea {
  Q_OBJECT

 public:
  MessageBars(const Services& services, QWidget* parent);

  /** Shows a message, or in its place another one under the same id. */
  void Show(const std::string& id, BarContent content);
  /** Takes a message away; without it nothing happens, and its `OnClose` is not called. */
  void Hide(const std::string& id);
  /** What is on show, from top to bottom. */
  QStringList Texts() const;
  /** The bar of an id; null without one. */
  MessageBar* Bar(const std::string& id) const;
  /** The control that comes behind the bars in the tab order. It gets the focus when the control is
      gone that had it before a bar. */
  void SetNext(QWidget* control) { next_ = control; }

  bool hasHeightForWidth() const override { return true; }
  int heightForWidth(int width) const override;
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 Q_SIGNALS:
  /** The first message has come, or the last one gone. */
  void Filled(bool filled);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  struct Entry {
    MessageBar* Bar;
    BarContent Content;
  };
  void Add(const std::string& id);
  void SetTabOrder();
  void ShowFilled();
  void Refit();
  int WholeHeight(int width) const;
  int MostHeight() const;
  void RememberFocus(QWidget* before, QWidget* now);
  void GiveFocusBack();
  void Press(const std::string& id, std::size_t button);
  void CloseByUser(const std::string& id);

  const Services& services_;
  QWidget* stack_;
  std::map<std::string, Entry> entries_;
  /** Had the focus before it went to a bar. */
  QPointer<QWidget> before_;
  QPointer<QWidget> next_;
};

}  // namespace rws
