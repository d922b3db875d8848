#include <QGridLayout>
#include <QStyle>
#include <QVBoxLayout>

#include "controls/layouts.h"
#include "services/forms/frmCam.h"

namespace rws {

namespace {

QLabel* Picture(const QWidget& form, QStyle::StandardPixmap icon) {
  auto* picture = new QLabel;
  const int size = form.style()->pixelMetric(QStyle::PM_SmallIconSize);
  picture->setPixmap(
      form.style()->standardIcon(icon).pixmap(QSize(size, size), form.devicePixelRatioF()));
  return picture;
}

}  // namespace

void frmCam::Build() {
  setObjectName(QStringLiteral("frmCam"));
  setWindowTitle(tr("Mission Compatibility"));
  fra1 = new QGroupBox(tr("Mission Compatibility"));
  fra = new QGroupBox(tr("IL2 series installed"));
  for (auto* text : {&lblSq, &lblAC, &lblMap}) *text = new QLabel(tr("Label1"));
  lbl = {new QLabel(tr("RWS Version Override")), new QLabel(tr("FB + AEP + PF")),
         new QLabel(tr("Pacific Fighters")),
         new QLabel(tr("Forgotton Battles + Ace Expansion Pack")),
         new QLabel(tr("Forgotten Battles"))};
  for (auto& picture : imgWarn) picture = Picture(*this, QStyle::SP_MessageBoxWarning);
  // Whether a game is installed is known to nobody yet.
  for (auto& picture : imgVer) picture = Picture(*this, QStyle::SP_MessageBoxQuestion);
  cmd = new QPushButton(tr("Exit"));
  PlaceControls();
  NameControls();
}

void frmCam::PlaceControls() {
  constexpr int kLetters = 48;
  const auto addRow = [](QGridLayout* grid, QLabel* picture, QLabel* text) {
    const int row = grid->rowCount();
    grid->addWidget(picture, row, 0);
    grid->addWidget(text, row, 1);
    grid->setColumnStretch(1, 1);
  };
  auto* report = new QGridLayout(fra1);
  const std::array<QLabel*, 3> texts{lblSq, lblAC, lblMap};
  for (std::size_t i = 0; i < texts.size(); ++i) addRow(report, imgWarn[i], texts[i]);
  auto* legend = new QGridLayout(fra);
  for (std::size_t i = 0; i < lbl.size(); ++i) addRow(legend, imgVer[i], lbl[i]);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(cmd);
  auto* whole = new QVBoxLayout(this);
  whole->addWidget(fra1);
  whole->addWidget(fra);
  whole->addStretch();
  whole->addLayout(buttons);
  fra1->setMinimumWidth(fontMetrics().averageCharWidth() * kLetters);
}

void frmCam::NameControls() {
  fra1->setObjectName(QStringLiteral("fra1"));
  fra->setObjectName(QStringLiteral("fra"));
  Describe(lblSq, "lblSq", tr("Squadrons"), {});
  Describe(lblAC, "lblAC", tr("Aircraft"), {});
  Describe(lblMap, "lblMap", tr("Map"), {});
  for (std::size_t i = 0; i < imgWarn.size(); ++i) {
    imgWarn[i]->setObjectName(QStringLiteral("imgWarn(%1)").arg(i));
    imgWarn[i]->setAccessibleName(tr("Warning"));
    imgWarn[i]->setToolTip(tr("Click here to see warning message"));
  }
  for (std::size_t i = 0; i < lbl.size(); ++i) {
    lbl[i]->setObjectName(QStringLiteral("lbl(%1)").arg(i));
    imgVer[i]->setObjectName(QStringLiteral("imgVer(%1)").arg(i));
  }
  Describe(cmd, "cmd", tr("Exit"), {});
}

}  // namespace rws
