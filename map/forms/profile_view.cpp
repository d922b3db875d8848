#include "map/forms/profile_view.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleOptionFocusRect>
#include <QToolTip>
#include <algorithm>

#include "platform/qt_text.h"

namespace rws {

namespace {

constexpr double kTolerance = 9;

QString Utf8(const std::string& text) { return QString::fromStdString(text); }

}  // namespace

ProfileView::ProfileView(QWidget* parent) : QWidget(parent) {
  setObjectName(QStringLiteral("ProfileView"));
  setAccessibleName(tr("Profile: height and speed of the selected flight"));
  setFocusPolicy(Qt::StrongFocus);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  setMouseTracking(true);
  Rebuild();
}

void ProfileView::Show(const MapTextSources& from, std::optional<std::size_t> selected,
                       const std::vector<std::size_t>& compared) {
  from_.emplace(from);
  const std::size_t count = from.Model.Scene.Routes.size();
  selected_ = selected && *selected < count ? selected : std::nullopt;
  routes_.clear();
  for (const std::size_t route : compared)
    if (route < count && route != selected_) routes_.push_back(route);
  if (selected_) routes_.push_back(*selected_);
  Rebuild();
}

void ProfileView::Clear() {
  from_.reset();
  selected_.reset();
  routes_.clear();
  Rebuild();
}

void ProfileView::SetAxis(ProfileAxis axis) {
  if (axis == picture_.Axis) return;
  picture_.Axis = axis;
  Rebuild();
}

void ProfileView::SetMinute(std::optional<double> minute) {
  if (minute == minute_) return;
  minute_ = minute;
  PlaceCursor();
}

/** All that depends on the flights and not on the cursor. */
void ProfileView::Rebuild() {
  picture_.Lines.clear();
  picture_.Note = from_ ? tr("No flight is selected.") : QString();
  if (from_) {
    picture_.Metric = from_->Metric;
    picture_.Time = from_->Model.Time;
  }
  for (const std::size_t route : routes_) {
    const MapRoute& flight = from_->Model.Scene.Routes[route];
    ProfileLine& line = picture_.Lines.emplace_back();
    line.Series = SeriesOf(from_->Model, route, picture_.Axis);
    line.Name = FromBytes(from_->Services.Page, flight.Name);
    line.Army = flight.Army;
    line.IsSelected = route == selected_;
    if (line.IsSelected) picture_.Note = Utf8(line.Series.Missing);
    if (line.IsSelected && picture_.Note.isEmpty())
      picture_.Note = Utf8(NearestMeeting(*from_, route, routes_));
  }
  PlaceCursor();
}

void ProfileView::PlaceCursor() {
  QStringList told;
  for (auto& line : picture_.Lines) {
    line.Place.reset();
    line.Altitude.reset();
    if (!minute_) continue;
    const std::size_t route = line.Series.Route;
    const auto moment =
        MomentOf(from_->Model.Scene.Routes[route], from_->Model.Clocks[route], *minute_);
    // On the way it is at its end for good; in the time it is over.
    const bool isThere =
        moment && moment->Phase != FlightPhase::NotYet &&
        (picture_.Axis == ProfileAxis::Distance || moment->Phase == FlightPhase::Waiting ||
         moment->Phase == FlightPhase::Flying);
    if (line.IsSelected || isThere)
      line.Place = ProfilePlace(from_->Model, route, picture_.Axis, *minute_);
    if (isThere) line.Altitude = moment->Altitude;
    told.prepend(Utf8(MomentText(*from_, route, *minute_)));
  }
  if (!picture_.Note.isEmpty()) told << picture_.Note;
  setAccessibleDescription(told.join(QLatin1Char('\n')));
  update();
}

ProfileScale ProfileView::Scale() const {
  return ScaleOf(picture_, QRectF(rect()), QFontMetricsF(font()));
}

QSize ProfileView::sizeHint() const {
  const int line = fontMetrics().height();
  return {line * 50, line * 14};
}

QSize ProfileView::minimumSizeHint() const {
  const int line = fontMetrics().height();
  return {line * 16, line * 8};
}

double ProfileView::LastOfAll() const {
  return from_ ? LastMinute(from_->Model.Scene.Routes, from_->Model.Clocks) : 0;
}

std::optional<double> ProfileView::MinuteAtX(double x) const {
  if (!from_ || picture_.Lines.empty()) return {};
  const double at = Scale().AtX(x);
  if (picture_.Axis == ProfileAxis::Time) return at;
  return MinuteAlong(from_->Model, picture_.Lines.back().Series.Route, at);
}

void ProfileView::Choose(std::optional<double> minute) {
  if (!minute) return;
  const double within = std::clamp(*minute, 0.0, LastOfAll());
  if (within == minute_) return;
  SetMinute(within);
  Q_EMIT MinuteChosen(within);
}

QString ProfileView::TipAt(QPointF at) const {
  if (!from_) return {};
  if (const auto hit = MarkAt(picture_, Scale(), at, kTolerance)) {
    const ProfileSeries& series = picture_.Lines[hit->Line].Series;
    return Utf8(HitText(*from_, {MapHit::Waypoint, series.Route, series.Marks[hit->Mark].Point}));
  }
  const auto minute = MinuteAtX(at.x());
  if (!minute || !Scale().Plot.contains(at)) return {};
  QStringList told;
  for (const auto& line : picture_.Lines)
    told.prepend(Utf8(MomentText(*from_, line.Series.Route, *minute)));
  constexpr int kMostLines = 12;
  return told.mid(0, kMostLines).join(QLatin1Char('\n'));
}

bool ProfileView::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return QWidget::event(event);
  const auto* help = static_cast<QHelpEvent*>(event);
  const QString tip = TipAt(help->pos());
  if (tip.isEmpty())
    QToolTip::hideText();
  else
    QToolTip::showText(help->globalPos(),
                       tip.toHtmlEscaped().replace(QLatin1Char('\n'), QStringLiteral("<br>")),
                       this);
  return true;
}

void ProfileView::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), palette().base());
  PaintProfile(painter, picture_, Scale(), palette());
  if (!hasFocus()) return;
  QStyleOptionFocusRect option;
  option.initFrom(this);
  option.backgroundColor = palette().color(QPalette::Base);
  style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
}

void ProfileView::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return QWidget::mousePressEvent(event);
  if (const auto hit = MarkAt(picture_, Scale(), event->position(), kTolerance)) {
    const ProfileSeries& series = picture_.Lines[hit->Line].Series;
    Q_EMIT PointChosen(series.Route, series.Marks[hit->Mark].Point);
    return;
  }
  Choose(MinuteAtX(event->position().x()));
}

void ProfileView::mouseMoveEvent(QMouseEvent* event) {
  if (event->buttons() & Qt::LeftButton) Choose(MinuteAtX(event->position().x()));
}

void ProfileView::keyPressEvent(QKeyEvent* event) {
  constexpr double kStep = 1, kLargeStep = 10;
  const double step = event->modifiers() & Qt::ControlModifier ? kLargeStep : kStep;
  const double now = minute_.value_or(0);
  if (!from_) return QWidget::keyPressEvent(event);
  switch (event->key()) {
    case Qt::Key_Left:
      return Choose(now - step);
    case Qt::Key_Right:
      return Choose(now + step);
    case Qt::Key_Home:
      return Choose(0);
    case Qt::Key_End:
      return Choose(LastOfAll());
    default:
      QWidget::keyPressEvent(event);
  }
}

}  // namespace rws
