#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QStackedWidget>

#include "controls/drop_down.h"
#include "controls/time_picker.h"
#include "services/services.h"
#include "tools/logic/edit_many_fields.h"

namespace rws {

/** One line of "field = value" with the editor that fits the field, and which flights are meant. */
class EditManyRow : public QWidget {
  Q_OBJECT

 public:
  EditManyRow(const Services& services, const Catalogues& tables, QWidget* parent = nullptr);

  /** What is chosen; a text that the code page cannot spell is a fault. */
  ManyRow Row() const;
  /** Shows a row. */
  void SetRow(const ManyRow& row);
  /** Names the controls after the row's place, counted from 0. */
  void SetNumber(int number);

  DropDown* cboField;
  /** Of these the one that fits the field is on show. */
  DropDown* cboValue;
  QSpinBox* spnValue;
  TimePicker* dtValue;
  QCheckBox* chkValue;
  QComboBox* cboLoadout;
  QLineEdit* txtValue;
  DropDown* cboFlights;
  QComboBox* cboChosen;
  QPushButton* cmdRemove;

 Q_SIGNALS:
  void Changed();
  void Removed();

 private:
  void Build();
  void Connect();
  void ShowField();
  void ShowFlights();
  void FillLoadouts();
  QWidget* EditorOf(ManyEditor editor) const;
  std::string Value() const;
  void SetValue(const std::string& value);
  std::string Bytes(const QString& text) const;
  ManyFlights Flights() const { return static_cast<ManyFlights>(cboFlights->currentIndex()); }
  const ManyField& Field() const;

  const Services& services_;
  const Catalogues& tables_;
  QStackedWidget* values_;
};

}  // namespace rws
