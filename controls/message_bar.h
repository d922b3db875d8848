#pragma once

#include <QBoxLayout>
#include <QCheckBox>
#include <QFrame>
#include <QPushButton>
#include <QToolButton>
#include <functional>
#include <vector>

#include "controls/wrapped_label.h"

namespace rws {

enum class BarKind { Info, Warning };

/** A button of a message bar; its action decides what becomes of the bar. */
struct BarButton {
  QString Caption;
  std::function<void()> Action;
};

/** What a message bar says and offers: at most four buttons. */
struct BarContent {
  BarKind Kind = BarKind::Info;
  QString Text;
  std::vector<BarButton> Buttons;
  /** The user closed the bar; it is gone already. */
  std::function<void()> OnClose;
  /** Caption of a box to be ticked, ahead of the buttons; none without one. */
  QString Check = QString();
};

/** A message across the window that waits until the user has time for it: an icon, a text, buttons
    and a cross. It never takes the focus by itself, nor does a click on it; the Tab key reaches its
    buttons and Escape closes it there. A screen reader announces it when it appears. */
class MessageBar : public QFrame {
  Q_OBJECT

 public:
  explicit MessageBar(QWidget* parent = nullptr);

  /** Shows another message in the same place and announces it. */
  void SetContent(const BarContent& content);
  const QString& Text() const { return text_; }
  BarKind Kind() const { return kind_; }
  /** Background and text, a pair for the palette in use. */
  struct Colors {
    QColor Back, Text, Edge;
  };
  Colors OwnColors() const;

  QSize minimumSizeHint() const override;

  WrappedLabel* lblText;
  /** Hidden where the message has none. */
  QCheckBox* chk;
  std::vector<QPushButton*> cmd;
  QToolButton* cmdClose;

 Q_SIGNALS:
  /** By the cross or by Escape. */
  void CloseWanted();
  void Pressed(std::size_t button);

 protected:
  void changeEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent*) override;
  void resizeEvent(QResizeEvent*) override;

 private:
  void Build();
  void MakeButtons(const std::vector<BarButton>& buttons);
  void Announce();
  void Recolor();
  /** Buttons stand behind the text, or below it where it would get too narrow. */
  void Arrange();

  QString text_;
  BarKind kind_ = BarKind::Info;
  QLabel* picture_;
  QBoxLayout* middle_;
  QWidget* buttonBox_;
};

}  // namespace rws
