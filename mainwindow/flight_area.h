#pragma once

#include <QGroupBox>
#include <QMenu>
#include <QWidget>
#include <array>

#include "mainwindow/flight_list.h"
#include "mainwindow/flight_panel.h"
#include "mainwindow/plane_panels.h"
#include "mainwindow/popups.h"
#include "session/session.h"

namespace rws {

class frmWP;

/** The right-hand side of the window: the flight list and the frames of flight and planes. It knows
    which flight is current and to which flights a command applies. */
class FlightArea : public QWidget {
  Q_OBJECT

 public:
  FlightArea(Session& session, Popups& popups, QWidget* parent);

  /** Rebuilds the list and selects a flight; the first row in sort order when `index` is -1. */
  void LoadPlaneList(int index);
  /** Empties the list. */
  void ClearFlightList();
  /** Shows a flight of the current mission, after the list was rebuilt if `reload` is set; the
     selected row's flight when `index` is -1. Tells that the player was cleared, if so. */
  void PlaneChg(bool reload, int index, bool playerCleared);
  /** Shows what belongs to the current flight as a whole, then its planes. */
  void LoadPlanes();
  void SetSingleMode();
  /** The mission's time of day is another. */
  void MissionTimeChanged();
  void SetMultipleMode();
  void SetWaypointMenuCaption();
  /** Captions of a window without a flight. */
  void ResetCaptions();
  /** Sets the entries of the menu for the flights that are selected; to be called before it opens.
   */
  void PrepareMenu();
  /** Shows that the mission has no flights. */
  void ShowNoFlights();

  /** Shows a flight as a click on its row does. */
  void SelectFlight(int flight);
  /** Opens the waypoint editor of the current flight. */
  void ClickWaypoints();

  /** Lets the list get lower than it usually may, where something else needs the room. */
  void SetTight(bool tight);
  /** Fills the fixed lists of the flight and plane panels. */
  void FillFixedLists();
  /** Empties the plane panels. */
  void ClearFrames(bool all);

  FlightList* lstPlanes;
  FlightPanel* fraFlight;
  QGroupBox* fraGroup;
  PlanePanels* planes;
  QMenu *mnuAircraft, *mnuSkin;
  enum Entry : std::size_t {
    kChangeAircraft,
    kFlightSkin,
    kMarkings,
    kLineAboveDuplicate,
    kDuplicate,
    kRemove,
    kWaypoints,
    kLineAboveCopy,
    kCopy
  };
  std::array<QAction*, 9> mnuAC;
  /** For a flight whose class is not known. */
  QAction* mnuAddAircraft;
  QAction* mnuPaste;

 Q_SIGNALS:
  /** Another flight may be shown, or none. */
  void FlightShown();
  /** The waypoint editor opens, and null when it has closed. */
  void WaypointEditor(frmWP* form);
  /** Who the player is, "" for nobody. */
  void PlayerShown(const QString& text);
  /** The aircraft of the current flight is to become known. */
  void AddAircraftWanted();

 private:
  void Build();
  void BuildMenu();
  void Connect();
  void ConnectMenu();
  QString Decoded(const std::string& bytes) const;
  void ListMouseReleased(Qt::MouseButton button, QPoint globalPosition);
  void ListKeyReleased();
  void OpenMenu(QPoint globalPosition);
  void SetGroupEntries();
  void TakeSelectedFlight();
  void ShowSelectedFlight();
  std::size_t ShownPlanes(const std::vector<std::size_t>& flights);
  void ShowSkinChosen(std::size_t plane, int row, bool stores);
  void ClickChangeAircraft();
  void ClickMarkings();
  void ClickSkin(QAction* entry);
  void ClickDuplicate();
  void ClickRemove();
  void ClickCopy();
  void ClickAddAircraft();
  void ClickPaste();

  Session& session_;
  Popups& popups_;
};

}  // namespace rws
