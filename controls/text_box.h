#pragma once

#include <QPlainTextEdit>

#include "services/code_page.h"

namespace rws {

/** A box for text of several lines that keeps every character it is given. Characters that the code
   page lacks are refused, typed or pasted, and a hint names the first. The Tab key leaves the box.
 */
class TextBox : public QPlainTextEdit {
  Q_OBJECT

 public:
  explicit TextBox(const CodePage& page, QWidget* parent = nullptr);

  /** The text as it is, with carriage return and line feed for each line break. Not
      `toPlainText`, which turns a no-break space into a blank. */
  QString Text() const;
  /** Puts text in place of the selection or at the caret, as one step that can be undone. False,
      and nothing changes, when it holds a character that the code page lacks. */
  bool Insert(const QString& text);

  /** Set: the box has no menu of its own, and `MenuAsked` is sent instead. */
  bool ForeignMenu = false;

 Q_SIGNALS:
  /** The second mouse button was released, or the Menu key pressed; `place` is on the screen. */
  void MenuAsked(const QPoint& place);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void inputMethodEvent(QInputMethodEvent* event) override;
  /** The selection as it is, no-break spaces included. */
  QMimeData* createMimeDataFromSelection() const override;
  void insertFromMimeData(const QMimeData* source) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;

 private:
  /** True if the code page has every character of a text; else names the first that it lacks. */
  bool Accepts(const QString& text);
  QPoint BelowCaret() const;

  const CodePage& page_;
};

}  // namespace rws
