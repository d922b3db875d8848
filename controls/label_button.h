#pragma once

#include <QLabel>
#include <cstdint>

namespace rws {

/** What the colour of a label says; the values are blue-green-red numbers. */
enum class LabelColor : std::int32_t { Black = 0, Red = 0x0000FF, Blue = 0xFF0000 };

/** A label that works as a button. While it is red or blue it looks like a link and can be reached
    by the keyboard: Space or Return is a click, the Menu key or Shift+F10 a right click. */
class LabelButton : public QLabel {
  Q_OBJECT

 public:
  explicit LabelButton(const QString& text, QWidget* parent = nullptr);

  LabelColor Color() const { return color_; }
  /** `meaning` says the colour in words, for those who do not see it. */
  void SetColor(LabelColor color, const QString& meaning);
  /** For a label whose right click does something in every colour: it always takes the focus. */
  void SetAlwaysReachable();

 Q_SIGNALS:
  /** A mouse button was released over the label, or the key for it pressed. */
  void Clicked(Qt::MouseButton button);

 protected:
  void paintEvent(QPaintEvent*) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  void UpdateFocusPolicy();

  LabelColor color_ = LabelColor::Black;
  bool alwaysReachable_ = false;
};

}  // namespace rws
