#include "map/forms/profile_painter.h"

#include <QCoreApplication>
#include <QPainterPath>
#include <algorithm>
#include <array>
#include <cmath>

#include "map/forms/map_colors.h"

namespace rws {

namespace {

constexpr double kMark = 4.5, kStrong = 2.2, kThin = 1.2;

QString Text(const char* text) { return QCoreApplication::translate("ProfileView", text); }

bool IsDark(const QPalette& colors) { return colors.color(QPalette::Base).lightness() < 128; }

/** Flights of one army are told apart by their pattern, the selected one is a whole line. */
Qt::PenStyle PatternOf(std::size_t line, bool isSelected) {
  constexpr std::array<Qt::PenStyle, 4> kPatterns{Qt::DashLine, Qt::DotLine, Qt::DashDotLine,
                                                  Qt::DashDotDotLine};
  return isSelected ? Qt::SolidLine : kPatterns[line % kPatterns.size()];
}

double TopOf(double highest, double least) {
  return std::isfinite(highest) && highest > least ? highest * 1.08 : least;
}

/** What one painting needs at hand. */
class Painting {
 public:
  Painting(QPainter& painter, const ProfilePicture& picture, const ProfileScale& scale,
           const QPalette& colors)
      : painter_(painter),
        picture_(picture),
        scale_(scale),
        colors_(colors),
        letters_(painter.fontMetrics()),
        text_(colors.color(QPalette::Text)),
        faint_(Mix(text_, colors.color(QPalette::Base), 0.22)),
        speed_(Mix(text_, colors.color(QPalette::Base), 0.65)) {}

  void Paint() {
    painter_.setRenderHint(QPainter::Antialiasing);
    PaintNames();
    if (picture_.Lines.empty()) return;
    PaintAxes();
    painter_.save();
    painter_.setClipRect(scale_.Plot.adjusted(-kMark, -kMark, kMark, kMark));
    for (std::size_t i = 0; i < picture_.Lines.size(); ++i) PaintLine(i);
    painter_.restore();
    if (picture_.Lines.back().IsSelected) PaintLabels(picture_.Lines.back());
    PaintCursor();
  }

 private:
  static QColor Mix(const QColor& a, const QColor& b, double part) {
    return QColor::fromRgbF(float(a.redF() * part + b.redF() * (1 - part)),
                            float(a.greenF() * part + b.greenF() * (1 - part)),
                            float(a.blueF() * part + b.blueF() * (1 - part)));
  }

  QColor ColorOf(const ProfileLine& line) const { return ArmyColor(line.Army, IsDark(colors_)); }

  int MostSteps(double pixels, double each) const {
    return std::max(1, static_cast<int>(pixels / each));
  }

  void PaintAxes() {
    const QRectF& plot = scale_.Plot;
    const double line = letters_.height();
    painter_.setPen(QPen(faint_, 1));
    painter_.drawRect(plot);
    const auto ticks =
        picture_.Axis == ProfileAxis::Time
            ? MinuteTicks(scale_.Last, MostSteps(plot.width(), line * 4.5), picture_.Time)
            : DistanceTicks(scale_.Last, MostSteps(plot.width(), line * 4), picture_.Metric);
    for (const auto& tick : ticks) {
      const double x = scale_.ToX(tick.At);
      Line({x, plot.top()}, {x, plot.bottom()}, faint_);
      Write({x - line * 3, plot.bottom() + 2, line * 6, line}, Qt::AlignHCenter, tick.Text, text_);
    }
    const int steps = MostSteps(plot.height(), line * 1.8);
    for (const auto& tick : HeightTicks(scale_.Highest, steps, picture_.Metric)) {
      const double y = scale_.ToY(tick.At);
      Line({plot.left(), y}, {plot.right(), y}, faint_);
      Write({0, y - line / 2, plot.left() - 5, line}, Qt::AlignRight, tick.Text, text_);
    }
    PaintUnits();
    if (!HasSpeed()) return;
    for (const auto& tick : SpeedTicks(scale_.Fastest, steps, picture_.Metric)) {
      const double y = scale_.ToSpeedY(tick.At);
      Line({plot.right(), y}, {plot.right() + 3, y}, speed_);
      Write({plot.right() + 6, y - line / 2, line * 4, line}, Qt::AlignLeft, tick.Text, speed_);
    }
  }

  void PaintUnits() {
    const QRectF& plot = scale_.Plot;
    const double line = letters_.height(), above = plot.top() - line * 1.1;
    const bool metric = picture_.Metric;
    Write({0, above, plot.left() - 5, line}, Qt::AlignRight, metric ? "m" : "feet", text_);
    if (HasSpeed())
      Write({plot.right() + 6, above, line * 4, line}, Qt::AlignLeft, metric ? "km/h" : "mph",
            speed_);
    const char* unit = picture_.Axis == ProfileAxis::Time ? "" : metric ? "km" : "miles";
    // Beside the last number.
    Write({plot.right(), plot.bottom() + 2, plot.left() - 3, line}, Qt::AlignRight, unit, text_);
  }

  bool HasSpeed() const { return picture_.Lines.back().IsSelected; }

  /** The names with a piece of their lines, and below them what is missing. */
  void PaintNames() {
    const double line = letters_.height(), sample = line * 1.8;
    double x = scale_.Plot.left();
    const auto add = [&](const QString& name, const QPen& pen) {
      const double width = letters_.horizontalAdvance(name);
      if (x + sample + width > scale_.Plot.right() + line * 3) return;
      painter_.setPen(pen);
      painter_.drawLine(QPointF(x, line * 0.65), QPointF(x + sample, line * 0.65));
      Draw({x + sample + 4, line * 0.15, width + 2, line}, Qt::AlignLeft, name, text_);
      x += sample + width + line;
    };
    for (std::size_t i = picture_.Lines.size(); i-- > 0;) {
      const ProfileLine& each = picture_.Lines[i];
      add(each.Name, PenOf(i));
      if (each.IsSelected) add(Text("speed"), QPen(speed_, kThin, Qt::DashLine));
    }
    Draw({scale_.Plot.left(), line * 1.2, scale_.Plot.width(), line}, Qt::AlignLeft, picture_.Note,
         text_);
  }

  QPen PenOf(std::size_t index) const {
    const ProfileLine& line = picture_.Lines[index];
    return {ColorOf(line), line.IsSelected ? kStrong : kThin + 0.2,
            PatternOf(index, line.IsSelected)};
  }

  void PaintLine(std::size_t index) {
    const ProfileLine& line = picture_.Lines[index];
    const auto& corners = line.Series.Corners;
    if (corners.empty()) return;
    QPolygonF heights;
    for (const auto& corner : corners)
      heights << QPointF(scale_.ToX(corner.At), scale_.ToY(corner.Altitude));
    if (line.IsSelected) {
      PaintSpeed(corners);
      QPolygonF area = heights;
      area << QPointF(heights.last().x(), scale_.Plot.bottom())
           << QPointF(heights.first().x(), scale_.Plot.bottom());
      QColor fill = ColorOf(line);
      fill.setAlphaF(0.12F);
      painter_.setPen(Qt::NoPen);
      painter_.setBrush(fill);
      painter_.drawPolygon(area);
    }
    painter_.setBrush(Qt::NoBrush);
    painter_.setPen(PenOf(index));
    painter_.drawPolyline(heights);
    for (const auto& mark : line.Series.Marks) PaintMark(mark, line);
  }

  /** One step for each leg: it is flown at the speed of its end. */
  void PaintSpeed(const std::vector<ProfileCorner>& corners) {
    painter_.setPen(QPen(speed_, kThin, Qt::DashLine));
    painter_.setBrush(Qt::NoBrush);
    QPolygonF steps;
    for (std::size_t i = 1; i < corners.size(); ++i) {
      const double y = scale_.ToSpeedY(corners[i].Speed);
      steps << QPointF(scale_.ToX(corners[i - 1].At), y) << QPointF(scale_.ToX(corners[i].At), y);
    }
    painter_.drawPolyline(steps);
  }

  /** Take-off points up, landing down, an attack is a square and all else round. */
  void PaintMark(const ProfileMark& mark, const ProfileLine& line) {
    const QPointF at(scale_.ToX(mark.At), scale_.ToY(mark.Altitude));
    const double size = line.IsSelected ? kMark : kMark * 0.6;
    painter_.setPen(QPen(ColorOf(line), kThin));
    painter_.setBrush(line.IsSelected ? colors_.color(QPalette::Base) : ColorOf(line));
    const auto triangle = [&](double tip) {
      painter_.drawPolygon(QPolygonF(
          {{at.x() - size, at.y() + tip}, {at.x() + size, at.y() + tip}, {at.x(), at.y() - tip}}));
    };
    if (mark.Shape == WaypointShape::TakeOff) return triangle(size);
    if (mark.Shape == WaypointShape::Landing) return triangle(-size);
    if (mark.Shape == WaypointShape::Attack)
      return painter_.drawRect(QRectF(at.x() - size, at.y() - size, size * 2, size * 2));
    painter_.drawEllipse(at, size, size);
  }

  /** Numbers and times above the marks; one that would cover another is left out. */
  void PaintLabels(const ProfileLine& line) {
    std::vector<QRectF> taken;
    const auto place = [&](const ProfileMark& mark, const QString& text) {
      const QSizeF size(letters_.horizontalAdvance(text) + 4, letters_.height());
      const QPointF at(scale_.ToX(mark.At), scale_.ToY(mark.Altitude));
      QRectF box(QPointF(at.x() - size.width() / 2, at.y() - kMark - 2 - size.height()), size);
      box.moveLeft(std::clamp(box.left(), scale_.Plot.left(),
                              std::max(scale_.Plot.left(), scale_.Plot.right() - size.width())));
      const auto covers = [&](const QRectF& other) { return other.intersects(box); };
      if (std::any_of(taken.begin(), taken.end(), covers)) return false;
      taken.push_back(box);
      Draw(box, Qt::AlignHCenter, text, text_);
      return true;
    };
    for (const auto& mark : line.Series.Marks) {
      const QString number = QString::number(mark.Point);
      const bool isPlaced =
          !mark.Clock.empty() &&
          place(mark, number + QStringLiteral("  ") + QString::fromStdString(mark.Clock));
      if (!isPlaced) place(mark, number);
    }
  }

  /** On the way each flight has a place of its own, in the time all have one. */
  void PaintCursor() {
    const bool isTime = picture_.Axis == ProfileAxis::Time;
    for (const auto& line : picture_.Lines) {
      if (!line.Place || !(line.IsSelected || isTime)) continue;
      const double x = scale_.ToX(*line.Place);
      Line({x, scale_.Plot.top()}, {x, scale_.Plot.bottom()}, colors_.color(QPalette::Highlight),
           1.6);
    }
    for (const auto& line : picture_.Lines) {
      if (!line.Place || !line.Altitude) continue;
      painter_.setPen(QPen(text_, kThin));
      painter_.setBrush(ColorOf(line));
      painter_.drawEllipse(QPointF(scale_.ToX(*line.Place), scale_.ToY(*line.Altitude)), kMark,
                           kMark);
    }
  }

  void Line(QPointF from, QPointF to, const QColor& color, double width = 1) {
    painter_.setPen(QPen(color, width));
    painter_.drawLine(from, to);
  }

  void Write(const QRectF& box, Qt::Alignment align, const std::string& text, const QColor& color) {
    Draw(box, align, QString::fromStdString(text), color);
  }
  void Draw(const QRectF& box, Qt::Alignment align, const QString& text, const QColor& color) {
    painter_.setPen(color);
    painter_.drawText(box, int(align | Qt::AlignVCenter) | Qt::TextDontClip, text);
  }

  QPainter& painter_;
  const ProfilePicture& picture_;
  const ProfileScale& scale_;
  const QPalette& colors_;
  const QFontMetricsF letters_;
  const QColor text_, faint_, speed_;
};

}  // namespace

double ProfileScale::Part(double value, double low, double high) {
  const double part = (value - low) / (high - low);
  return std::isfinite(part) ? std::clamp(part, 0.0, 1.0) : 0;
}

double ProfileScale::AtX(double x) const {
  if (Plot.width() <= 0) return 0;
  return std::clamp((x - Plot.left()) / Plot.width(), 0.0, 1.0) * Last;
}

ProfileScale ScaleOf(const ProfilePicture& picture, const QRectF& within,
                     const QFontMetricsF& letters) {
  constexpr double kLeastHeight = 100, kLeastSpeed = 100;
  const double line = letters.height();
  const double side = letters.horizontalAdvance(QStringLiteral("00000")) + 12;
  ProfileScale scale;
  // Above: names, a note, the labels of the highest marks.
  scale.Plot = within.adjusted(side, line * 3.4, -side, -line * 1.4);
  double last = 0, highest = 0, fastest = 0;
  for (const auto& each : picture.Lines)
    for (const auto& corner : each.Series.Corners) {
      last = std::max(last, corner.At);
      highest = std::max(highest, corner.Altitude);
      scale.Lowest = std::min(scale.Lowest, corner.Altitude);
      if (each.IsSelected) fastest = std::max(fastest, corner.Speed);
    }
  scale.Last = std::isfinite(last) && last > 0 ? last : 1;
  scale.Highest = TopOf(highest, kLeastHeight);
  scale.Fastest = TopOf(fastest, kLeastSpeed);
  return scale;
}

void PaintProfile(QPainter& painter, const ProfilePicture& picture, const ProfileScale& scale,
                  const QPalette& colors) {
  if (scale.Plot.width() < 1 || scale.Plot.height() < 1) return;
  Painting(painter, picture, scale, colors).Paint();
}

std::optional<ProfileHit> MarkAt(const ProfilePicture& picture, const ProfileScale& scale,
                                 QPointF at, double tolerance) {
  for (std::size_t i = picture.Lines.size(); i-- > 0;) {
    std::optional<ProfileHit> hit;
    double nearest = tolerance;
    const auto& marks = picture.Lines[i].Series.Marks;
    for (std::size_t k = 0; k < marks.size(); ++k) {
      const double distance =
          std::hypot(scale.ToX(marks[k].At) - at.x(), scale.ToY(marks[k].Altitude) - at.y());
      if (distance > nearest) continue;
      nearest = distance;
      hit = ProfileHit{i, k};
    }
    if (hit) return hit;
  }
  return {};
}

}  // namespace rws
