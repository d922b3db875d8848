#include "tools/edit_many_row.h"

#include <QCompleter>
#include <QHBoxLayout>

#include "controls/layouts.h"
#include "platform/qt_text.h"
#include "services/clock.h"
#include "services/faults.h"
#include "services/numbers.h"
#include "services/text.h"

namespace rws {

namespace {

/** Narrow enough for the form, whatever the lists hold. */
void Narrow(QComboBox& combo, int letters) {
  combo.setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  combo.setMinimumContentsLength(letters);
}

QComboBox* EditableBox(int letters) {
  auto* box = new QComboBox;
  box->setEditable(true);
  box->setInsertPolicy(QComboBox::NoInsert);
  box->completer()->setFilterMode(Qt::MatchContains);
  box->completer()->setCompletionMode(QCompleter::PopupCompletion);
  Narrow(*box, letters);
  return box;
}

QStringList Captions() {
  QStringList captions;
  for (const auto& field : ManyFields()) captions << QLatin1String(field.Caption);
  return captions;
}

}  // namespace

EditManyRow::EditManyRow(const Services& services, const Catalogues& tables, QWidget* parent)
    : QWidget(parent), services_(services), tables_(tables) {
  Build();
  Connect();
  ShowField();
}

void EditManyRow::Build() {
  constexpr int kLetters = 10;
  cboField = new DropDown;
  cboField->Fill(Captions());
  cboField->SelectRow(0);
  cboValue = new DropDown;
  spnValue = new QSpinBox;
  dtValue = new TimePicker;
  dtValue->setDisplayFormat(QStringLiteral("HH:mm"));
  dtValue->setTime(QTime(12, 0));
  chkValue = new QCheckBox(tr("on"));
  cboLoadout = EditableBox(kLetters);
  txtValue = new QLineEdit;
  txtValue->setPlaceholderText(tr("Name.bmp, or nothing for the usual one"));
  cboFlights = new DropDown;
  cboFlights->Fill({tr("all flights"), tr("flights named"), tr("of class"), tr("of aircraft"),
                    tr("of squadron"), tr("of army")});
  cboFlights->SelectRow(0);
  cboChosen = EditableBox(kLetters);
  cmdRemove = new QPushButton(tr("Remove"));
  cmdRemove->setAutoDefault(false);
  Narrow(*cboField, kLetters);
  Narrow(*cboFlights, kLetters);
  Narrow(*cboValue, kLetters);
  values_ = new QStackedWidget;
  for (auto* editor :
       std::initializer_list<QWidget*>{cboValue, spnValue, dtValue, chkValue, cboLoadout, txtValue})
    values_->addWidget(editor);
  values_->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
  txtValue->setMinimumWidth(0);
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(cboField, 3);
  row->addWidget(values_, 4);
  row->addWidget(cboFlights, 2);
  row->addWidget(cboChosen, 4);
  row->addWidget(cmdRemove);
  for (auto* box : std::initializer_list<QWidget*>{cboFlights, cboChosen}) {
    auto policy = box->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    box->setSizePolicy(policy);
  }
  TabOrder({cboField, cboValue, spnValue, dtValue, chkValue, cboLoadout, txtValue, cboFlights,
            cboChosen, cmdRemove});
}

void EditManyRow::Connect() {
  connect(cboField, &QComboBox::currentIndexChanged, this, [this] {
    ShowField();
    Q_EMIT Changed();
  });
  connect(cboFlights, &QComboBox::currentIndexChanged, this, [this] {
    ShowFlights();
    Q_EMIT Changed();
  });
  connect(cboChosen, &QComboBox::currentTextChanged, this, [this] {
    FillLoadouts();
    Q_EMIT Changed();
  });
  connect(cboValue, &QComboBox::currentIndexChanged, this, &EditManyRow::Changed);
  connect(spnValue, &QSpinBox::valueChanged, this, &EditManyRow::Changed);
  connect(dtValue, &QTimeEdit::timeChanged, this, &EditManyRow::Changed);
  connect(chkValue, &QCheckBox::toggled, this, [this](bool on) {
    chkValue->setText(on ? tr("on") : tr("off"));
    Q_EMIT Changed();
  });
  connect(cboLoadout, &QComboBox::currentTextChanged, this, &EditManyRow::Changed);
  connect(txtValue, &QLineEdit::textChanged, this, &EditManyRow::Changed);
  connect(cmdRemove, &QPushButton::clicked, this, &EditManyRow::Removed);
  chkValue->setChecked(true);
}

const ManyField& EditManyRow::Field() const {
  return ManyFields()[static_cast<std::size_t>(std::max(cboField->currentIndex(), 0))];
}

QWidget* EditManyRow::EditorOf(ManyEditor editor) const {
  switch (editor) {
    case ManyEditor::Switch:
      return chkValue;
    case ManyEditor::Number:
      return spnValue;
    case ManyEditor::List:
      return cboValue;
    case ManyEditor::Clock:
      return dtValue;
    case ManyEditor::Loadout:
      return cboLoadout;
    case ManyEditor::Picture:
      return txtValue;
  }
  return txtValue;
}

void EditManyRow::ShowField() {
  const ManyField& field = Field();
  if (field.Editor == ManyEditor::Number) spnValue->setRange(field.Least, field.Most);
  if (field.Editor == ManyEditor::List) {
    QStringList entries;
    for (const auto entry : field.Entries) entries << QLatin1String(entry);
    cboValue->Fill(entries);
    cboValue->SelectRow(0);
  }
  values_->setCurrentWidget(EditorOf(field.Editor));
  cboFlights->setVisible(field.IsOfFlights());
  ShowFlights();
  FillLoadouts();
}

void EditManyRow::ShowFlights() {
  cboChosen->setVisible(Field().IsOfFlights() && Flights() != ManyFlights::All);
  QStringList entries;
  const auto add = [&](const std::string& text) {
    const QString entry = FromBytes(services_.Page, Trim(text));
    if (!entry.isEmpty()) entries << entry;
  };
  if (Flights() == ManyFlights::Army)
    entries = QStringLiteral("red blue white").split(QLatin1Char(' '));
  for (const auto& aircraft : tables_.Aircraft) {
    if (Flights() == ManyFlights::Aircraft) add(aircraft.Name);
    if (Flights() == ManyFlights::Class) add(aircraft.Class);
  }
  for (const auto& squadron : tables_.Squadrons)
    for (const auto& regiment : squadron.Regiments)
      if (Flights() == ManyFlights::Squadron) add(regiment.Code);
  const QString text = cboChosen->currentText();
  cboChosen->clear();
  cboChosen->addItems(entries);
  cboChosen->setEditText(entries.contains(text) ? text : QString());
}

/** The chosen one stays. */
void EditManyRow::FillLoadouts() {
  if (Field().Editor != ManyEditor::Loadout) return;
  const QString text = cboLoadout->currentText();
  cboLoadout->clear();
  for (const auto& [shown, word] :
       LoadoutsFor(tables_, Flights(), ToBytes(services_.Page, cboChosen->currentText())))
    cboLoadout->addItem(FromBytes(services_.Page, shown), FromBytes(services_.Page, word));
  const int row = cboLoadout->findText(text);
  if (row >= 0) cboLoadout->setCurrentIndex(row);
}

std::string EditManyRow::Bytes(const QString& text) const {
  auto bytes = services_.Page.FromUtf8(ToPath(text));
  if (!bytes)
    throw ValueFault("\"" + ToPath(text) + "\" has a letter that the missions cannot hold");
  return *bytes;
}

std::string EditManyRow::Value() const {
  const ManyField& field = Field();
  switch (field.Editor) {
    case ManyEditor::Switch:
      return chkValue->isChecked() ? "1" : "0";
    case ManyEditor::Number:
      return std::to_string(spnValue->value());
    case ManyEditor::List:
      return std::to_string(cboValue->currentIndex() + field.Least);
    case ManyEditor::Clock:
      return ClockToHours(ToPath(dtValue->time().toString(QStringLiteral("H.mm"))));
    case ManyEditor::Loadout: {
      const int row = cboLoadout->findText(cboLoadout->currentText());
      return Bytes(row < 0 ? cboLoadout->currentText() : cboLoadout->itemData(row).toString());
    }
    case ManyEditor::Picture:
      return Bytes(txtValue->text().trimmed());
  }
  return "";
}

ManyRow EditManyRow::Row() const {
  ManyRow row;
  row.Field = static_cast<std::size_t>(std::max(cboField->currentIndex(), 0));
  row.Value = Value();
  row.Flights = Flights();
  row.Chosen = Bytes(cboChosen->currentText());
  return row;
}

void EditManyRow::SetValue(const std::string& value) {
  const QString text = FromBytes(services_.Page, value);
  switch (Field().Editor) {
    case ManyEditor::Switch:
      return chkValue->setChecked(value == "1");
    case ManyEditor::Number:
      return spnValue->setValue(text.toInt());
    case ManyEditor::List:
      return cboValue->SelectRow(text.toInt() - Field().Least);
    case ManyEditor::Clock:
      return dtValue->setTime(
          QTime::fromString(FromPath(HoursToClock(value)), QStringLiteral("H:mm")));
    case ManyEditor::Loadout: {
      const int row = cboLoadout->findData(text);
      return row < 0 ? cboLoadout->setEditText(text) : cboLoadout->setCurrentIndex(row);
    }
    case ManyEditor::Picture:
      return txtValue->setText(text);
  }
}

void EditManyRow::SetRow(const ManyRow& row) {
  cboField->SelectRow(static_cast<int>(row.Field));
  cboFlights->SelectRow(static_cast<int>(row.Flights));
  cboChosen->setEditText(FromBytes(services_.Page, row.Chosen));
  SetValue(row.Value);
}

void EditManyRow::SetNumber(int number) {
  const auto name = [&](QWidget* control, const char* is, const QString& says) {
    control->setObjectName(QStringLiteral("%1(%2)").arg(QLatin1String(is)).arg(number));
    control->setAccessibleName(says.arg(number + 1));
  };
  name(cboField, "cboField", tr("Field %1"));
  name(cboValue, "cboValue", tr("Value %1"));
  name(spnValue, "spnValue", tr("Value %1"));
  name(dtValue, "dtValue", tr("Value %1"));
  name(chkValue, "chkValue", tr("Value %1"));
  name(cboLoadout, "cboLoadout", tr("Value %1"));
  name(txtValue, "txtValue", tr("Value %1"));
  name(cboFlights, "cboFlights", tr("Which flights %1"));
  name(cboChosen, "cboChosen", tr("Flights that are meant %1"));
  name(cmdRemove, "cmdRemove", tr("Remove row %1"));
  cboChosen->setToolTip(tr("* stands for any letters: Bf 109*"));
  cboChosen->lineEdit()->setAccessibleName(cboChosen->accessibleName());
  cboLoadout->lineEdit()->setAccessibleName(cboLoadout->accessibleName());
}

}  // namespace rws
