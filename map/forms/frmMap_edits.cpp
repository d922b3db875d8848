#include <QKeyEvent>
#include <algorithm>
#include <tuple>

#include "map/base_edits.h"
#include "map/forms/frmBaseLines.h"
#include "map/forms/frmMap.h"
#include "map/route_edits.h"
#include "platform/qt_text.h"
#include "services/numbers.h"
#include "services/trapped.h"
#include "session/current.h"
#include "session/doors.h"

namespace rws {

namespace {

// Places take no part in the comparison that lights Update; Save writes them.
constexpr EditKind kRoute{"Map", "Route", Lighting::None};
constexpr EditKind kBase{"Map", "Home base"};

}  // namespace

bool frmMap::MayEdit() {
  // A key pressed in the wake of an Undo means the route that was seen, not another that is there.
  if (followSoon_.isActive()) {
    const auto seen = [this] {
      const MapRoute* route = Route();
      return std::tuple(path_, route ? route->Flight : 0, route ? route->Points.size() : 0);
    };
    const auto before = seen();
    Follow();
    if (seen() != before) return false;
  }
  if (!chooseRow_) return true;
  Say(tr("Nothing can be moved while the waypoint editor is open."));
  return false;
}

/** Changes the route of the selected flight, and shows it. */
template <class Change>
bool frmMap::EditRoute(Change change) {
  if (!MayEdit()) return false;
  const MapRoute* route = Route();
  if (!route) return false;
  const std::size_t flight = route->Flight;
  const std::size_t before =
      FlightAt(session_, static_cast<std::ptrdiff_t>(flight)).Waypoints.size();
  const bool done = Edit(session_, kRoute, [&] { change(flight); });
  Follow();
  const auto& now = FlightAt(session_, static_cast<std::ptrdiff_t>(flight)).Waypoints;
  if (now.size() != before && RouteChanged) RouteChanged();
  return done;
}

void frmMap::MovePoints(const std::vector<std::size_t>& points, double east, double north) {
  const MapRoute* route = Route();
  if (!route || (east == 0 && north == 0)) return;
  std::vector<std::size_t> waypoints;
  for (const std::size_t point : points)
    if (point < route->Points.size()) waypoints.push_back(route->Points[point].Waypoint);
  EditRoute(
      [&](std::size_t flight) { MoveWaypoints(session_.Doc, flight, waypoints, east, north); });
}

/** The first of the selected waypoints goes to the typed place, the others with it. */
void frmMap::TypePlace() {
  const MapRoute* route = Route();
  const auto& points = view->Shown().Selection.Points;
  if (!route || points.empty()) return;
  const MapPoint from = route->Points[points.front()].At;
  const auto typed = [](const QLineEdit* box) {
    return ParseNumber(box->text().trimmed().replace(u',', u'.').toStdString());
  };
  const auto x = typed(txtX), y = typed(txtY);
  constexpr double kFarthest = 10'000'000;
  if (!x || !y || !(std::abs(*x) <= kFarthest) || !(std::abs(*y) <= kFarthest)) {
    Say(tr("A place is two numbers of metres."));
    return ShowPlace();
  }
  // What is shown has two decimals, the place may have more.
  const bool same =
      CoordinateText(*x) == CoordinateText(from.X) && CoordinateText(*y) == CoordinateText(from.Y);
  const bool isLocked = std::any_of(points.begin(), points.end(), [&](std::size_t point) {
    const WaypointShape shape = route->Points[point].Shape;
    return shape == WaypointShape::TakeOff || shape == WaypointShape::Landing;
  });
  if (!same && isLocked && !view->UnlockEnds) {
    Say(tr("Take-off and landing are locked: see the Edit menu."));
    return ShowPlace();
  }
  if (!same) MovePoints(std::vector(points), *x - from.X, *y - from.Y);
}

/** What is typed is taken before it is saved, and before another window has the word. */
bool frmMap::eventFilter(QObject* watched, QEvent* event) {
  const bool saves = event->type() == QEvent::ShortcutOverride &&
                     static_cast<QKeyEvent*>(event)->matches(QKeySequence::Save);
  const bool leaves = event->type() == QEvent::FocusOut &&
                      static_cast<QFocusEvent*>(event)->reason() == Qt::ActiveWindowFocusReason;
  if (saves || leaves) LogAndLeave(session_.Services, "Map", [this] { TypePlace(); });
  return QMainWindow::eventFilter(watched, event);
}

void frmMap::InsertAt(MapPoint at) {
  const MapRoute* route = Route();
  if (!route || route->Points.empty()) return;
  const auto& points = view->Shown().Selection.Points;
  const bool isLast = points.size() == 1 && points[0] + 1 == route->Points.size() &&
                      route->Points[points[0]].Shape != WaypointShape::Landing;
  const std::size_t last = isLast ? route->Points[points[0]].Waypoint : 0;
  std::size_t added = 0;
  const bool done = EditRoute([&](std::size_t flight) {
    const Flight& record = FlightAt(session_, static_cast<std::ptrdiff_t>(flight));
    added = InsertWaypoint(session_.Doc, flight, isLast ? last : BestPlaceFor(record, at), at);
  });
  if (done) SelectWaypoints({added});
}

void frmMap::DeletePoints() {
  const auto waypoints = SelectedWaypoints();
  if (waypoints.empty()) return Say(tr("No waypoint is selected."));
  bool deleted = false;
  if (!EditRoute(
          [&](std::size_t flight) { deleted = DeleteWaypoints(session_.Doc, flight, waypoints); }))
    return;
  if (!deleted) return Say(tr("A route keeps one waypoint at least."));
  SelectWaypoints({});
}

void frmMap::Reverse() {
  bool turned = false;
  if (!EditRoute([&](std::size_t flight) { turned = ReverseRoute(session_.Doc, flight); })) return;
  if (!turned) Say(tr("There are not two waypoints between take-off and landing."));
}

void frmMap::SelectWholeRoute() {
  const MapRoute* route = Route();
  if (!route) return;
  SelectWaypoints(MovableWaypoints(FlightAt(session_, static_cast<std::ptrdiff_t>(route->Flight)),
                                   view->UnlockEnds));
  view->setFocus();
  Say(tr("Drag one of its waypoints, or use the arrow keys."));
}

void frmMap::MoveBaseTo(std::size_t base, MapPoint to) {
  if (!MayEdit()) return;
  Edit(session_, kBase, [&] { MoveBase(session_.Doc, base, to); });
  Follow();
}

void frmMap::ResizeBaseTo(std::size_t base, double radius) {
  if (!MayEdit()) return;
  Edit(session_, kBase, [&] { ResizeBase(session_.Doc, base, radius); });
  Follow();
}

void frmMap::ClickBaseText() {
  const auto base = SelectedBase();
  if (!base || !MayEdit()) return;
  frmBaseLines form(session_, *base, this);
  form.LoadForm();
  ShowDialog(form);
  Follow();
}

void frmMap::EnableEdits() {
  // With its entries go their keys, also those of Undo and Save.
  mnuEdit->menuAction()->setEnabled(!chooseRow_);
  const MapRoute* route = Route();
  const bool edits = route && !chooseRow_, points = !view->Shown().Selection.Points.empty();
  const bool hasPoints = route && !route->Points.empty();
  for (auto* box : {txtX, txtY}) {
    box->setEnabled(points);
    box->setReadOnly(!edits);
  }
  mnuInsert->setEnabled(edits && hasPoints);
  mnuDelete->setEnabled(edits && points);
  mnuReverse->setEnabled(edits && hasPoints);
  mnuWholeRoute->setEnabled(edits && hasPoints);
  mnuWaypoints->setEnabled(edits);
  mnuFitFlight->setEnabled(hasPoints);
  mnuBaseText->setEnabled(SelectedBase() && view->MayMoveBases && !chooseRow_);
  for (auto* entry : {mnuPicture, mnuPng, mnuPngLarge, mnuSvg, mnuPdf, mnuCopy})
    entry->setEnabled(!path_.empty());
}

void frmMap::ConnectEdits() {
  const Services& services = session_.Services;
  connect(view, &MapView::PointsMoved, this,
          Trapped(services, "Map", [this](const auto& points, double east, double north) {
            MovePoints(points, east, north);
          }));
  connect(view, &MapView::BaseMoved, this,
          Trapped(services, "Map",
                  [this](std::size_t base, const MapPoint& to) { MoveBaseTo(base, to); }));
  connect(view, &MapView::BaseResized, this,
          Trapped(services, "Map",
                  [this](std::size_t base, double radius) { ResizeBaseTo(base, radius); }));
  for (auto* box : {txtX, txtY}) {
    connect(box, &QLineEdit::editingFinished, this,
            Trapped(services, "Map", [this] { TypePlace(); }));
    box->installEventFilter(this);
  }
  connect(mnuEdit, &QMenu::aboutToShow, this, Trapped(services, "Map", [this] { TypePlace(); }));
  OnClick(mnuInsert, [this] {
    // From the menu of a place it is that place, else the middle of what is seen.
    const MapProjection& seen = view->Shown().Projection;
    InsertAt(hasContext_ ? contextAt_ : seen.Centre);
  });
  OnClick(mnuDelete, [this] { DeletePoints(); });
  OnClick(mnuReverse, [this] { Reverse(); });
  OnClick(mnuWholeRoute, [this] { SelectWholeRoute(); });
  OnClick(mnuUnlock, [this] { view->UnlockEnds = mnuUnlock->isChecked(); });
  OnClick(mnuBaseText, [this] { ClickBaseText(); });
  OnClick(mnuWaypoints, [this] {
    if (OpenWaypoints && !chooseRow_) OpenWaypoints();
  });
}

}  // namespace rws
