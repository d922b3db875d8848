#pragma once

#include <QDialog>
#include <QGroupBox>
#include <QMenu>
#include <QWidget>
#include <array>
#include <functional>

#include "mainwindow/flight_list.h"
#include "mainwindow/flight_panel.h"
#include "mainwindow/plane_panels.h"
#include "session/session.h"

namespace rws {

/** The right-hand side of the window: the flight list and the frames of flight and planes. It knows
    which flight is current and to which flights a command applies. */
class FlightArea : public QWidget {
  Q_OBJECT

 public:
  FlightArea(Session& session, QWidget* parent);

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
  void SetMultipleMode();
  void SetWaypointMenuCaption();
  /** Captions of a window without a flight. */
  void ResetCaptions();
  /** Shows that the mission has no flights. */
  void ShowNoFlights();

  /** Fills the fixed lists of the flight and plane panels. */
  void FillFixedLists();
  /** Empties the plane panels. */
  void ClearFrames(bool all);

  FlightList* lstPlanes;
  FlightPanel* fraFlight;
  QGroupBox* fraGroup;
  PlanePanels* planes;
  QMenu *mnuAircraft, *mnuSkin;
  std::array<QAction*, 9> mnuAC;

  /** Opens the flight menu and returns when it has closed; a test replaces it. */
  std::function<void(QPoint globalPosition)> PopUpAircraftMenu;
  /** Shows a dialog and returns when it has closed; a test works the dialog instead. */
  std::function<void(QDialog& dialog)> ShowDialog;
  /** Shows the player in the status bar. */
  std::function<void(const QString& text)> ShowPlayer;

 private:
  void Build();
  void BuildMenu();
  void Connect();
  void ConnectMenu();
  Mission& Current();
  Flight& FlightAt(int index);
  QString Decoded(const std::string& bytes) const;
  void ListMouseReleased(Qt::MouseButton button, QPoint globalPosition);
  void ListKeyReleased();
  void OpenMenu(QPoint globalPosition);
  void TakeSelectedFlight();
  std::vector<std::size_t> SelectedFlights() const;
  int MostPlanes(const std::vector<std::size_t>& flights);
  void ClickChangeAircraft();
  void ClickMarkings();
  void ClickSkin(QAction* entry);
  void ClickDuplicate();
  void ClickRemove();
  void ClickWaypoints();
  void ClickCopy();

  Session& session_;
};

}  // namespace rws
