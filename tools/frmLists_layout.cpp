#include <QGridLayout>
#include <QHeaderView>
#include <QStyle>
#include <QVBoxLayout>

#include "controls/layouts.h"
#include "controls/wrapped_label.h"
#include "tools/frmLists.h"

namespace rws {

void frmLists::Build() {
  lblNames = Named(new QLabel, "lblNames");
  lblNames->setTextFormat(Qt::PlainText);
  lblNames->setWordWrap(true);
  lblOwn = Named(new WrappedLabel, "lblOwn");
  const auto box = [](const char* name, const QString& caption, const QString& tip) {
    return Named(new QCheckBox(caption), name, Spoken(caption), tip);
  };
  chkUse = box("chkUse", tr("&Use the lists of the game"),
               tr("Names come from the lists that a pack of mods keeps as open files"));
  chkFlyable = box("chkFlyable", tr("Aircraft that only the lists know can be &flown"),
                   tr("The lists do not tell which aircraft have a cockpit"));
  cboPack = Named(new QComboBox, "cboPack", tr("Pack"),
                  tr("Whose lists are read, where the game does not tell which pack is on"));
  cboLanguage = Named(new QComboBox, "cboLanguage", tr("Language"), tr("Of the names"));
  lblPack = Named(new QLabel(tr("&Pack:")), "lblPack");
  lblPack->setBuddy(cboPack);
  lblLanguage = Named(new QLabel(tr("&Language:")), "lblLanguage");
  lblLanguage->setBuddy(cboLanguage);
  lstSources = Named(new ReportList, "lstSources", tr("Lists that were read"));
  lstSources->setModel(&Sources);
  lblSources = Named(new QLabel(tr("Lists that were rea&d:")), "lblSources");
  lblSources->setBuddy(lstSources);
  lstTroubles = Named(new ReportList, "lstTroubles", tr("What was not understood"));
  lstTroubles->setModel(&Troubles);
  lblTroubles = Named(new QLabel, "lblTroubles");
  lblTroubles->setBuddy(lstTroubles);
  cmd = {
      Button("cmd(0)", tr("&Read Again"), tr("Take the choices over and read all lists once more")),
      Button("cmd(1)", tr("&OK"), tr("Take the choices over and close")),
      Button("cmd(2)", tr("&Cancel"), tr("Close; the choices stay as they were"))};
  cmd[kReadAgain]->setAutoDefault(false);
  cmd[kCancel]->setAutoDefault(false);
  cmd[kOk]->setDefault(true);
  PlaceControls();
}

void frmLists::PlaceControls() {
  constexpr int kLetters = 110, kRows = 34, kNameLetters = 20, kWhyLetters = 44;
  auto* choices = new QGridLayout;
  choices->addWidget(lblPack, 0, 0);
  choices->addWidget(cboPack, 0, 1);
  choices->addWidget(lblLanguage, 1, 0);
  choices->addWidget(cboLanguage, 1, 1);
  choices->addWidget(chkFlyable, 2, 0, 1, 3);
  choices->setColumnStretch(2, 1);
  // Below the caption of the box that switches them.
  choices->setContentsMargins(style()->pixelMetric(QStyle::PM_IndicatorWidth) +
                                  style()->pixelMetric(QStyle::PM_CheckBoxLabelSpacing),
                              0, 0, 0);
  auto* whole = new QVBoxLayout(this);
  whole->addWidget(lblNames);
  whole->addWidget(chkUse);
  whole->addLayout(choices);
  whole->addWidget(lblOwn);
  whole->addWidget(lblSources);
  whole->addWidget(lstSources, 3);
  whole->addWidget(lblTroubles);
  whole->addWidget(lstTroubles, 2);
  whole->addLayout(ButtonRow({cmd[kOk], cmd[kCancel]}, {cmd[kReadAgain]}));
  const int letter = fontMetrics().averageCharWidth();
  for (auto* list : {lstSources, lstTroubles}) {
    list->header()->setSectionsClickable(false);
    list->setSelectionMode(QAbstractItemView::SingleSelection);
    list->setTextElideMode(Qt::ElideMiddle);
    list->setColumnWidth(0, letter * (list == lstTroubles ? kWhyLetters : kNameLetters));
    list->setColumnWidth(1, letter * 10);
    list->setMinimumHeight(fontMetrics().height() * 5);
  }
  TabOrder({chkUse, cboPack, cboLanguage, chkFlyable, lstSources, lstTroubles, cmd[kReadAgain],
            cmd[kOk], cmd[kCancel]});
  resize(letter * kLetters, fontMetrics().height() * kRows);
}

}  // namespace rws
