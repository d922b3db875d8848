#include <QHBoxLayout>
#include <QVBoxLayout>

#include "controls/layouts.h"
#include "controls/menu_entries.h"
#include "editors/frmBrief.h"

namespace rws {

namespace {

QMenu* AddMenu(QMenu* menu, const char* name) {
  menu->setObjectName(QLatin1String(name));
  return menu;
}

QGroupBox* FrameAround(QWidget* content, const QString& caption, const char* name) {
  auto* frame = new QGroupBox(caption);
  frame->setObjectName(QLatin1String(name));
  (new QVBoxLayout(frame))->addWidget(content);
  return frame;
}

void SetLines(TextBox* box, int lines) {
  const int margins = qRound(box->document()->documentMargin()) * 2 + box->frameWidth() * 2;
  box->setFixedHeight(box->fontMetrics().lineSpacing() * lines + margins);
}

}  // namespace

void frmBrief::Build() {
  constexpr int kLetters = 100, kRows = 40;
  setObjectName(QStringLiteral("frmBrief"));
  const CodePage& page = session_.Services.Page;
  txtName = new TextBox(page);
  txtShort = new TextBox(page);
  txtBrief = new TextBox(page);
  txtBrief->ForeignMenu = true;
  Describe(txtName, "txtName", tr("Mission name"), tr("Mission name"));
  Describe(txtShort, "txtShort", tr("Short mission description"), tr("Short mission description"));
  Describe(txtBrief, "txtBrief", tr("Main mission briefing"), tr("Main mission briefing"));
  cmd = {new QPushButton(tr("&Cancel")), new QPushButton(tr("&Apply")),
         new QPushButton(tr("&Help"))};
  Describe(cmd[0], "cmd(0)", tr("Cancel"), tr("Discard changes and exit"));
  Describe(cmd[1], "cmd(1)", tr("Apply"), tr("Apply the changes and exit"));
  // The words of its neighbour, on purpose.
  Describe(cmd[2], "cmd(2)", tr("Help"), tr("Apply the changes and exit"));
  for (auto* button : cmd) button->setAutoDefault(false);
  BuildMenus();
  PlaceControls();
  resize(fontMetrics().averageCharWidth() * kLetters, fontMetrics().height() * kRows);
}

void frmBrief::BuildMenus() {
  bar_ = new QMenuBar(this);
  // In the window on every desktop: a bar of the whole screen would not serve a dialog.
  bar_->setNativeMenuBar(false);
  mnuFile = AddMenu(bar_->addMenu(tr("&File")), "mnuFile");
  mnuExit = AddEntry(mnuFile, tr("E&xit"), QStringLiteral("mnuExit"));
  mnuMain = AddMenu(bar_->addMenu(tr("&Insert")), "mnuMain");
  BuildInsertMenu();
}

void frmBrief::BuildInsertMenu() {
  mnuLabel = AddEntry(mnuMain, tr("&Label and Inserts"), QStringLiteral("mnuLabel"), true);
  mnuModlbl = AddMenu(mnuMain->addMenu(tr("M&odify Labels")), "mnuModlbl");
  AddEntries<4>(mnuModlbl, mnuMod, "mnuMod",
                {tr("Map"), tr("Weather"), tr("Cloud Height"), tr("Time")});
  mnuConvert = AddEntry(mnuMain, tr("&Use US Measurements"), QStringLiteral("mnuConvert"), true);
  mnuSep = mnuMain->addSeparator();
  mnuSep->setObjectName(QStringLiteral("mnuSep"));
  AddEntries<5>(mnuMain, mnuInsert, "mnuInsert",
                {tr("Mission &Map"), tr("Mission &Weather"), tr("Mission &Cloud Height"),
                 tr("Mission &Time"), tr("&Aircraft Count")});
  mnuCoop = AddMenu(mnuMain->addMenu(tr("Coop Ta&gs")), "mnuCoop");
  AddEntries<3>(mnuCoop, mnuTags, "mnuTags", {tr("Army &None"), tr("Army &Red"), tr("Army &Blue")});
}

void frmBrief::PlaceControls() {
  constexpr int kNameLines = 2, kShortLines = 5;
  fraName = FrameAround(txtName, tr("Mission &Name"), "fraName");
  fraShort = FrameAround(txtShort, tr("&Short Mission Description"), "fraShort");
  fraBrief = FrameAround(txtBrief, tr("Mission &Briefing"), "fraBrief");
  SetLines(txtName, kNameLines);
  SetLines(txtShort, kShortLines);
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(cmd[2]);
  buttons->addStretch();
  buttons->addWidget(cmd[1]);
  buttons->addWidget(cmd[0]);
  auto* whole = new QVBoxLayout(this);
  whole->setMenuBar(bar_);
  whole->addWidget(fraName);
  whole->addWidget(fraShort);
  whole->addWidget(fraBrief, 1);
  whole->addLayout(buttons);
  const std::array<QWidget*, 6> order = {txtName, txtShort, txtBrief, cmd[1], cmd[0], cmd[2]};
  for (std::size_t i = 1; i < order.size(); ++i) setTabOrder(order[i - 1], order[i]);
}

}  // namespace rws
