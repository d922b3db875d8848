#include <QPointer>
#include <algorithm>
#include <utility>

#include "map/forms/frmMap.h"
#include "platform/qt_text.h"
#include "services/trapped.h"
#include "session/current.h"
#include "session/doors.h"

namespace rws {

void frmMap::OnClick(QAction* entry, std::function<void()> handler) {
  connect(entry, &QAction::triggered, this,
          Trapped(session_.Services, "Map", [handler = std::move(handler)](bool) { handler(); }));
}

void frmMap::Connect() {
  view->Describe = [this](const MapHit& hit) {
    return QString::fromStdString(HitText(Sources(), hit));
  };
  ConnectView();
  ConnectEdits();
  ConnectFiles();
  connect(timeBar, &TimeBar::MinuteChanged, this,
          Trapped(session_.Services, "Map",
                  [this](std::optional<double> minute) { ShowMinute(minute); }));
  connect(profile, &ProfileView::MinuteChosen, this,
          Trapped(session_.Services, "Map", [this](double minute) {
            timeBar->SetMinute(minute);
            ShowMinute(minute);
          }));
  connect(profile, &ProfileView::PointChosen, this,
          Trapped(session_.Services, "Map", [this](std::size_t route, std::size_t point) {
            const MapRoute* selected = Route();
            if (selected && route == *view->Shown().Selection.Route)
              SelectWaypoints({At(selected->Points, static_cast<std::ptrdiff_t>(point)).Waypoint});
          }));
  session_.Listeners.push_back([map = QPointer<frmMap>(this)](const Change&) {
    if (map) map->FollowSoon();
  });
}

void frmMap::ConnectView() {
  const Services& services = session_.Services;
  connect(view, &MapView::FlightChosen, this, Trapped(services, "Map", [this](std::size_t flight) {
            // The editor is of one flight, whose rows are no rows of another one.
            if (!MayEdit()) return Follow();
            if (ChooseFlight) ChooseFlight(static_cast<int>(flight));
          }));
  connect(view, &MapView::PointsChosen, this, Trapped(services, "Map", [this](const auto&) {
            ShowSelection();
            const auto waypoints = SelectedWaypoints();
            if (chooseRow_ && waypoints.size() == 1) chooseRow_(waypoints[0]);
          }));
  connect(view, &MapView::BaseChosen, this,
          Trapped(services, "Map", [this](std::size_t) { EnableEdits(); }));
  connect(view, &MapView::WaypointOpened, this, Trapped(services, "Map", [this](std::size_t) {
            if (OpenWaypoints && !chooseRow_) OpenWaypoints();
          }));
  connect(view, &MapView::Refused, this,
          Trapped(services, "Map", [this](const QString& why) { Say(why); }));
  connect(view, &MapView::Pointed, this,
          Trapped(services, "Map",
                  [this](const MapPoint& at, const MapHit& hit) { ShowPointed(at, hit); }));
  connect(view, &MapView::ContextAsked, this,
          Trapped(services, "Map", [this](const MapPoint& at, const MapHit& hit, QPoint global) {
            OpenContext(at, hit, global);
          }));
  OnClick(mnuFitMission, [this] { view->FitMission(); });
  OnClick(mnuFitFlight, [this] { view->FitFlight(); });
  OnClick(mnuZoomIn, [this] { view->Zoom(1.5); });
  OnClick(mnuZoomOut, [this] { view->Zoom(1 / 1.5); });
  OnClick(mnuRuler, [this] {
    view->setFocus();
    view->BeginRuler();
  });
  for (auto* entry : mnuLayer)
    OnClick(entry, [this] {
      MapLayers layers;
      for (std::size_t i = 0; i < kMapLayers; ++i) layers.Shown[i] = mnuLayer[i]->isChecked();
      view->SetLayers(layers);
    });
  OnClick(mnuLegend, [this] {
    view->SetLegend(mnuLegend->isChecked());
    if (mnuLegend->isChecked() && !path_.empty() && view->LegendRoom() == 0)
      Say(tr("The legend needs more room: make the window larger, or close the profile."));
  });
  OnClick(mnuProfile, [this] { boxProfile->setVisible(mnuProfile->isChecked()); });
  OnClick(mnuOverTime, [this] { ShowProfile(); });
  OnClick(mnuTable, [this] { ClickTable(); });
  OnClick(mnuClose, [this] { close(); });
}

void frmMap::OpenContext(MapPoint at, const MapHit& hit, QPoint global) {
  QAction compare(this);
  const bool isFlight = hit.Is == MapHit::Waypoint || hit.Is == MapHit::Route;
  if (isFlight && hit.Index < model_.Scene.Routes.size()) {
    const bool on = std::find(compared_.begin(), compared_.end(), hit.Index) != compared_.end();
    const QString name = FromBytes(session_.Services.Page, model_.Scene.Routes[hit.Index].Name);
    compare.setText(tr("Compare With %1").arg(QString(name).replace(u'&', QStringLiteral("&&"))));
    compare.setCheckable(true);
    compare.setChecked(on);
    OnClick(&compare, [this, &compare, hit] { ToggleCompared(hit.Index, compare.isChecked()); });
    mnuPop->addAction(&compare);
  }
  contextAt_ = at;
  hasContext_ = true;
  OpenMenu(*mnuPop, global);
  hasContext_ = false;
}

}  // namespace rws
