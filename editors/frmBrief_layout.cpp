#include <QHBoxLayout>
#include <QVBoxLayout>

#include "controls/layouts.h"
#include "controls/menu_entries.h"
#include "editors/frmBrief.h"

namespace rws {

namespace {

QGroupBox* FrameAround(QWidget* content, const QString& caption, const char* name) {
  auto* frame = Named(new QGroupBox(caption), name);
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
  const auto text = [](const char* name, const QString& words) {
    return Named(new TextBox, name, words, words);
  };
  txtName = text("txtName", tr("Mission name"));
  txtShort = text("txtShort", tr("Short mission description"));
  txtBrief = text("txtBrief", tr("Main mission briefing"));
  txtBrief->ForeignMenu = true;
  cmd = {Button("cmd(0)", tr("&Cancel"), tr("Discard changes and exit")),
         Button("cmd(1)", tr("&Apply"), tr("Apply the changes and exit")),
         // The words of its neighbour, on purpose.
         Button("cmd(2)", tr("&Help"), tr("Apply the changes and exit"))};
  for (auto* button : cmd) button->setAutoDefault(false);
  BuildMenus();
  PlaceControls();
  resize(fontMetrics().averageCharWidth() * kLetters, fontMetrics().height() * kRows);
}

void frmBrief::BuildMenus() {
  bar_ = new QMenuBar(this);
  // In the window on every desktop: a bar of the whole screen would not serve a dialog.
  bar_->setNativeMenuBar(false);
  mnuFile = Named(bar_->addMenu(tr("&File")), "mnuFile");
  mnuExit = AddEntry(mnuFile, tr("E&xit"), QStringLiteral("mnuExit"));
  mnuMain = Named(bar_->addMenu(tr("&Insert")), "mnuMain");
  BuildInsertMenu();
}

void frmBrief::BuildInsertMenu() {
  mnuLabel = AddEntry(mnuMain, tr("&Label and Inserts"), QStringLiteral("mnuLabel"), true);
  mnuModlbl = Named(mnuMain->addMenu(tr("M&odify Labels")), "mnuModlbl");
  AddEntries<4>(mnuModlbl, mnuMod, "mnuMod",
                {tr("Map"), tr("Weather"), tr("Cloud Height"), tr("Time")});
  mnuConvert = AddEntry(mnuMain, tr("&Use US Measurements"), QStringLiteral("mnuConvert"), true);
  mnuSep = AddEntry(mnuMain, {}, QStringLiteral("mnuSep"));
  AddEntries<5>(mnuMain, mnuInsert, "mnuInsert",
                {tr("Mission &Map"), tr("Mission &Weather"), tr("Mission &Cloud Height"),
                 tr("Mission &Time"), tr("&Aircraft Count")});
  mnuCoop = Named(mnuMain->addMenu(tr("Coop Ta&gs")), "mnuCoop");
  AddEntries<3>(mnuCoop, mnuTags, "mnuTags", {tr("Army &None"), tr("Army &Red"), tr("Army &Blue")});
}

void frmBrief::PlaceControls() {
  constexpr int kNameLines = 2, kShortLines = 5;
  fraName = FrameAround(txtName, tr("Mission &Name"), "fraName");
  fraShort = FrameAround(txtShort, tr("&Short Mission Description"), "fraShort");
  fraBrief = FrameAround(txtBrief, tr("Mission &Briefing"), "fraBrief");
  SetLines(txtName, kNameLines);
  SetLines(txtShort, kShortLines);
  auto* whole = new QVBoxLayout(this);
  whole->setMenuBar(bar_);
  whole->addWidget(fraName);
  whole->addWidget(fraShort);
  whole->addWidget(fraBrief, 1);
  whole->addLayout(ButtonRow({cmd[kApply], cmd[kCancel]}, {cmd[kHelp]}));
  TabOrder({txtName, txtShort, txtBrief, cmd[kApply], cmd[kCancel], cmd[kHelp]});
}

}  // namespace rws
