#pragma once

#include <QComboBox>
#include <QStringList>

namespace rws {

/** A drop-down list that is filled without a signal, selects only rows that it has, and opens as
   wide as its widest entry. The mouse wheel turns it only while it has the focus. */
class DropDown : public QComboBox {
  Q_OBJECT

 public:
  explicit DropDown(QWidget* parent = nullptr);

  /** Replaces all rows; none is selected afterwards and no signal is sent. */
  void Fill(const QStringList& rows);
  /** Selects a row; one that is not there changes nothing. */
  void SelectRow(int row);

  void showPopup() override;

 protected:
  void wheelEvent(QWheelEvent* event) override;
};

/** Widens the open list of a drop-down to its widest entry, at most to the screen. */
void SizeComboDropDown(QComboBox& combo);

}  // namespace rws
