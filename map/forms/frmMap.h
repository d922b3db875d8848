#pragma once

#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QSplitter>
#include <QTimer>
#include <QToolButton>
#include <array>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "controls/show_dialog.h"
#include "map/forms/frmFlightTable.h"
#include "map/forms/map_view.h"
#include "map/forms/profile_view.h"
#include "map/forms/time_bar.h"
#include "map/map_pictures.h"
#include "session/session.h"

namespace rws {

/** The mission on show as a map, with the selected flight from the side below it and a time that
   can be moved. Follows the main window and leads it: what is selected here is selected there. It
    stays usable while the waypoint editor is open, but changes nothing then. */
class frmMap : public QMainWindow {
  Q_OBJECT

 public:
  explicit frmMap(Session& session);
  ~frmMap() override;

  /** Takes up its place and what was shown when it was closed, and shows the current mission. */
  void LoadForm();
  /** The mission on show, its flight or a record may be another now. */
  void Follow();
  /** The same as soon as all else is done, once for many calls. */
  void FollowSoon();
  /** Nothing can be changed, and clicks choose rows, while a waypoint editor is open. Rows count
      from 0; null when it has closed. */
  void SetRowChooser(std::function<void(std::size_t waypoint)> chooser);
  /** Marks waypoints of the current flight. */
  void SelectWaypoints(const std::vector<std::size_t>& waypoints);

  /** Selects a flight of the mission on show. */
  std::function<void(int flight)> ChooseFlight;
  /** Opens the waypoint editor. */
  std::function<void()> OpenWaypoints;
  /** A route has another number of waypoints. */
  std::function<void()> RouteChanged;
  /** How dialogs and menus are opened; a test puts its own in their place. */
  rws::ShowDialog ShowDialog = ShowUntilClosed;
  std::function<void(QMenu& menu, QPoint at)> OpenMenu = [](QMenu& menu, QPoint at) {
    menu.exec(at);
  };

  const MapModel& Model() const { return model_; }
  /** What texts about the mission on show are made from. */
  MapTextSources Sources() const;

  MapView* view;
  ProfileView* profile;
  TimeBar* timeBar;
  QSplitter* splMap;
  QWidget* boxProfile;
  QToolBar* tlbMap;
  QLineEdit *txtX, *txtY;
  QLabel *lblPoint, *lblPlace, *lblHit, *lblMeetings;
  QMenu *mnuMap, *mnuEdit, *mnuView, *mnuLayers, *mnuCompare, *mnuExport, *mnuPop;
  QAction *mnuFitMission, *mnuFitFlight, *mnuZoomIn, *mnuZoomOut, *mnuRuler;
  QAction *mnuInsert, *mnuDelete, *mnuWholeRoute, *mnuReverse, *mnuUnlock, *mnuWaypoints;
  QAction *mnuBaseText, *mnuPicture, *mnuNoPicture;
  QAction *mnuLegend, *mnuProfile, *mnuOverTime, *mnuTable, *mnuClose;
  QAction *mnuPng, *mnuPngLarge, *mnuSvg, *mnuPdf, *mnuCopy;
  std::array<QAction*, kMapLayers> mnuLayer;
  /** Null until it is first asked for. */
  frmFlightTable* Table = nullptr;

 protected:
  void closeEvent(QCloseEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void Build();
  void BuildMapMenu();
  void BuildEditMenu();
  void BuildViewMenu();
  void BuildToolBar();
  QWidget* BuildProfile();
  QWidget* BuildPlacePanel();
  void Connect();
  void ConnectView();
  void ConnectEdits();
  void ConnectFiles();
  void OnClick(QAction* entry, std::function<void()> handler);

  void LoadChoices();
  void SaveChoices();
  void TakeMission();
  void ShowSelection();
  void ShowPlace();
  void ShowPointed(MapPoint at, const MapHit& hit);
  void ShowProfile();
  void ShowTable();
  void ShowMinute(std::optional<double> minute);
  void ShowCompare();
  void ToggleCompared(std::size_t route, bool on);
  void EnableEdits();
  void OpenContext(MapPoint at, const MapHit& hit, QPoint global);
  void ClickTable();

  const MapRoute* Route() const;
  std::vector<std::size_t> SelectedWaypoints() const;
  std::optional<std::size_t> SelectedBase() const;
  bool MayEdit();
  void Say(const QString& text);

  template <class Change>
  bool EditRoute(Change change);
  void MovePoints(const std::vector<std::size_t>& points, double east, double north);
  void TypePlace();
  void InsertAt(MapPoint at);
  void DeletePoints();
  void Reverse();
  void SelectWholeRoute();
  void MoveBaseTo(std::size_t base, MapPoint to);
  void ResizeBaseTo(std::size_t base, double radius);
  void ClickBaseText();

  void PaintInto(QPainter& painter, QSize size, bool dark) const;
  std::string BaseName() const;
  void SaveAs(const char* what, const std::string& filter,
              const std::function<void(const std::string&)>& save);
  void SaveBriefing(const std::string& path);
  /** Tells the user why a step failed; false then. */
  bool TellFault(const std::function<void()>& step);
  void KeepPictures(const std::function<std::string(const std::string& text)>& change);
  void TakePicture();
  void ClickPicture();

  Session& session_;
  MapModel model_;
  /** The mission that the model was made from. A copy: texts are asked for also while the list of
      missions is read anew. */
  Mission record_;
  std::string path_;  // of the mission that the model shows
  std::function<void(std::size_t)> chooseRow_;
  QTimer followSoon_{this};
  std::vector<std::size_t> compared_;
  MapPoint contextAt_;
  bool hasContext_ = false;
  MapUnderlay underlay_;
  std::string pictureOf_;  // the map whose picture is in `underlay_`
};

}  // namespace rws
