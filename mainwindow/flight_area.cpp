#include "mainwindow/flight_area.h"

#include <QVBoxLayout>

namespace rws {

FlightArea::FlightArea(WindowContext context, QWidget* parent)
    : QWidget(parent),
      fraGroup(new QGroupBox(this)),
      fraFlight(new QGroupBox(this)),
      context_(context) {
  fraGroup->setObjectName(QStringLiteral("fraGroup"));
  fraFlight->setObjectName(QStringLiteral("fraFlight"));
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(fraFlight, 1);
  column->addWidget(fraGroup, 2);
  ResetCaptions();
}

void FlightArea::ResetCaptions() {
  fraFlight->setTitle(tr("None"));
  fraGroup->setTitle(tr("None"));
}

void FlightArea::ShowNoFlights() { ResetCaptions(); }

void FlightArea::ClearFlightList() {}
void FlightArea::FillFixedLists() {}
void FlightArea::ClearFrames(bool) {}
void FlightArea::PlaneChg(bool, int, bool) {}
void FlightArea::LoadFlight(int) {}

}  // namespace rws
