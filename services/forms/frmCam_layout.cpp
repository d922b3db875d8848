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
  setWindowTitle(tr("Mission Compatibility"));
  fra1 = Named(new QGroupBox(tr("Mission Compatibility")), "fra1");
  fra = Named(new QGroupBox(tr("IL2 series installed")), "fra");
  lblSq = Named(new QLabel(tr("Label1")), "lblSq", tr("Squadrons"));
  lblAC = Named(new QLabel(tr("Label1")), "lblAC", tr("Aircraft"));
  lblMap = Named(new QLabel(tr("Label1")), "lblMap", tr("Map"));
  lbl = {new QLabel(tr("RWS Version Override")), new QLabel(tr("FB + AEP + PF")),
         new QLabel(tr("Pacific Fighters")),
         new QLabel(tr("Forgotton Battles + Ace Expansion Pack")),
         new QLabel(tr("Forgotten Battles"))};
  for (auto& button : imgWarn) {
    button = new QToolButton;
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::StrongFocus);
    button->setIcon(style()->standardIcon(QStyle::SP_MessageBoxWarning));
    const int size = style()->pixelMetric(QStyle::PM_SmallIconSize);
    button->setIconSize({size, size});
  }
  // Whether a game is installed is known to nobody yet.
  for (auto& picture : imgVer) picture = Picture(*this, QStyle::SP_MessageBoxQuestion);
  cmd = Button("cmd", tr("Exit"));
  PlaceControls();
  NameControls();
}

void frmCam::PlaceControls() {
  constexpr int kLetters = 48;
  const auto addRow = [](QGridLayout* grid, QWidget* picture, QLabel* text) {
    const int row = grid->rowCount();
    grid->addWidget(picture, row, 0);
    grid->addWidget(text, row, 1);
    grid->setColumnStretch(1, 1);
  };
  auto* report = new QGridLayout(fra1);
  const std::array<QLabel*, 3> texts{lblSq, lblAC, lblMap};
  for (std::size_t i = 0; i < texts.size(); ++i) {
    addRow(report, imgWarn[i], texts[i]);
    texts[i]->setTextFormat(Qt::PlainText);
    // Rows without a warning stand in line with the others.
    QSizePolicy policy = imgWarn[i]->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    imgWarn[i]->setSizePolicy(policy);
  }
  auto* legend = new QGridLayout(fra);
  for (std::size_t i = 0; i < lbl.size(); ++i) addRow(legend, imgVer[i], lbl[i]);
  auto* whole = new QVBoxLayout(this);
  whole->addWidget(fra1);
  whole->addWidget(fra);
  whole->addStretch();
  whole->addLayout(ButtonRow({cmd}));
  TabOrder({imgWarn[0], imgWarn[1], imgWarn[2], cmd});
  fra1->setMinimumWidth(fontMetrics().averageCharWidth() * kLetters);
}

void frmCam::NameControls() {
  const std::array<QString, 3> rows{tr("Squadrons"), tr("Aircraft"), tr("Map")};
  for (std::size_t i = 0; i < imgWarn.size(); ++i) {
    imgWarn[i]->setAccessibleName(tr("Warning, %1").arg(rows[i]));
    imgWarn[i]->setToolTip(tr("Click here to see warning message"));
  }
  NameEach(imgWarn, "imgWarn");
  NameEach(imgVer, "imgVer");
  NameEach(lbl, "lbl");
}

}  // namespace rws
