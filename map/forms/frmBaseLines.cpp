#include "map/forms/frmBaseLines.h"

#include <QFontDatabase>
#include <QFormLayout>
#include <QVBoxLayout>

#include "controls/layouts.h"
#include "platform/qt_text.h"
#include "services/faults.h"
#include "session/doors.h"

namespace rws {

namespace {

constexpr EditKind kBaseText{"frmBaseLines", "Home base as text"};

QString WithoutLast(QString text) {
  while (text.endsWith(u'\n')) text.chop(1);
  return text;
}

}  // namespace

frmBaseLines::frmBaseLines(Session& session, std::size_t base, QWidget* parent)
    : Dialog(session.Services, "frmBaseLines", parent), session_(session), base_(base) {
  Build();
  connect(cmd[0], &QPushButton::clicked, this, [this] { accept(); });
  connect(cmd[1], &QPushButton::clicked, this, [this] { reject(); });
}

void frmBaseLines::Build() {
  const QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  txtLine = Named(new QLineEdit, "txtLine", tr("Home base"),
                  tr("Army, radius, x and y in whole metres, and what the game's version has "
                     "behind them"));
  txtAircraft = Named(new QPlainTextEdit, "txtAircraft", tr("Aircraft"),
                      tr("One aircraft a line; behind it how many, and its loadouts"));
  txtCountries = Named(new QPlainTextEdit, "txtCountries", tr("Countries"),
                       tr("One country a line, as two letters"));
  for (auto* box : {txtAircraft, txtCountries}) {
    box->setFont(fixed);
    box->setTabChangesFocus(true);
    box->setLineWrapMode(QPlainTextEdit::NoWrap);
  }
  txtLine->setFont(fixed);
  lblFault = Named(new QLabel, "lblFault", tr("Why the text was not taken"));
  lblFault->setTextFormat(Qt::PlainText);
  lblFault->setWordWrap(true);
  lblFault->hide();
  cmd = {Button("cmd(0)", tr("OK")), Button("cmd(1)", tr("Cancel"))};
  cmd[0]->setDefault(true);
  auto* column = new QVBoxLayout(this);
  const auto add = [&](const QString& caption, QWidget* box, int stretch) {
    auto* label = new QLabel(caption);
    label->setBuddy(box);
    column->addWidget(label);
    column->addWidget(box, stretch);
  };
  add(tr("&Home base: army, radius, x, y ..."), txtLine, 0);
  add(tr("&Aircraft, with their limits and loadouts; none stands for all:"), txtAircraft, 3);
  add(tr("&Countries; none stands for all:"), txtCountries, 1);
  column->addWidget(lblFault);
  column->addLayout(ButtonRow({cmd[0], cmd[1]}));
  resize(fontMetrics().averageCharWidth() * 70, fontMetrics().height() * 26);
}

void frmBaseLines::LoadForm() {
  Load("frmBaseLines", [&] {
    const BaseLines lines = LinesOfBase(session_.Doc, services_, base_);
    const auto decoded = [&](const std::string& text) {
      return WithoutLast(FromBytes(services_.Page, text));
    };
    txtLine->setText(decoded(lines.Line).trimmed());
    txtAircraft->setPlainText(decoded(lines.Aircraft));
    txtCountries->setPlainText(decoded(lines.Countries));
  });
  setWindowTitle(tr("Home Base %1").arg(base_ + 1));
  line_ = txtLine->text();
  aircraft_ = txtAircraft->toPlainText();
  countries_ = txtCountries->toPlainText();
}

bool frmBaseLines::HoldsUnstored() const {
  return line_ != txtLine->text() || aircraft_ != txtAircraft->toPlainText() ||
         countries_ != txtCountries->toPlainText();
}

BaseLines frmBaseLines::Typed(QString& fault) const {
  BaseLines lines;
  const auto take = [&](std::string& to, const QString& text) {
    if (const auto bytes = services_.Page.FromUtf8(text.toStdString()))
      to = *bytes;
    else
      fault = tr("Missions cannot hold all of these characters: %1").arg(text.left(60));
  };
  take(lines.Line, QStringLiteral("  ") + txtLine->text().trimmed());
  take(lines.Aircraft, txtAircraft->toPlainText());
  take(lines.Countries, txtCountries->toPlainText());
  return lines;
}

void frmBaseLines::accept() {
  if (!HoldsUnstored()) return Dialog::accept();
  QString fault;
  const BaseLines lines = Typed(fault);
  if (fault.isEmpty()) {
    std::string refused;
    const bool done = Edit(session_, kBaseText, [&] {
      refused = SetLinesOfBase(session_.Doc, services_, base_, lines);
    });
    if (!refused.empty()) fault = FromBytes(services_.Page, refused);
    if (fault.isEmpty() && !done) fault = tr("The lines could not be taken; the log tells why.");
  }
  if (fault.isEmpty()) return Dialog::accept();
  lblFault->setText(fault);
  lblFault->show();
}

}  // namespace rws
