#include <QVBoxLayout>

#include "controls/group_frame.h"
#include "controls/menu_entries.h"
#include "mainwindow/flight_area.h"

namespace rws {

void FlightArea::Build() {
  lstPlanes = new FlightList(session_.Services.Page, this);
  lstPlanes->setObjectName(QStringLiteral("lstPlanes"));
  lstPlanes->setAccessibleName(tr("Flights"));
  SetTight(false);
  fraFlight = new FlightPanel(session_, *lstPlanes, this);
  fraGroup = new GroupFrame(this);
  fraGroup->setObjectName(QStringLiteral("fraGroup"));
  planes = new PlanePanels(session_, fraGroup);
  auto* group = new QVBoxLayout(fraGroup);
  group->addWidget(planes);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(lstPlanes, 1);
  column->addWidget(fraFlight);
  column->addWidget(fraGroup);
  ResetCaptions();
}

void FlightArea::SetTight(bool tight) {
  // Room for a usual mission's flights; the panels below keep their height.
  const int lines = tight ? 5 : 10;
  lstPlanes->setMinimumHeight(fontMetrics().height() * lines);
}

void FlightArea::BuildMenu() {
  mnuAircraft = new QMenu(this);
  mnuAircraft->setObjectName(QStringLiteral("mnuAircraft"));
  const std::array<QString, 9> captions{tr("&Change Aircraft"),
                                        tr("Change Flight &Skin"),
                                        tr("&Markings On"),
                                        QString(),
                                        tr("Create &Duplicate Groups"),
                                        tr("&Remove Selected Flight"),
                                        tr("&Edit Waypoints"),
                                        QString(),
                                        tr("Copy Selected to Clip&board")};
  for (std::size_t i = 0; i < mnuAC.size(); ++i) {
    mnuAC[i] =
        captions[i].isEmpty() ? mnuAircraft->addSeparator() : mnuAircraft->addAction(captions[i]);
    mnuAC[i]->setObjectName(QStringLiteral("mnuAC(%1)").arg(i));
  }
  mnuPaste = AddEntry(mnuAircraft, tr("&Paste Flights"), QStringLiteral("mnuPaste"));
  mnuPaste->setShortcut(QKeySequence::Paste);
  mnuAircraft->addSeparator();
  mnuAddAircraft =
      AddEntry(mnuAircraft, tr("&Add This Aircraft..."), QStringLiteral("mnuAddAircraft"));
  mnuAddAircraft->setEnabled(false);
  mnuAC[kMarkings]->setCheckable(true);
  // Of the list alone: elsewhere these keys are those of the control that has the focus.
  mnuAC[kCopy]->setShortcut(QKeySequence::Copy);
  mnuAC[kCopy]->setShortcutContext(Qt::WidgetShortcut);
  lstPlanes->addAction(mnuAC[kCopy]);
  mnuSkin = new QMenu(mnuAircraft);
  mnuSkin->setObjectName(QStringLiteral("mnuSkin"));
  mnuSkin->addAction(tr("None"));
  mnuAC[kFlightSkin]->setMenu(mnuSkin);
  planes->mnuSkin = mnuSkin;
}

}  // namespace rws
