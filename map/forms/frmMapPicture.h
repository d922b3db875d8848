#pragma once

#include <QDoubleSpinBox>
#include <QImage>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <array>
#include <optional>

#include "controls/dialog.h"
#include "map/map_pictures.h"

namespace rws {

class PinPicture;

/** Asks for a picture that lies under a map, and where it lies: either it shows the whole map, of a
    size in kilometres, or two of its points and their places are told. */
class frmMapPicture : public Dialog {
  Q_OBJECT

 public:
  frmMapPicture(const Services& services, QWidget* parent);

  /** The name of the map, for the title; and the picture that it has, and then is to have. */
  QString Map;
  std::optional<MapPicture> Picture;

  void LoadForm();
  void accept() override;

  QLabel *lblFile, *lblFault;
  /** Choose, OK, Cancel. */
  std::array<QPushButton*, 3> cmd;
  enum Way : std::size_t { kWhole, kPoints };
  std::array<QRadioButton*, 2> opt;
  /** Width and height of the map in kilometres. */
  std::array<QDoubleSpinBox*, 2> numSize;
  /** Of each of the two points x and y in kilometres. */
  std::array<std::array<QDoubleSpinBox*, 2>, 2> numPoint;
  std::array<QRadioButton*, 2> optPoint;
  PinPicture* picture;
  QSlider* sldOpacity;

 private:
  void Build();
  QWidget* BuildWays();
  void Connect();
  void Choose();
  void TakeFile(const std::string& path);
  void ShowWay();
  std::optional<MapBounds> Place() const;

  std::string file_;
  QSize full_;
};

}  // namespace rws
