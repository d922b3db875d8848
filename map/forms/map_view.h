#pragma once

#include <QPointF>
#include <QString>
#include <QWidget>
#include <functional>
#include <optional>
#include <vector>

#include "map/forms/map_backing.h"
#include "map/forms/map_legend.h"
#include "map/forms/map_painter.h"
#include "map/forms/map_shown.h"
#include "map/map_hit.h"

class QHelpEvent;

namespace rws {

/** A map that is looked at and worked on, by mouse or by keys alone. It changes nothing of a
    mission: what the user wants is told by signals, and shown when the model has it.

    Keys: arrows move the map, or the selected points by 100 m (10 m with Shift); + and - zoom; F
    shows all of the mission, Shift+F the flight; N and P or Page Down and Page Up go from waypoint
    to waypoint, with Ctrl from flight to flight; B goes from home base to home base; Ctrl+A selects
    the whole route; M begins the ruler; Enter opens the waypoint; Escape leaves what was begun. */
class MapView : public QWidget {
  Q_OBJECT

 public:
  explicit MapView(QWidget* parent = nullptr);

  /** Nothing can be moved. */
  bool ReadOnly = false;
  /** Take-off and landing points can be moved. */
  bool UnlockEnds = false;
  bool MayMoveBases = true;
  /** The text for the pointer and for who cannot see the map. */
  std::function<QString(const MapHit&)> Describe;

  const MapShown& Shown() const { return shown_; }
  /** To be called again when the model has changed; what is selected and not there any more is
      not selected then. */
  void SetModel(const MapModel* model);
  void SetProjection(const MapProjection& projection);
  void SetLayers(const MapLayers& layers);
  /** Without a signal: those tell of what the user does here. */
  void SetSelection(const MapSelection& selection);
  void SetCompared(const std::vector<std::size_t>& routes);
  void SetMinute(std::optional<double> minute);
  /** To be called again when the picture or its place has changed. */
  void SetUnderlay(const MapUnderlay* underlay);
  void SetMetric(bool metric);
  void SetLegend(bool isShown);
  /** How many pixels at the right the legend takes; 0 without it, or where it has no room. */
  double LegendRoom() const;

  /** Shows all of the mission, also of a model or a size that comes, until the user looks
      elsewhere. */
  void FitMission();
  /** Shows all of the selected route. */
  void FitFlight();
  /** Larger by a factor, about the middle. */
  void Zoom(double factor);
  /** The next drag measures. */
  void BeginRuler();
  /** What the ruler says: distance, heading, and minutes at the speed of the selected flight; ""
      without one. */
  QString RulerText() const;

  QSize sizeHint() const override;

 Q_SIGNALS:
  /** By the number in the mission. */
  void FlightChosen(std::size_t flight);
  /** Points of the selected route, in rising order. */
  void PointsChosen(const std::vector<std::size_t>& points);
  /** By the number in the mission. */
  void BaseChosen(std::size_t base);
  /** Points of the selected route are to be moved by metres. */
  void PointsMoved(const std::vector<std::size_t>& points, double east, double north);
  void BaseMoved(std::size_t base, const rws::MapPoint& to);
  void BaseResized(std::size_t base, double radius);
  void WaypointOpened(std::size_t point);
  /** What the user wanted is not possible; why. */
  void Refused(const QString& why);
  void Pointed(const rws::MapPoint& at, const rws::MapHit& hit);
  void ContextAsked(const rws::MapPoint& at, const rws::MapHit& hit, const QPoint& global);
  void ProjectionChanged();

 protected:
  bool event(QEvent* event) override;
  void changeEvent(QEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  enum class Gesture { None, Pressed, Pan, Band, Points, BaseCentre, BaseRim, Ruler };
  enum class Fit { None, Mission, Flight };

  const MapRoute* SelectedRoute() const;
  const MapBase* SelectedBase() const;
  MapPoint PlaceAt(QPointF at) const;
  MapHit HitAtPixel(QPointF at) const;
  MapHit SelectedHit() const;
  void Look(const MapProjection& projection);
  void Refit();
  void Repaint();
  void UpdateDark();
  void KeepSelectionValid();
  void Announce();

  bool ShowToolTip(const QHelpEvent& event);

  // Gestures
  Gesture GestureFor(QPointF at, Qt::KeyboardModifiers modifiers) const;
  Gesture BaseGestureAt(QPointF at) const;
  void Begin(QPointF at);
  bool Allow(Gesture gesture);
  void Follow(QPointF at);
  void Finish();
  void CancelGesture();
  void Click(QPointF at, Qt::KeyboardModifiers modifiers);
  void ClickPoint(const MapHit& hit, bool adds);
  void TakeBand(QPointF to);
  void ShowCursor(QPointF at);
  std::vector<std::size_t> Movable() const;
  void PaintGesture(QPainter& painter);
  void PaintRuler(QPainter& painter);
  double RulerSpeed() const;

  // Keys
  bool TakeKey(const QKeyEvent& event);
  bool TakeArrow(const QKeyEvent& event);
  void Step(int by);
  void StepFlight(int by);
  void StepBase();
  void SelectAll();
  void LeaveByKey();
  void Select(std::size_t route, std::vector<std::size_t> points);
  void ClearSelection();
  void SelectBase(std::size_t base);
  void BringIntoView(MapPoint at);

  MapShown shown_;
  MapBacking backing_;
  MapPreview preview_;
  std::vector<LegendEntry> legend_;
  bool hasLegend_ = true;
  Fit fit_ = Fit::Mission;

  Gesture gesture_ = Gesture::None;
  Gesture wanted_ = Gesture::None;
  QPointF pressed_, last_;
  Qt::KeyboardModifiers pressedWith_;
  bool rulerArmed_ = false;
  std::optional<std::pair<MapPoint, MapPoint>> ruler_;
};

}  // namespace rws
