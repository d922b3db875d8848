#pragma once

#include <QPlainTextEdit>

namespace rws {

/** A box for text of several lines that keeps every character it is given. The Tab key leaves the
    box. */
class TextBox : public QPlainTextEdit {
  Q_OBJECT

 public:
  explicit TextBox(QWidget* parent = nullptr);

  /** The text as it is, with carriage return and line feed for each line break. Not
      `toPlainText`, which turns a no-break space into a blank. */
  QString Text() const;
  /** Puts text in place of the selection or at the caret, as one step that can be undone. */
  void Insert(const QString& text);

  /** Set: the box has no menu of its own, and `MenuAsked` is sent instead. */
  bool ForeignMenu = false;

 Q_SIGNALS:
  /** The second mouse button was released, or the Menu key pressed; `place` is on the screen. */
  void MenuAsked(const QPoint& place);

 protected:
  /** The selection as it is, no-break spaces included. */
  QMimeData* createMimeDataFromSelection() const override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;

 private:
  QPoint BelowCaret() const;
};

}  // namespace rws
