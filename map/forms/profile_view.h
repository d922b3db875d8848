#pragma once

#include <QWidget>
#include <optional>
#include <vector>

#include "map/forms/profile_painter.h"

namespace rws {

/** The selected flight from the side, with others to compare, and a cursor at a minute that a
    click, a drag or the arrow keys move. Minutes count from the mission's start; routes are indexes
    in the scene. */
class ProfileView : public QWidget {
  Q_OBJECT

 public:
  explicit ProfileView(QWidget* parent = nullptr);

  /** Shows flights. What `from` refers to must last until the next call or `Clear`. A route that is
      not there is left out. */
  void Show(const MapTextSources& from, std::optional<std::size_t> selected,
            const std::vector<std::size_t>& compared);
  /** Shows nothing. */
  void Clear();

  ProfileAxis Axis() const { return picture_.Axis; }
  void SetAxis(ProfileAxis axis);

  std::optional<double> Minute() const { return minute_; }
  /** Moves the cursor without a signal; none takes it away. */
  void SetMinute(std::optional<double> minute);

  const ProfilePicture& Picture() const { return picture_; }
  /** Where things are at the widget's size. */
  ProfileScale Scale() const;

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 Q_SIGNALS:
  /** The user has moved the cursor. */
  void MinuteChosen(double minute);
  /** A waypoint's mark was clicked; `point` is that of the route. */
  void PointChosen(std::size_t route, std::size_t point);

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void Rebuild();
  void PlaceCursor();
  void Choose(std::optional<double> minute);
  double LastOfAll() const;
  /** The minute that a place of the picture stands for. */
  std::optional<double> MinuteAtX(double x) const;
  QString TipAt(QPointF at) const;

  std::optional<MapTextSources> from_;
  std::optional<std::size_t> selected_;
  std::vector<std::size_t> routes_;
  std::optional<double> minute_;
  ProfilePicture picture_;
};

}  // namespace rws
