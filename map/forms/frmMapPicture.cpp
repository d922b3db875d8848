#include "map/forms/frmMapPicture.h"

#include <QGridLayout>
#include <QVBoxLayout>

#include "controls/elided_label.h"
#include "controls/layouts.h"
#include "map/forms/map_picture_files.h"
#include "map/forms/pin_picture.h"
#include "platform/qt_text.h"
#include "services/faults.h"

namespace rws {

namespace {

constexpr double kUsualSide = 200;  // kilometres

QDoubleSpinBox* Kilometres(const QString& name, const QString& spoken, double least) {
  auto* box = new QDoubleSpinBox;
  box->setObjectName(name);
  box->setAccessibleName(spoken);
  box->setRange(least, 10'000);
  box->setDecimals(2);
  box->setSuffix(QObject::tr(" km"));
  return box;
}

}  // namespace

frmMapPicture::frmMapPicture(const Services& services, QWidget* parent)
    : Dialog(services, "frmMapPicture", parent) {
  Build();
  Connect();
}

void frmMapPicture::Build() {
  lblFile = Named(new ElidedLabel, "lblFile", tr("Picture"));
  lblFile->setTextFormat(Qt::PlainText);
  lblFault = Named(new QLabel, "lblFault", tr("What is wrong"));
  lblFault->setTextFormat(Qt::PlainText);
  lblFault->setWordWrap(true);
  lblFault->hide();
  cmd = {Button("cmd(0)", tr("C&hoose...")), Button("cmd(1)", tr("OK")),
         Button("cmd(2)", tr("Cancel"))};
  picture = Named(new PinPicture, "picture", tr("Picture with the two points"),
                  tr("Click to put the point that is chosen; the arrow keys move it"));
  sldOpacity = Named(new QSlider(Qt::Horizontal), "sldOpacity", tr("Opacity"),
                     tr("How much the picture covers the ground"));
  sldOpacity->setRange(10, 100);
  sldOpacity->setValue(100);
  auto* column = new QVBoxLayout(this);
  auto* file = new QHBoxLayout;
  file->addWidget(lblFile, 1);
  file->addWidget(cmd[0]);
  column->addLayout(file);
  column->addWidget(picture, 1);
  column->addWidget(BuildWays());
  auto* opacity = new QHBoxLayout;
  auto* label = new QLabel(tr("O&pacity:"));
  label->setBuddy(sldOpacity);
  opacity->addWidget(label);
  opacity->addWidget(sldOpacity, 1);
  column->addLayout(opacity);
  column->addWidget(lblFault);
  column->addLayout(ButtonRow({cmd[1], cmd[2]}));
  cmd[1]->setDefault(true);
}

QWidget* frmMapPicture::BuildWays() {
  auto* box = new QWidget;
  auto* grid = new QGridLayout(box);
  grid->setContentsMargins(0, 0, 0, 0);
  opt = {Named(new QRadioButton(tr("It shows the &whole map, of this size:")), "opt(0)",
               tr("It shows the whole map")),
         Named(new QRadioButton(tr("These &two points of it are at:")), "opt(1)",
               tr("Two points of it are told"))};
  grid->addWidget(opt[kWhole], 0, 0, 1, 2);
  grid->addWidget(opt[kPoints], 1, 0, 1, 2);
  const std::array<QString, 2> sizes{tr("Width"), tr("Height")}, axes{tr("x"), tr("y")};
  for (std::size_t i = 0; i < 2; ++i) {
    numSize[i] = Kilometres(QStringLiteral("numSize(%1)").arg(i), sizes[i] + tr(" of the map"), 1);
    numSize[i]->setValue(kUsualSide);
    grid->addWidget(numSize[i], 0, 2 + int(i));
  }
  for (std::size_t i = 0; i < 2; ++i) {
    optPoint[i] =
        Named(new QRadioButton(tr("Point &%1").arg(i + 1)), i ? "optPoint(1)" : "optPoint(0)",
              tr("Point %1").arg(i + 1), tr("A click into the picture puts this point"));
    auto* holder = new QWidget;
    auto* cell = new QVBoxLayout(holder);
    cell->setContentsMargins(fontMetrics().averageCharWidth() * 4, 0, 0, 0);
    cell->addWidget(optPoint[i]);
    // Two buttons of one parent would exclude those above as well.
    grid->addWidget(holder, 2 + int(i), 0, 1, 2);
    for (std::size_t k = 0; k < 2; ++k) {
      numPoint[i][k] = Kilometres(QStringLiteral("numPoint(%1)(%2)").arg(i).arg(k),
                                  tr("%1 of point %2").arg(axes[k]).arg(i + 1), -10'000);
      grid->addWidget(numPoint[i][k], 2 + int(i), 2 + int(k));
    }
  }
  grid->setColumnStretch(1, 1);
  return box;
}

void frmMapPicture::Connect() {
  On(cmd[0], &QPushButton::clicked, "frmMapPicture", [this] { Choose(); });
  On(cmd[1], &QPushButton::clicked, "frmMapPicture", [this] { accept(); });
  connect(cmd[2], &QPushButton::clicked, this, [this] { reject(); });
  for (auto* button : opt)
    On(button, &QRadioButton::toggled, "frmMapPicture", [this] { ShowWay(); });
  for (std::size_t i = 0; i < 2; ++i)
    On(optPoint[i], &QRadioButton::clicked, "frmMapPicture", [this, i] {
      optPoint[1 - i]->setChecked(false);
      optPoint[i]->setChecked(true);
      picture->SetCurrent(i);
    });
}

void frmMapPicture::LoadForm() {
  Load("frmMapPicture", [&] {
    opt[kWhole]->setChecked(true);
    optPoint[0]->setChecked(true);
    if (!Picture) return;
    const MapBounds& place = Picture->Place;
    sldOpacity->setValue(static_cast<int>(Picture->Opacity * 100 + 0.5));
    TakeFile(Picture->File);
    const bool isWhole = place.Left == 0 && place.Bottom == 0;
    opt[isWhole ? kWhole : kPoints]->setChecked(true);
    numSize[0]->setValue((place.Right - place.Left) / 1000);
    numSize[1]->setValue((place.Top - place.Bottom) / 1000);
    for (std::size_t i = 0; i < 2; ++i) {
      const QPointF pin = picture->Pins[i];
      numPoint[i][0]->setValue((place.Left + pin.x() * (place.Right - place.Left)) / 1000);
      numPoint[i][1]->setValue((place.Top - pin.y() * (place.Top - place.Bottom)) / 1000);
    }
  });
  setWindowTitle(tr("Picture for %1").arg(Map));
  if (file_.empty()) lblFile->setText(tr("No picture chosen"));
  ShowWay();
}

void frmMapPicture::ShowWay() {
  const bool points = opt[kPoints]->isChecked();
  for (auto* box : numSize) box->setEnabled(!points);
  for (std::size_t i = 0; i < 2; ++i) {
    optPoint[i]->setEnabled(points);
    for (auto* box : numPoint[i]) box->setEnabled(points);
  }
  picture->SetPinsShown(points);
}

void frmMapPicture::Choose() {
  const auto chosen =
      services_.Ask.OpenFiles({ToPath(tr("Picture for %1").arg(Map)),
                               "Pictures|*.png;*.jpg;*.jpeg;*.bmp;*.gif|All files|*.*", "", ""},
                              false);
  if (!chosen.empty()) TakeFile(chosen.front());
}

void frmMapPicture::TakeFile(const std::string& path) {
  QString fault;
  const QImage read = ReadMapPicture(services_, path, fault, &full_);
  lblFault->setVisible(read.isNull());
  lblFault->setText(fault);
  if (read.isNull() && !file_.empty()) return;
  file_ = path;
  lblFile->setText(FromPath(path));
  lblFile->setToolTip(FromPath(path));
  picture->SetPicture(read);
}

std::optional<MapBounds> frmMapPicture::Place() const {
  const auto metres = [](const QDoubleSpinBox* box) { return box->value() * 1000; };
  if (opt[kWhole]->isChecked()) return MapBounds{0, 0, metres(numSize[0]), metres(numSize[1])};
  std::array<PinnedPoint, 2> points;
  for (std::size_t i = 0; i < 2; ++i)
    points[i] = {picture->Pins[i].x() * full_.width(),
                 picture->Pins[i].y() * full_.height(),
                 {metres(numPoint[i][0]), metres(numPoint[i][1])}};
  return PlaceByPoints(points[0], points[1], full_.width(), full_.height());
}

void frmMapPicture::accept() {
  const auto place = Place();
  QString fault;
  if (picture->Picture().isNull()) fault = tr("Choose a picture first.");
  if (fault.isEmpty() && !place)
    fault = tr("The two points must lie apart both ways, and the picture must have north above.");
  // The list of pictures has a line for each, its parts parted by tabs.
  if (fault.isEmpty() && file_.find_first_of("\t\r\n") != std::string::npos)
    fault = tr("The name of the picture holds a tab or a line end: rename it first.");
  lblFault->setText(fault);
  lblFault->setVisible(!fault.isEmpty());
  if (!fault.isEmpty()) return;
  Picture = MapPicture{"", file_, *place, sldOpacity->value() / 100.0};
  Dialog::accept();
}

}  // namespace rws
