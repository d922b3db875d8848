#pragma once

#include <QGroupBox>
#include <QWidget>

#include "mainwindow/state.h"

namespace rws {

/** The right-hand side of the window: the place of the flight list and of the flight and plane
    panels. It holds their frames and the calls by which the mission list reaches them. */
class FlightArea : public QWidget {
  Q_OBJECT

 public:
  FlightArea(WindowContext context, QWidget* parent);

  /** Empties the flight list. */
  void ClearFlightList();
  /** Fills the fixed lists of the flight and plane panels. */
  void FillFixedLists();
  /** Empties the plane panels. */
  void ClearFrames(bool all);
  /** Shows a flight of the current mission, after the list was rebuilt if `reload` is set; the
     selected row's flight when `index` is -1. */
  void PlaneChg(bool reload, int index, bool playerCleared);
  /** Fills the flight panel. */
  void LoadFlight(int index);
  /** Shows that the mission has no flights. */
  void ShowNoFlights();
  void ResetCaptions();

  QGroupBox *fraGroup, *fraFlight;

 private:
  WindowContext context_;
};

}  // namespace rws
