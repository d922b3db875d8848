#include <QApplication>
#include <QContextMenuEvent>
#include <QFontMetricsF>
#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

#include "map/forms/map_canvas.h"
#include "map/forms/map_colors.h"
#include "map/forms/map_view.h"
#include "map/map_units.h"
#include "mission/home_base_values.h"

namespace rws {

namespace {

constexpr double kHandleReach = 7;

bool IsLockedPoint(const RoutePoint& point) {
  return point.Shape == WaypointShape::TakeOff || point.Shape == WaypointShape::Landing;
}

}  // namespace

bool MapView::ShowToolTip(const QHelpEvent& event) {
  const MapHit hit = HitAtPixel(event.pos());
  const QString text = Describe && hit.Is != MapHit::Nothing ? Describe(hit) : QString();
  QToolTip::showText(event.globalPos(), text, this);
  return true;
}

void MapView::wheelEvent(QWheelEvent* event) {
  constexpr double kStep = 1.25, kDegreesOfStep = 120;
  const double steps = event->angleDelta().y() / kDegreesOfStep;
  if (steps == 0) return;
  fit_ = Fit::None;
  Look(ZoomedAt(shown_.Projection, {event->position().x(), event->position().y()},
                std::pow(kStep, steps)));
  event->accept();
}

void MapView::contextMenuEvent(QContextMenuEvent* event) {
  MapHit hit = HitAtPixel(event->pos());
  QPointF at = event->pos();
  if (event->reason() == QContextMenuEvent::Keyboard) {
    hit = SelectedHit();
    at = QRectF(rect()).center();
    if (hit.Is == MapHit::Waypoint && SelectedRoute()->Points[hit.Point].HasPlace) {
      const ScreenPoint place = shown_.Projection.ToScreen(SelectedRoute()->Points[hit.Point].At);
      if (rect().contains(QPointF(place.X, place.Y).toPoint())) at = {place.X, place.Y};
    }
  }
  Q_EMIT ContextAsked(PlaceAt(at), hit, mapToGlobal(at.toPoint()));
}

void MapView::mousePressEvent(QMouseEvent* event) {
  CancelGesture();
  pressed_ = last_ = event->position();
  pressedWith_ = event->modifiers();
  if (event->button() == Qt::MiddleButton) {
    gesture_ = Gesture::Pan;
  } else if (event->button() == Qt::LeftButton) {
    gesture_ = Gesture::Pressed;
    wanted_ = GestureFor(pressed_, pressedWith_);
  }
}

void MapView::mouseMoveEvent(QMouseEvent* event) {
  const QPointF at = event->position();
  if (gesture_ == Gesture::Pressed &&
      (at - pressed_).manhattanLength() >= QApplication::startDragDistance())
    Begin(at);
  if (gesture_ == Gesture::None) ShowCursor(at);
  if (gesture_ > Gesture::Pressed) Follow(at);
  Q_EMIT Pointed(PlaceAt(at), HitAtPixel(at));
}

void MapView::mouseReleaseEvent(QMouseEvent* event) {
  if (gesture_ == Gesture::Pressed && event->button() == Qt::LeftButton) {
    gesture_ = Gesture::None;
    Click(event->position(), event->modifiers());
    return;
  }
  if (gesture_ != Gesture::None) Finish();
  ShowCursor(event->position());
}

void MapView::mouseDoubleClickEvent(QMouseEvent* event) {
  const MapHit hit = HitAtPixel(event->position());
  if (event->button() != Qt::LeftButton || hit.Is != MapHit::Waypoint) return;
  if (shown_.Selection.Route != hit.Index) ClickPoint(hit, false);
  Q_EMIT WaypointOpened(hit.Point);
}

/** What a drag from a place would do. Only what is selected is moved, so that nobody moves a thing
    who meant to move the map. */
MapView::Gesture MapView::GestureFor(QPointF at, Qt::KeyboardModifiers modifiers) const {
  if (rulerArmed_) return Gesture::Ruler;
  const MapHit hit = HitAtPixel(at);
  const auto& points = shown_.Selection.Points;
  if (hit.Is == MapHit::Waypoint && shown_.Selection.Route == hit.Index &&
      std::binary_search(points.begin(), points.end(), hit.Point))
    return Gesture::Points;
  const Gesture base = BaseGestureAt(at);
  if (base != Gesture::None) return base;
  return modifiers & Qt::ShiftModifier ? Gesture::Band : Gesture::Pan;
}

MapView::Gesture MapView::BaseGestureAt(QPointF at) const {
  const MapBase* base = SelectedBase();
  if (!base || !shown_.Layers[MapLayer::HomeBases]) return Gesture::None;
  const double reach = kHandleReach * shown_.Projection.MetresPerPixel;
  const double distance = DistanceOf(PlaceAt(at), base->At);
  if (distance <= reach) return Gesture::BaseCentre;
  return std::fabs(distance - base->Radius) <= reach ? Gesture::BaseRim : Gesture::None;
}

/** Says why not, if not. */
bool MapView::Allow(Gesture gesture) {
  const bool isBase = gesture == Gesture::BaseCentre || gesture == Gesture::BaseRim;
  if (gesture != Gesture::Points && !isBase) return true;
  QString why;
  if (ReadOnly || (isBase && !MayMoveBases))
    why = isBase && !ReadOnly ? QStringLiteral("Home bases cannot be moved here.")
                              : QStringLiteral("Nothing can be moved here.");
  else if (!isBase && Movable().empty())
    why = QStringLiteral("Take-off and landing points are locked. Unlock them to move them.");
  if (why.isEmpty()) return true;
  Q_EMIT Refused(why);
  return false;
}

/** The selected points that may be moved. */
std::vector<std::size_t> MapView::Movable() const {
  const MapRoute* route = SelectedRoute();
  if (!route) return {};
  std::vector<std::size_t> points = shown_.Selection.Points;
  std::erase_if(points, [&](std::size_t i) {
    return !route->Points[i].HasPlace || (!UnlockEnds && IsLockedPoint(route->Points[i]));
  });
  return points;
}

void MapView::Begin(QPointF at) {
  gesture_ = Allow(wanted_) ? wanted_ : Gesture::None;
  if (gesture_ == Gesture::Ruler) ruler_ = {PlaceAt(pressed_), PlaceAt(at)};
  if (gesture_ == Gesture::Pan) setCursor(Qt::ClosedHandCursor);
}

void MapView::Follow(QPointF at) {
  const MapPoint from = PlaceAt(pressed_), to = PlaceAt(at);
  const MapBase* base = SelectedBase();
  // What is seen must not jump when something was moved in it.
  if (gesture_ != Gesture::Ruler) fit_ = Fit::None;
  switch (gesture_) {
    case Gesture::Pan: {
      double dx = at.x() - last_.x(), dy = at.y() - last_.y();
      Look(PannedByPixels(shown_.Projection, dx, dy, devicePixelRatioF()));
      last_ += QPointF(dx, dy);
      return;
    }
    case Gesture::Points:
      preview_.East = to.X - from.X;
      preview_.North = to.Y - from.Y;
      preview_.Points = Movable();
      break;
    case Gesture::BaseCentre:
      preview_.Base = *base;
      preview_.Base->At = {base->At.X + to.X - from.X, base->At.Y + to.Y - from.Y};
      break;
    case Gesture::BaseRim:
      preview_.Base = *base;
      preview_.Base->Radius = std::clamp(std::round(DistanceOf(base->At, to)), double(kLeastRadius),
                                         double(kLargestRadius));
      break;
    case Gesture::Ruler:
      ruler_->second = to;
      break;
    default:
      break;
  }
  last_ = at;
  update();
}

void MapView::Finish() {
  const MapPreview wanted = preview_;
  const Gesture finished = gesture_;
  // Before the signals: who hears them may show a new model.
  gesture_ = Gesture::None;
  preview_ = {};
  update();
  const MapBase* base = SelectedBase();
  if (finished == Gesture::Points && !wanted.Points.empty())
    Q_EMIT PointsMoved(wanted.Points, wanted.East, wanted.North);
  else if (finished == Gesture::BaseCentre && base && wanted.Base)
    Q_EMIT BaseMoved(base->Base, wanted.Base->At);
  else if (finished == Gesture::BaseRim && base && wanted.Base)
    Q_EMIT BaseResized(base->Base, wanted.Base->Radius);
  else if (finished == Gesture::Band)
    TakeBand(last_);
  else if (finished == Gesture::Ruler)
    rulerArmed_ = false;
}

void MapView::CancelGesture() {
  gesture_ = Gesture::None;
  preview_ = {};
  update();
}

void MapView::Click(QPointF at, Qt::KeyboardModifiers modifiers) {
  if (ruler_) {
    ruler_.reset();
    update();
  }
  const bool adds = modifiers & (Qt::ControlModifier | Qt::ShiftModifier);
  const MapHit hit = HitAtPixel(at);
  switch (hit.Is) {
    case MapHit::Waypoint:
      ClickPoint(hit, adds);
      return;
    case MapHit::Route:
      if (shown_.Selection.Route != hit.Index) Select(hit.Index, {});
      return;
    case MapHit::BaseCentre:
    case MapHit::BaseRim:
      SelectBase(hit.Index);
      return;
    default:
      if (!adds) ClearSelection();
  }
}

void MapView::ClickPoint(const MapHit& hit, bool adds) {
  std::vector<std::size_t> points{hit.Point};
  if (adds && shown_.Selection.Route == hit.Index) {
    points = shown_.Selection.Points;
    const auto place = std::lower_bound(points.begin(), points.end(), hit.Point);
    if (place != points.end() && *place == hit.Point)
      points.erase(place);
    else
      points.insert(place, hit.Point);
  }
  Select(hit.Index, points);
}

/** Selects the points of the selected route that lie within the band. */
void MapView::TakeBand(QPointF to) {
  const MapRoute* route = SelectedRoute();
  if (!route) return;
  MapBounds band;
  band.Add(PlaceAt(pressed_));
  band.Add(PlaceAt(to));
  std::vector<std::size_t> points = shown_.Selection.Points;
  for (std::size_t i = 0; i < route->Points.size(); ++i)
    if (route->Points[i].HasPlace && band.Holds(route->Points[i].At)) points.push_back(i);
  std::sort(points.begin(), points.end());
  points.erase(std::unique(points.begin(), points.end()), points.end());
  Select(*shown_.Selection.Route, points);
}

void MapView::ShowCursor(QPointF at) {
  switch (GestureFor(at, {})) {
    case Gesture::Ruler:
      setCursor(Qt::CrossCursor);
      return;
    case Gesture::Points:
    case Gesture::BaseCentre:
      setCursor(ReadOnly ? Qt::ArrowCursor : Qt::SizeAllCursor);
      return;
    case Gesture::BaseRim:
      setCursor(ReadOnly || !MayMoveBases ? Qt::ArrowCursor : Qt::SizeFDiagCursor);
      return;
    default:
      unsetCursor();
  }
}

void MapView::BeginRuler() {
  CancelGesture();
  rulerArmed_ = true;
  setCursor(Qt::CrossCursor);
}

/** That of the selected point, or the last one that the flight has. */
double MapView::RulerSpeed() const {
  const MapRoute* route = SelectedRoute();
  if (!route || route->Points.empty()) return 0;
  const auto& points = shown_.Selection.Points;
  const double speed = points.empty() ? 0 : SpeedTo(*route, points.back());
  return speed > 0 ? speed : SpeedTo(*route, route->Points.size() - 1);
}

QString MapView::RulerText() const {
  if (!ruler_) return {};
  const double metres = DistanceOf(ruler_->first, ruler_->second);
  std::string text = DistanceText(metres, shown_.Metric) + ", " +
                     HeadingText(HeadingOf(ruler_->first, ruler_->second));
  const double speed = RulerSpeed();
  constexpr double kPerMinute = 1000.0 / 60;
  if (speed > 0)
    text += ", " + MinutesText(metres / (speed * kPerMinute)) + " at " +
            SpeedText(speed, shown_.Metric);
  return QString::fromStdString(text);
}

void MapView::PaintRuler(QPainter& painter) {
  constexpr double kMark = 4, kBeside = 12;
  MapCanvas canvas(painter, shown_);
  for (const auto& pen : {QPen(GroundColor(shown_.Dark), 5), QPen(InkColor(shown_.Dark), 1.5)}) {
    painter.setPen(pen);
    canvas.Line(ruler_->first, ruler_->second);
  }
  painter.setBrush(GroundColor(shown_.Dark));
  for (const MapPoint end : {ruler_->first, ruler_->second})
    if (canvas.Sees(end)) painter.drawEllipse(canvas.At(end), kMark, kMark);
  if (!canvas.Sees(ruler_->second)) return;
  const QString text = RulerText();
  const QFontMetricsF font(painter.font());
  QPointF at = canvas.At(ruler_->second) + QPointF(kBeside, -kBeside);
  at.setX(std::clamp(at.x(), 4.0, std::max(4.0, width() - font.horizontalAdvance(text) - 4)));
  at.setY(std::clamp(at.y(), font.height(), std::max(font.height(), height() - 4.0)));
  canvas.Text(at, text, InkColor(shown_.Dark));
}

void MapView::PaintGesture(QPainter& painter) {
  painter.setRenderHint(QPainter::Antialiasing);
  if (ruler_) PaintRuler(painter);
  if (gesture_ != Gesture::Band) return;
  QColor fill = palette().color(QPalette::Highlight);
  painter.setPen(QPen(fill, 1));
  fill.setAlphaF(0.2F);
  painter.setBrush(fill);
  painter.drawRect(QRectF(pressed_, last_).normalized());
}

}  // namespace rws
