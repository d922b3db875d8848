#pragma once

#include <QStringListModel>

#include "controls/drop_down.h"
#include "services/code_page.h"

namespace rws {

/** A drop-down list that can be typed into. A typed text that is a row in any letter case selects
    that row; any other is put back when the box is left. A box that keeps what is typed does both
    on leaving, and shows its first row when it was emptied. Characters that the code page lacks are
    refused. */
class EditDropDown : public DropDown {
  Q_OBJECT

 public:
  enum class Typed { RowsOnly, Keeps };
  EditDropDown(const CodePage& page, Typed typed, QWidget* parent = nullptr);

  /** Replaces all rows; none is selected afterwards, the text is empty and no signal is sent. */
  void Fill(const QStringList& rows);
  /** True if the text is a row, in any letter case. */
  bool HasText(const QString& text) const { return RowOf(text) >= 0; }
  /** Selects the row of this text, the exact spelling first. False if it is no row. */
  bool SelectText(const QString& text);
  /** The text that counts: the selected row's, or what was typed where that is kept. */
  QString Value() const;

 protected:
  void focusOutEvent(QFocusEvent* event) override;

 private:
  int RowOf(const QString& text) const;
  void TextTyped(const QString& text);
  /** Puts the text back, or in the spelling of its row, when the box is left. */
  void Settle();
  /** Shows a long text from its first character on. */
  void ShowStart();

  Typed typed_;
  QStringListModel* rows_;
};

}  // namespace rws
