#pragma once

#include <QPainter>
#include <QPalette>
#include <QString>
#include <optional>
#include <vector>

#include "map/profile.h"

namespace rws {

/** A flight in the picture. */
struct ProfileLine {
  ProfileSeries Series;
  QString Name;
  std::uint8_t Army = 0;
  bool IsSelected = false;
  /** Where it is at the minute shown: its place on the axis, and its height where it is there. */
  std::optional<double> Place, Altitude;
};

/** The side view of some flights, ready to be painted. */
struct ProfilePicture {
  std::vector<ProfileLine> Lines;  // the selected one last, above the others
  ProfileAxis Axis = ProfileAxis::Distance;
  bool Metric = true;
  std::string Time;  // of the mission's start
  QString Note;      // a sentence below the line of names
};

/** Where values are in a picture of some size. Pixels are those of the painter. */
struct ProfileScale {
  QRectF Plot;
  double Last = 1, Lowest = 0, Highest = 1, Fastest = 1;

  double ToX(double at) const { return Plot.left() + Plot.width() * Part(at, 0, Last); }
  double ToY(double altitude) const {
    return Plot.bottom() - Plot.height() * Part(altitude, Lowest, Highest);
  }
  double ToSpeedY(double speed) const {
    return Plot.bottom() - Plot.height() * Part(speed, 0, Fastest);
  }
  /** The value at a pixel, within the axis. */
  double AtX(double x) const;

 private:
  static double Part(double value, double low, double high);
};

ProfileScale ScaleOf(const ProfilePicture& picture, const QRectF& within,
                     const QFontMetricsF& letters);

/** Paints into what the scale was made for, with the colours of a palette. */
void PaintProfile(QPainter& painter, const ProfilePicture& picture, const ProfileScale& scale,
                  const QPalette& colors);

/** The mark under a place: indexes of a line and of its marks, the selected line's first. */
struct ProfileHit {
  std::size_t Line = 0, Mark = 0;
};
std::optional<ProfileHit> MarkAt(const ProfilePicture& picture, const ProfileScale& scale,
                                 QPointF at, double tolerance);

}  // namespace rws
