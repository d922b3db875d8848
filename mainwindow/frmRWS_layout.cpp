#include <QGridLayout>
#include <QScreen>
#include <QVBoxLayout>

#include "controls/elided_label.h"
#include "controls/layouts.h"
#include "mainwindow/frmRWS.h"
#include "platform/qt_text.h"

namespace rws {

void frmRWS::Build() {
  setObjectName(QStringLiteral("frmRWS"));
  // The mark stands for an asterisk, shown while something is unsaved.
  setWindowTitle(FromPath(kProgramTitle) + QStringLiteral("[*]"));
  BuildMissionPopup();
  flightArea = new FlightArea(session_, Popups, this);
  BuildMenus();
  BuildToolBar();
  splSides = new QSplitter(this);
  splSides->setObjectName(QStringLiteral("splSides"));
  splSides->setChildrenCollapsible(false);
  splSides->addWidget(BuildLeftSide());
  splSides->addWidget(flightArea);
  splSides->setStretchFactor(1, 1);
  auto* margin = new QWidget(this);
  bars = new MessageBars(session_.Services, margin);
  bars->setObjectName(QStringLiteral("bars"));
  bars->SetNext(lstMission);
  auto* frame = new QVBoxLayout(margin);
  frame->addWidget(bars);
  frame->addWidget(splSides, 1);
  setCentralWidget(margin);
  BuildStatusBar();
  SetTabOrder();
  // Keys go there at first, as they have before it had a filter.
  lstMission->setFocus();
  const QSize comfortable(fontMetrics().averageCharWidth() * 150, fontMetrics().height() * 42);
  resize(comfortable.boundedTo(screen()->availableSize()));
}

QWidget* frmRWS::BuildLeftSide() {
  auto* side = new QWidget(this);
  auto* column = new QVBoxLayout(side);
  column->setContentsMargins(0, 0, 0, 0);
  lstMission = new MissionList;
  lstMission->setObjectName(QStringLiteral("lstMission"));
  lstMission->setAccessibleName(tr("Missions"));
  lstMission->setToolTip(tr("Right click selected mission for single file menu options"));
  missionPanel = new MissionPanel(session_, side);
  BuildFilter();
  column->addWidget(qryFilter);
  column->addWidget(lstMission, 1);
  column->addWidget(missionPanel);
  column->addWidget(BuildButtons());
  return side;
}

QWidget* frmRWS::BuildButtons() {
  const std::array<QString, 4> captions{tr("&Directory"), tr("E&xit"), tr("Mi&nimize"),
                                        tr("&Update")};
  const std::array<QString, 4> tips{tr("Select a mission directory"), tr("Close the program"),
                                    tr("Minimize the program"),
                                    tr("Write the changes to the mission file")};
  auto* box = new QWidget;
  auto* row = new QHBoxLayout(box);
  row->setContentsMargins(0, 0, 0, 0);
  for (std::size_t i = 0; i < cmd.size(); ++i) {
    cmd[i] = new QPushButton(captions[i]);
    cmd[i]->setObjectName(QStringLiteral("cmd(%1)").arg(i));
    cmd[i]->setAccessibleName(QString(captions[i]).remove(u'&'));
    cmd[i]->setToolTip(tips[i]);
    cmd[i]->setAutoDefault(false);
  }
  // Update is what the others are there for; it stands apart, first under the values it writes.
  for (const Button i : {kUpdate, kDirectory, kMinimize, kExit}) row->addWidget(cmd[i]);
  return box;
}

/** As the eye goes: down the left side, then along the buttons. */
void frmRWS::SetTabOrder() {
  const MissionPanel& panel = *missionPanel;
  const std::array<QWidget*, 14> order = {
      qryFilter->txtQuery, lstMission,      panel.cboWeather, panel.txtWeather, panel.dtMission,
      panel.chkST,         panel.chkWL,     panel.cmdCount,   panel.cmdModSA,   panel.imgSnd,
      cmd[kUpdate],        cmd[kDirectory], cmd[kMinimize],   cmd[kExit]};
  for (std::size_t i = 1; i < order.size(); ++i) setTabOrder(order[i - 1], order[i]);
}

void frmRWS::BuildStatusBar() {
  staBar = statusBar();
  staBar->setObjectName(QStringLiteral("staBar"));
  // A path may make a message longer than the bar.
  connect(staBar, &QStatusBar::messageChanged, staBar, &QWidget::setToolTip);
  const std::array<QString, 2> tips{tr("Current mission directory"), tr("Player select")};
  for (std::size_t i = 0; i < staPanels.size(); ++i) {
    staPanels[i] = i == 0 ? new ElidedLabel : new QLabel;
    staPanels[i]->setToolTip(tips[i]);
    staPanels[i]->setAccessibleName(tips[i]);
    staPanels[i]->setTextFormat(Qt::PlainText);
    staPanels[i]->setIndent(fontMetrics().averageCharWidth());
    staPanels[i]->setContentsMargins(0, 0, fontMetrics().averageCharWidth(), 0);
    staBar->addWidget(staPanels[i], i == 0 ? 1 : 0);
  }
  lblUnsaved = Named(new QLabel, "lblUnsaved", tr("Unsaved missions"),
                     tr("Missions that differ from their files"));
  lblUnsaved->setTextFormat(Qt::PlainText);
  lblUnsaved->setIndent(fontMetrics().averageCharWidth());
  cmdLines = Named(new QToolButton, "cmdLines", tr("Lines that an Update would change"),
                   tr("What an Update would change in the file of this mission; click to see it"));
  cmdLines->setAutoRaise(true);
  cmdLines->setFocusPolicy(Qt::TabFocus);
  // As high from the start as with a text: a bar that grows lays itself out anew, and then shows
  // over a notice what had made room for it.
  cmdLines->setText(QStringLiteral("0"));
  cmdLines->setMinimumHeight(cmdLines->sizeHint().height());
  staBar->addPermanentWidget(BuildReading());
  staBar->addPermanentWidget(cmdLines);
  // Stays when a notice takes the place of the others.
  staBar->addPermanentWidget(lblUnsaved);
}

}  // namespace rws
