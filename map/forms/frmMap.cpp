#include "map/forms/frmMap.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QStatusBar>
#include <algorithm>
#include <utility>

#include "map/base_edits.h"
#include "map/map_units.h"
#include "map/profile.h"
#include "map/route_edits.h"
#include "mission/untouched.h"
#include "platform/form_placement.h"
#include "platform/qt_text.h"
#include "services/help_file.h"
#include "services/setting_values.h"
#include "services/trapped.h"
#include "session/current.h"
#include "session/doors.h"

namespace rws {

frmMap::frmMap(Session& session) : session_(session) {
  Build();
  Connect();
  followSoon_.setSingleShot(true);
  followSoon_.setInterval(0);
  connect(&followSoon_, &QTimer::timeout, this,
          Trapped(session_.Services, "Map", [this](auto...) { Follow(); }));
}

// Its parts outlive it: a box that has the focus still tells that it was left.
frmMap::~frmMap() {
  for (auto* part : findChildren<QObject*>()) part->disconnect(this);
}

void frmMap::LoadForm() {
  LogAndLeave(session_.Services, "frmMap", [&] {
    LoadWindowSize(session_.Services, *this);
    LoadFormPos(session_.Services, *this);
    LoadSplitter(session_.Services, *splMap);
    LoadChoices();
  });
}

void frmMap::closeEvent(QCloseEvent* event) {
  LogAndLeave(session_.Services, "frmMap", [&] {
    SaveFormPos(session_.Services, *this);
    SaveWindowSize(session_.Services, *this);
    SaveSplitter(session_.Services, *splMap);
    SaveChoices();
  });
  if (Table) Table->close();
  QMainWindow::closeEvent(event);
}

void frmMap::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_F1) return OpenHelp(session_.Services, "frmMap");
  QMainWindow::keyPressEvent(event);
}

MapTextSources frmMap::Sources() const {
  return {model_, record_, session_.Tables, session_.Services, view->Shown().Metric};
}

void frmMap::FollowSoon() {
  if (isVisible()) followSoon_.start();
}

void frmMap::Follow() {
  if (!isVisible()) return;
  followSoon_.stop();
  TakeMission();
  TakePicture();
  ShowSelection();
}

/** Brings the model up to the mission on show; one that is not read, or no mission, is an empty
 * map. */
void frmMap::TakeMission() {
  const Document& doc = session_.Doc;
  const auto current = static_cast<std::size_t>(doc.CurMission);
  const bool isRead = current < doc.Missions.size() && doc.Missions[current].Loaded;
  const std::string path = isRead ? PathOf(doc.Missions[current]) : "";
  const bool isOther = path != path_;
  path_ = path;
  MapSelection selection = isOther ? MapSelection{} : view->Shown().Selection;
  if (isOther) compared_.clear();
  record_ = isRead ? doc.Missions[current] : Mission();
  if (isRead)
    UpdateModel(model_, doc.Missions[current], session_.Tables, session_.Services);
  else
    model_ = {};
  const auto flight = static_cast<std::size_t>(doc.CurFlight);
  const bool hasFlight = isRead && doc.CurFlight >= 0 && flight < model_.Scene.Routes.size();
  if (!hasFlight || selection.Route != flight) selection.Points.clear();
  selection.Route = hasFlight ? std::optional(flight) : std::nullopt;
  view->MayMoveBases = MayEditBases(doc);
  view->SetMetric(ReadFlag(session_.Services.Settings, setting::WPMetric));
  view->SetModel(&model_);
  view->SetSelection(selection);
  if (isOther) view->FitMission();
  const QString name = isRead ? FromPath(doc.Missions[current].FileName) : QString();
  setWindowTitle(name.isEmpty() ? tr("Map") : tr("%1 - Map").arg(name));
  timeBar->SetMission(model_.Time, LastMinute(model_.Scene.Routes, model_.Clocks));
  ShowCompare();
}

/** What follows from what is selected. */
void frmMap::ShowSelection() {
  ShowPlace();
  ShowProfile();
  ShowMinute(timeBar->Minute());
  EnableEdits();
}

const MapRoute* frmMap::Route() const {
  const auto& selected = view->Shown().Selection.Route;
  return selected && *selected < model_.Scene.Routes.size() ? &model_.Scene.Routes[*selected]
                                                            : nullptr;
}

std::vector<std::size_t> frmMap::SelectedWaypoints() const {
  std::vector<std::size_t> waypoints;
  const MapRoute* route = Route();
  for (const std::size_t point : view->Shown().Selection.Points)
    if (route && point < route->Points.size()) waypoints.push_back(route->Points[point].Waypoint);
  return waypoints;
}

void frmMap::SelectWaypoints(const std::vector<std::size_t>& waypoints) {
  MapSelection selection = view->Shown().Selection;
  selection.Points.clear();
  const MapRoute* route = Route();
  for (std::size_t i = 0; route && i < route->Points.size(); ++i)
    if (std::find(waypoints.begin(), waypoints.end(), route->Points[i].Waypoint) != waypoints.end())
      selection.Points.push_back(i);
  view->SetSelection(selection);
  ShowSelection();
}

std::optional<std::size_t> frmMap::SelectedBase() const {
  const auto& base = view->Shown().Selection.Base;
  if (!base || *base >= model_.Scene.Bases.size()) return {};
  return model_.Scene.Bases[*base].Base;
}

void frmMap::SetRowChooser(std::function<void(std::size_t)> chooser) {
  chooseRow_ = std::move(chooser);
  view->ReadOnly = chooseRow_ != nullptr;
  EnableEdits();
}

/** The place of the first selected waypoint, in metres as the file has it. */
void frmMap::ShowPlace() {
  const auto waypoints = SelectedWaypoints();
  const MapRoute* route = Route();
  const bool has = route && !waypoints.empty();
  const auto& points = view->Shown().Selection.Points;
  const auto text = [&](double MapPoint::*axis) {
    return has ? QString::fromStdString(CoordinateText(route->Points[points.front()].At.*axis))
               : QString();
  };
  txtX->setText(text(&MapPoint::X));
  txtY->setText(text(&MapPoint::Y));
  QString what = tr("No waypoint selected");
  if (has)
    what = points.size() == 1
               ? tr("Waypoint %1").arg(points.front())
               : tr("Waypoint %1 and %n more", nullptr, int(points.size()) - 1).arg(points.front());
  lblPoint->setText(what);
}

void frmMap::ShowPointed(MapPoint at, const MapHit& hit) {
  QString place = QString::fromStdString(PlaceText(at));
  const MapRoute* route = Route();
  const auto& points = view->Shown().Selection.Points;
  if (route && !points.empty()) {
    const MapPoint from = route->Points[points.front()].At;
    place +=
        tr(" - %1, %2 from waypoint %3")
            .arg(QString::fromStdString(DistanceText(DistanceOf(from, at), view->Shown().Metric)),
                 QString::fromStdString(HeadingText(HeadingOf(from, at))))
            .arg(points.front());
  }
  lblPlace->setText(place);
  lblHit->setText(QString::fromStdString(HitText(Sources(), hit)));
}

void frmMap::ShowProfile() {
  const auto& selected = view->Shown().Selection.Route;
  profile->SetAxis(mnuOverTime->isChecked() ? ProfileAxis::Time : ProfileAxis::Distance);
  profile->Show(Sources(), selected, compared_);
  std::vector<std::size_t> met = compared_;
  if (selected && std::find(met.begin(), met.end(), *selected) == met.end())
    met.insert(met.begin(), *selected);
  QStringList texts;
  if (met.size() > 1)
    for (const auto& text : MeetingTexts(Sources(), met)) texts << QString::fromStdString(text);
  lblMeetings->setVisible(!texts.isEmpty());
  lblMeetings->setText(texts.value(0));
  lblMeetings->setToolTip(texts.join(u'\n'));
}

void frmMap::ShowMinute(std::optional<double> minute) {
  view->SetMinute(minute);
  profile->SetMinute(minute);
  ShowTable();
}

void frmMap::ShowTable() {
  if (!Table || !Table->isVisible()) return;
  const auto& selection = view->Shown().Selection;
  Table->Refresh(Sources(), timeBar->Minute().value_or(0), selection.Route,
                 selection.Points.empty() ? std::nullopt : std::optional(selection.Points.front()));
}

void frmMap::ClickTable() {
  if (!Table) {
    Table = new frmFlightTable(session_.Services, this);
    connect(Table, &frmFlightTable::FlightChosen, this,
            Trapped(session_.Services, "Map", [this](std::size_t route) {
              if (route < model_.Scene.Routes.size() && ChooseFlight && !chooseRow_)
                ChooseFlight(static_cast<int>(model_.Scene.Routes[route].Flight));
            }));
    connect(Table, &frmFlightTable::PointChosen, this,
            Trapped(session_.Services, "Map", [this](std::size_t route, std::size_t point) {
              if (route < model_.Scene.Routes.size() &&
                  point < model_.Scene.Routes[route].Points.size())
                SelectWaypoints({model_.Scene.Routes[route].Points[point].Waypoint});
            }));
  }
  Table->show();
  Table->raise();
  Table->activateWindow();
  ShowTable();
}

/** The flights that can be laid over the selected one. */
void frmMap::ShowCompare() {
  mnuCompare->clear();
  std::erase_if(compared_, [&](std::size_t i) { return i >= model_.Scene.Routes.size(); });
  for (std::size_t i = 0; i < model_.Scene.Routes.size(); ++i) {
    const QString name = FromBytes(session_.Services.Page, model_.Scene.Routes[i].Name);
    QAction* entry = mnuCompare->addAction(QString(name).replace(u'&', QStringLiteral("&&")));
    entry->setCheckable(true);
    entry->setChecked(std::find(compared_.begin(), compared_.end(), i) != compared_.end());
    connect(entry, &QAction::triggered, this,
            Trapped(session_.Services, "Map", [this, i](bool on) { ToggleCompared(i, on); }));
  }
  mnuCompare->setEnabled(!model_.Scene.Routes.empty());
  view->SetCompared(compared_);
}

void frmMap::ToggleCompared(std::size_t route, bool on) {
  std::erase(compared_, route);
  if (on) compared_.push_back(route);
  std::sort(compared_.begin(), compared_.end());
  view->SetCompared(compared_);
  ShowProfile();
}

void frmMap::Say(const QString& text) { statusBar()->showMessage(text, 8000); }

void frmMap::LoadChoices() {
  const Settings& settings = session_.Services.Settings;
  const std::string hidden = ReadSetting(settings, setting::MapHidden);
  MapLayers layers;
  for (std::size_t i = 0; i < kMapLayers; ++i) {
    layers.Shown[i] = i >= hidden.size() || hidden[i] != '1';
    mnuLayer[i]->setChecked(layers.Shown[i]);
  }
  view->SetLayers(layers);
  mnuLegend->setChecked(ReadFlag(settings, setting::MapLegend));
  view->SetLegend(mnuLegend->isChecked());
  mnuProfile->setChecked(ReadFlag(settings, setting::MapProfile));
  boxProfile->setVisible(mnuProfile->isChecked());
  mnuOverTime->setChecked(ReadFlag(settings, setting::MapOverTime));
}

void frmMap::SaveChoices() {
  const Settings& settings = session_.Services.Settings;
  std::string hidden;
  for (const auto* layer : mnuLayer) hidden.push_back(layer->isChecked() ? '0' : '1');
  const auto flag = [](const QAction* entry) { return entry->isChecked() ? "True" : "False"; };
  WriteSetting(settings, setting::MapHidden, hidden);
  WriteSetting(settings, setting::MapLegend, flag(mnuLegend));
  WriteSetting(settings, setting::MapProfile, flag(mnuProfile));
  WriteSetting(settings, setting::MapOverTime, flag(mnuOverTime));
}

}  // namespace rws
