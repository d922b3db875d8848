#include "editors/frmWPEdit.h"

#include <QKeyEvent>

#include "controls/list_colors.h"
#include "platform/form_placement.h"
#include "platform/qt_text.h"
#include "services/numbers.h"
#include "services/text.h"
#include "services/units.h"

namespace rws {

namespace {

/** True for what a number begins with: "-50" must pass through "-". */
bool IsUnfinished(const std::string& text) {
  const auto bare = Trim(text);
  return bare.empty() || bare == "-" || bare == "+";
}

}  // namespace

frmWPEdit::frmWPEdit(Session& session, QWidget* parent)
    : Dialog(session.Services, "frmWPEdit", parent), session_(session) {
  Build();
  Connect();
}

void frmWPEdit::Connect() {
  for (std::size_t i = 0; i < txtInput.size(); ++i) {
    On(txtInput[i], &QLineEdit::textChanged, "txtInput_Change", [this, i] { TextChanged(i); });
    On(txtInput[i], &QLineEdit::editingFinished, "txtInput_LostFocus", [this, i] { TextLeft(i); });
  }
  connect(cmd[kCancel], &QPushButton::clicked, this, [this] {
    frmCancel = true;
    reject();
  });
  connect(cmd[kApply], &QPushButton::clicked, this, [this] {
    frmCancel = false;
    accept();
  });
}

void frmWPEdit::LoadForm() {
  Load("Form_Load", [&] {
    ApplyListColors(*this, session_.Prefs);
    Altitude = CInt(double(udWP[kHeight]->Value()));
    Distance = CInt(double(udWP[kDistance]->Value()));
    Speed = CInt(double(udWP[kSpeed]->Value()));
    ACNumber = CInt(double(udWP[kNumber]->Value()));
    for (std::size_t i = 0; i < txtInput.size(); ++i)
      txtInput[i]->setText(QString::number(udWP[i]->Value()));
    QString aircraft = FromBytes(services_.Page, AirCraftType);
    aircraft.replace(QLatin1Char('&'), QLatin1String("&&"));
    fra1->setTitle(fra1->title() + QLatin1String(" - ") + aircraft);
    for (const auto i : {kSpeed, kDistance, kHeight}) ShowToolTip(i);
    // In the middle at last: the caption may have made the form wider.
    adjustSize();
    CenterForm(*this);
  });
  txtInput[kNumber]->setFocus();
  txtInput[kNumber]->selectAll();
}

void frmWPEdit::keyPressEvent(QKeyEvent* event) {
  // Closing alone would count as applied, which nobody expects of this key.
  if (event->matches(QKeySequence::Cancel)) return cmd[kCancel]->click();
  Dialog::keyPressEvent(event);
}

void frmWPEdit::TextChanged(std::size_t index) {
  const std::string text = ToBytes(services_.Page, txtInput[index]->text());
  if (!IsNumeric(text)) {
    // The beginning of a number may stand while the user is in the box; it is not stored.
    if (!IsUnfinished(text)) Restore(index);
    return;
  }
  if (!Store(index, text)) {
    Restore(index);
    const std::array<const char*, 4> names = {"The height", "The distance", "The speed",
                                              "The number of flights"};
    services_.Ask.MsgBox(std::string(names[index]) + " must be a number from -32768 to 32767.",
                         Buttons::Ok, Icon::Exclamation, kProgramTitle);
    return;
  }
  ShowToolTip(index);
  Tag[index] = txtInput[index]->text();
}

void frmWPEdit::TextLeft(std::size_t index) {
  if (!IsNumeric(ToBytes(services_.Page, txtInput[index]->text()))) Restore(index);
}

void frmWPEdit::Restore(std::size_t index) {
  auto* box = txtInput[index];
  const auto place = box->cursorPosition() + Tag[index].size() - box->text().size();
  box->setText(Tag[index]);
  box->setCursorPosition(static_cast<int>(place));
}

bool frmWPEdit::Store(std::size_t index, const std::string& text) {
  const std::array<std::int16_t*, 4> fields = {&Altitude, &Distance, &Speed, &ACNumber};
  return ResumeNext([&] { *fields[index] = CInt(text); });
}

void frmWPEdit::ShowToolTip(std::size_t index) {
  if (index == kNumber) return;
  const std::string text = ToBytes(services_.Page, txtInput[index]->text());
  // Both conversions go the other way than the tool tip says. That is kept: users know the numbers.
  txtInput[index]->setToolTip(
      FromPath(index == kSpeed ? MilesToKm(text) + " Mph" : FeetToMeters(text) + " feet"));
}

}  // namespace rws
