#include <QKeyEvent>
#include <algorithm>
#include <numeric>

#include "map/forms/map_view.h"
#include "mission/home_base_values.h"

namespace rws {

void MapView::keyPressEvent(QKeyEvent* event) {
  if (!TakeKey(*event)) QWidget::keyPressEvent(event);
}

bool MapView::TakeKey(const QKeyEvent& event) {
  constexpr double kZoom = 1.5;
  const bool withCtrl = event.modifiers() & Qt::ControlModifier;
  const bool withShift = event.modifiers() & Qt::ShiftModifier;
  if (event.modifiers() & (Qt::AltModifier | Qt::MetaModifier)) return false;
  if (withCtrl && event.key() >= Qt::Key_A && event.key() <= Qt::Key_Z) {
    if (event.key() != Qt::Key_A) return false;
    SelectAll();
    return true;
  }
  switch (event.key()) {
    case Qt::Key_Plus:
    case Qt::Key_Equal:
      Zoom(kZoom);
      return true;
    case Qt::Key_Minus:
      Zoom(1 / kZoom);
      return true;
    case Qt::Key_F:
      withShift ? FitFlight() : FitMission();
      return true;
    case Qt::Key_M:
      if (!event.isAutoRepeat()) BeginRuler();
      return true;
    case Qt::Key_N:
    case Qt::Key_PageDown:
      withCtrl ? StepFlight(1) : Step(1);
      return true;
    case Qt::Key_P:
    case Qt::Key_PageUp:
      withCtrl ? StepFlight(-1) : Step(-1);
      return true;
    case Qt::Key_B:
      StepBase();
      return true;
    case Qt::Key_Escape:
      LeaveByKey();
      return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      if (shown_.Selection.Points.empty()) return false;
      Q_EMIT WaypointOpened(shown_.Selection.Points.back());
      return true;
    default:
      return TakeArrow(event);
  }
}

bool MapView::TakeArrow(const QKeyEvent& event) {
  constexpr double kFar = 100, kNear = 10, kPan = 80;
  MapPoint way;
  switch (event.key()) {
    case Qt::Key_Left:
      way.X = -1;
      break;
    case Qt::Key_Right:
      way.X = 1;
      break;
    case Qt::Key_Up:
      way.Y = 1;
      break;
    case Qt::Key_Down:
      way.Y = -1;
      break;
    default:
      return false;
  }
  const double metres = event.modifiers() & Qt::ShiftModifier ? kNear : kFar;
  const bool isSized = event.modifiers() & Qt::ControlModifier;
  const MapBase* base = SelectedBase();
  fit_ = Fit::None;
  if (!shown_.Selection.Points.empty()) {
    if (Allow(Gesture::Points)) Q_EMIT PointsMoved(Movable(), way.X * metres, way.Y * metres);
  } else if (base && isSized) {
    const double radius = base->Radius + (way.X + way.Y) * metres;
    if (Allow(Gesture::BaseRim))
      Q_EMIT BaseResized(base->Base,
                         std::clamp(radius, double(kLeastRadius), double(kLargestRadius)));
  } else if (base) {
    const MapPoint to{base->At.X + way.X * metres, base->At.Y + way.Y * metres};
    if (Allow(Gesture::BaseCentre)) Q_EMIT BaseMoved(base->Base, to);
  } else {
    double dx = -way.X * kPan, dy = way.Y * kPan;
    Look(PannedByPixels(shown_.Projection, dx, dy, devicePixelRatioF()));
  }
  return true;
}

/** Escape leaves what was begun last, at the end the selection. */
void MapView::LeaveByKey() {
  if (gesture_ != Gesture::None || rulerArmed_ || ruler_) {
    if (gesture_ == Gesture::Ruler || gesture_ == Gesture::None) ruler_.reset();
    rulerArmed_ = false;
    CancelGesture();
    unsetCursor();
    return;
  }
  ClearSelection();
}

/** The flight stays selected, but nothing of it. */
void MapView::ClearSelection() {
  auto& selection = shown_.Selection;
  if (selection.Points.empty() && !selection.Base) return;
  selection.Points.clear();
  selection.Base.reset();
  update();
  Announce();
  Q_EMIT PointsChosen({});
}

void MapView::Step(int by) {
  const MapRoute* route = SelectedRoute();
  if (!route || route->Points.empty()) return;
  const auto& points = shown_.Selection.Points;
  const auto last = static_cast<std::ptrdiff_t>(route->Points.size()) - 1;
  const std::ptrdiff_t next =
      points.empty()
          ? (by > 0 ? 0 : last)
          : std::clamp<std::ptrdiff_t>(static_cast<std::ptrdiff_t>(points.back()) + by, 0, last);
  const auto point = static_cast<std::size_t>(next);
  Select(*shown_.Selection.Route, {point});
  // Who heard of it may have shown another mission.
  route = SelectedRoute();
  if (route && point < route->Points.size() && route->Points[point].HasPlace)
    BringIntoView(route->Points[point].At);
}

void MapView::StepFlight(int by) {
  const auto count =
      shown_.Model ? static_cast<std::ptrdiff_t>(shown_.Model->Scene.Routes.size()) : 0;
  if (count == 0) return;
  const auto selected = shown_.Selection.Route;
  const std::ptrdiff_t next =
      selected
          ? std::clamp<std::ptrdiff_t>(static_cast<std::ptrdiff_t>(*selected) + by, 0, count - 1)
          : (by > 0 ? 0 : count - 1);
  Select(static_cast<std::size_t>(next), {});
  if (const MapRoute* route = SelectedRoute()) {
    const MapBounds bounds = BoundsOf(*route);
    if (!bounds.IsEmpty())
      BringIntoView({(bounds.Left + bounds.Right) / 2, (bounds.Bottom + bounds.Top) / 2});
  }
}

void MapView::StepBase() {
  if (!shown_.Model || shown_.Model->Scene.Bases.empty()) return;
  const auto selected = shown_.Selection.Base;
  const std::size_t next = selected ? (*selected + 1) % shown_.Model->Scene.Bases.size() : 0;
  SelectBase(next);
  if (const MapBase* base = SelectedBase()) BringIntoView(base->At);
}

void MapView::SelectAll() {
  const MapRoute* route = SelectedRoute();
  if (!route) return;
  std::vector<std::size_t> points(route->Points.size());
  std::iota(points.begin(), points.end(), std::size_t{0});
  Select(*shown_.Selection.Route, points);
}

void MapView::Select(std::size_t route, std::vector<std::size_t> points) {
  auto& selection = shown_.Selection;
  const bool isOther = selection.Route != route;
  if (!isOther && selection.Points == points && !selection.Base) return;
  selection.Route = route;
  selection.Points = points;
  selection.Base.reset();
  update();
  Announce();
  const std::size_t flight = shown_.Model->Scene.Routes[route].Flight;
  if (isOther) Q_EMIT FlightChosen(flight);
  Q_EMIT PointsChosen(points);
}

void MapView::SelectBase(std::size_t base) {
  shown_.Selection.Base = base;
  const bool hadPoints = !shown_.Selection.Points.empty();
  shown_.Selection.Points.clear();
  update();
  Announce();
  const std::size_t number = shown_.Model->Scene.Bases[base].Base;
  if (hadPoints) Q_EMIT PointsChosen({});
  Q_EMIT BaseChosen(number);
}

/** Moves the map only when the place is not seen well. */
void MapView::BringIntoView(MapPoint at) {
  constexpr double kRim = -30;
  if (shown_.Projection.Seen(kRim).Holds(at)) return;
  fit_ = Fit::None;
  MapProjection projection = shown_.Projection;
  projection.Centre = at;
  Look(projection);
}

}  // namespace rws
