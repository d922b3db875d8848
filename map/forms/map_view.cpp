#include "map/forms/map_view.h"

#include <QHelpEvent>
#include <QPainter>
#include <QResizeEvent>
#include <algorithm>
#include <cmath>

#include "map/forms/map_colors.h"

namespace rws {

namespace {

constexpr double kFitMargin = 40, kTolerance = 7;
constexpr int kUsualWidth = 800, kUsualHeight = 600, kDarkest = 128;

/** Leaves so many pixels at the right free. */
MapProjection FitBeside(const MapProjection& projection, const MapBounds& bounds, double room) {
  if (bounds.IsEmpty()) return projection;
  MapProjection narrow = projection;
  narrow.Width -= room;
  MapProjection fitted = FitInto(narrow, bounds, kFitMargin);
  fitted.Width = projection.Width;
  fitted.Centre.X += room / 2 * fitted.MetresPerPixel;
  return fitted;
}

}  // namespace

MapView::MapView(QWidget* parent) : QWidget(parent) {
  setObjectName(QStringLiteral("MapView"));
  setAccessibleName(QStringLiteral("Map"));
  setFocusPolicy(Qt::StrongFocus);
  setMouseTracking(true);
  // All of it is painted, so that nothing needs to be cleared before.
  setAttribute(Qt::WA_OpaquePaintEvent);
  UpdateDark();
}

QSize MapView::sizeHint() const { return {kUsualWidth, kUsualHeight}; }

void MapView::SetModel(const MapModel* model) {
  CancelGesture();
  shown_.Model = model;
  KeepSelectionValid();
  Repaint();
  Refit();
  Announce();
}

void MapView::SetProjection(const MapProjection& projection) {
  fit_ = Fit::None;
  Look(projection);
}

void MapView::SetLayers(const MapLayers& layers) {
  shown_.Layers = layers;
  Repaint();
}

void MapView::SetSelection(const MapSelection& selection) {
  if (selection == shown_.Selection) return;
  CancelGesture();
  shown_.Selection = selection;
  KeepSelectionValid();
  if (fit_ == Fit::Flight) fit_ = Fit::None;
  update();
  Announce();
}

void MapView::SetCompared(const std::vector<std::size_t>& routes) {
  shown_.Compared = routes;
  update();
}

void MapView::SetMinute(std::optional<double> minute) {
  if (minute == shown_.Minute) return;
  shown_.Minute = minute;
  update();
}

void MapView::SetUnderlay(const MapUnderlay* underlay) {
  shown_.Underlay = underlay;
  Repaint();
}

void MapView::SetMetric(bool metric) {
  shown_.Metric = metric;
  update();
}

void MapView::SetLegend(bool isShown) {
  hasLegend_ = isShown;
  Refit();
}

void MapView::FitMission() {
  fit_ = Fit::Mission;
  Refit();
}

void MapView::FitFlight() {
  fit_ = Fit::Flight;
  Refit();
}

void MapView::Zoom(double factor) {
  fit_ = Fit::None;
  const MapProjection& now = shown_.Projection;
  Look(ZoomedAt(now, {now.Width / 2, now.Height / 2}, factor));
}

const MapRoute* MapView::SelectedRoute() const {
  const auto selected = shown_.Selection.Route;
  if (!shown_.Model || !selected || *selected >= shown_.Model->Scene.Routes.size()) return nullptr;
  return &shown_.Model->Scene.Routes[*selected];
}

const MapBase* MapView::SelectedBase() const {
  const auto selected = shown_.Selection.Base;
  if (!shown_.Model || !selected || *selected >= shown_.Model->Scene.Bases.size()) return nullptr;
  return &shown_.Model->Scene.Bases[*selected];
}

MapPoint MapView::PlaceAt(QPointF at) const { return shown_.Projection.ToMap({at.x(), at.y()}); }

MapHit MapView::HitAtPixel(QPointF at) const {
  if (!shown_.Model) return {};
  return HitAt(*shown_.Model, shown_.Projection, {at.x(), at.y()}, shown_.Layers,
               shown_.Selection.Route, kTolerance);
}

/** The waypoint that keys work on, or the flight, or the home base. */
MapHit MapView::SelectedHit() const {
  const auto& selection = shown_.Selection;
  if (SelectedRoute() && !selection.Points.empty())
    return {MapHit::Waypoint, *selection.Route, selection.Points.back()};
  if (SelectedBase()) return {MapHit::BaseCentre, *selection.Base, 0};
  if (SelectedRoute()) return {MapHit::Route, *selection.Route, 0};
  return {};
}

void MapView::Look(const MapProjection& projection) {
  MapProjection next = projection;
  next.Width = std::max(width(), 1);
  next.Height = std::max(height(), 1);
  if (!std::isfinite(next.Centre.X) || !std::isfinite(next.Centre.Y)) return;
  shown_.Projection = next;
  update();
  Q_EMIT ProjectionChanged();
}

double MapView::LegendRoom() const { return hasLegend_ ? LegendWidth(legend_, font(), size()) : 0; }

void MapView::Refit() {
  MapProjection now = shown_.Projection;
  now.Width = std::max(width(), 1);
  now.Height = std::max(height(), 1);
  const MapRoute* route = SelectedRoute();
  if (fit_ == Fit::Mission && shown_.Model)
    now = FitBeside(now, shown_.Model->Bounds, LegendRoom());
  else if (fit_ == Fit::Flight && route)
    now = FitBeside(now, BoundsOf(*route), LegendRoom());
  Look(now);
}

void MapView::Repaint() {
  backing_.Forget();
  legend_ = shown_.Model ? LegendOf(*shown_.Model, shown_.Layers) : std::vector<LegendEntry>();
  update();
}

void MapView::UpdateDark() {
  shown_.Dark = palette().color(QPalette::Window).lightness() < kDarkest;
  backing_.Forget();
}

void MapView::KeepSelectionValid() {
  auto& selection = shown_.Selection;
  if (!SelectedBase()) selection.Base.reset();
  const MapRoute* route = SelectedRoute();
  if (!route) {
    selection.Route.reset();
    selection.Points.clear();
    return;
  }
  std::sort(selection.Points.begin(), selection.Points.end());
  std::erase_if(selection.Points, [&](std::size_t point) { return point >= route->Points.size(); });
}

/** Says what is selected to a screen reader. */
void MapView::Announce() {
  const MapHit hit = SelectedHit();
  const QString text = Describe && hit.Is != MapHit::Nothing ? Describe(hit) : QString();
  if (text == accessibleDescription()) return;
  setAccessibleDescription(text);
  setAccessibleName(text.isEmpty() ? QStringLiteral("Map") : QStringLiteral("Map: ") + text);
}

bool MapView::event(QEvent* event) {
  // The scale of the screen decides what the picture of the ground is made of.
  if (event->type() == QEvent::ScreenChangeInternal) backing_.Forget();
  return event->type() == QEvent::ToolTip ? ShowToolTip(*static_cast<QHelpEvent*>(event))
                                          : QWidget::event(event);
}

void MapView::changeEvent(QEvent* event) {
  if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange) UpdateDark();
  QWidget::changeEvent(event);
}

void MapView::focusInEvent(QFocusEvent* event) {
  QWidget::focusInEvent(event);
  update();
}

void MapView::focusOutEvent(QFocusEvent* event) {
  QWidget::focusOutEvent(event);
  update();
}

void MapView::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  Refit();
}

void MapView::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const double scale = devicePixelRatioF();
  painter.save();
  painter.scale(1 / scale, 1 / scale);
  painter.drawImage(QPoint(), backing_.Picture(shown_, scale));
  painter.restore();
  PaintMapTop(painter, shown_, preview_);
  if (hasLegend_) PaintLegend(painter, legend_, rect(), shown_.Dark);
  PaintGesture(painter);
  if (!hasFocus()) return;
  painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
  painter.setBrush(Qt::NoBrush);
  painter.drawRect(rect().adjusted(1, 1, -1, -1));
}

}  // namespace rws
