#include <QDoubleValidator>
#include <QHBoxLayout>
#include <QMenuBar>
#include <QScreen>
#include <QStatusBar>
#include <QToolBar>
#include <QVBoxLayout>

#include "controls/elided_label.h"
#include "controls/layouts.h"
#include "controls/menu_entries.h"
#include "map/forms/frmMap.h"
#include "platform/svg_file.h"

namespace rws {

namespace {

QAction* Entry(QMenu* menu, const QString& caption, const char* objectName,
               const QKeySequence& key = {}, bool checkable = false) {
  QAction* entry = AddEntry(menu, caption, QLatin1String(objectName), checkable);
  entry->setShortcut(key);
  return entry;
}

QMenu* Menu(QMenu* menu, const char* objectName) {
  menu->setObjectName(QLatin1String(objectName));
  return menu;
}

/** Keys that the map itself answers while it has the focus are told beside the entry. */
QString WithKey(const QString& caption, const char* key) {
  return caption + u'\t' + QLatin1String(key);
}

}  // namespace

void frmMap::Build() {
  setObjectName(QStringLiteral("frmMap"));
  setWindowTitle(tr("Map"));
  view = Named(new MapView, "view", tr("Map"));
  BuildMapMenu();
  BuildEditMenu();
  BuildViewMenu();
  BuildToolBar();
  splMap = Named(new QSplitter(Qt::Vertical), "splMap");
  splMap->setChildrenCollapsible(false);
  view->setMinimumHeight(fontMetrics().height() * 8);
  splMap->addWidget(view);
  splMap->addWidget(BuildProfile());
  splMap->setStretchFactor(0, 1);
  auto* middle = new QWidget;
  auto* column = new QVBoxLayout(middle);
  timeBar = Named(new TimeBar, "timeBar", tr("Time"));
  column->addWidget(splMap, 1);
  column->addWidget(timeBar);
  column->addWidget(BuildPlacePanel());
  setCentralWidget(middle);
  lblHit = Named(new ElidedLabel, "lblHit", tr("What is under the pointer"));
  lblPlace = Named(new QLabel, "lblPlace", tr("Place under the pointer"));
  for (auto* label : {lblHit, lblPlace}) label->setTextFormat(Qt::PlainText);
  statusBar()->addWidget(lblHit, 1);
  statusBar()->addPermanentWidget(lblPlace);
  TabOrder({view, profile, timeBar, txtX, txtY});
  view->setFocus();
  const QSize comfortable(fontMetrics().averageCharWidth() * 140, fontMetrics().height() * 46);
  const QSize most = screen()->availableSize();
  resize(comfortable.expandedTo(most * 3 / 4).boundedTo(most));
  splMap->setSizes({height() * 7 / 10, height() * 3 / 10});
}

void frmMap::BuildMapMenu() {
  mnuMap = Menu(menuBar()->addMenu(tr("&Map")), "mnuMap");
  mnuPicture = Entry(mnuMap, tr("Use a &Picture for This Map..."), "mnuPicture");
  mnuNoPicture = Entry(mnuMap, tr("Use &No Picture"), "mnuNoPicture");
  mnuMap->addSeparator();
  mnuExport = Menu(mnuMap->addMenu(tr("&Export")), "mnuExport");
  mnuPng = Entry(mnuExport, tr("&PNG as Shown..."), "mnuPng");
  mnuPngLarge = Entry(mnuExport, tr("&Large PNG..."), "mnuPngLarge");
  mnuSvg = Entry(mnuExport, tr("&SVG..."), "mnuSvg");
  mnuSvg->setVisible(CanWriteSvg());
  mnuPdf = Entry(mnuExport, tr("&Briefing as PDF..."), "mnuPdf");
  mnuCopy = Entry(mnuMap, tr("&Copy Picture"), "mnuCopyPicture", Qt::CTRL | Qt::SHIFT | Qt::Key_C);
  mnuTable = Entry(mnuMap, tr("&Table of Flights..."), "mnuTable", Qt::CTRL | Qt::Key_T);
  mnuMap->addSeparator();
  mnuClose = Entry(mnuMap, tr("C&lose"), "mnuClose", QKeySequence::Close);
}

void frmMap::BuildEditMenu() {
  mnuEdit = Menu(menuBar()->addMenu(tr("&Edit")), "mnuMapEdit");
  mnuInsert = Entry(mnuEdit, tr("&Insert Waypoint Here"), "mnuInsert", Qt::Key_Insert);
  mnuDelete = Entry(mnuEdit, tr("&Delete Waypoint"), "mnuDelete", QKeySequence::Delete);
  mnuWholeRoute = Entry(mnuEdit, tr("&Move Whole Route"), "mnuWholeRoute");
  mnuReverse = Entry(mnuEdit, tr("&Reverse"), "mnuReverse");
  mnuUnlock = Entry(mnuEdit, tr("&Unlock Take-off and Landing"), "mnuUnlock", {}, true);
  mnuEdit->addSeparator();
  mnuWaypoints = Entry(mnuEdit, tr("Edit &Waypoints..."), "mnuMapWaypoints");
  mnuBaseText = Entry(mnuEdit, tr("Home &Base as Text..."), "mnuBaseText");
  mnuPop = Menu(new QMenu(this), "mnuMapPop");
  for (auto* entry : {mnuInsert, mnuDelete, mnuWholeRoute, mnuReverse}) mnuPop->addAction(entry);
  mnuPop->addSeparator();
  for (auto* entry : {mnuWaypoints, mnuBaseText}) mnuPop->addAction(entry);
}

void frmMap::BuildViewMenu() {
  mnuView = Menu(menuBar()->addMenu(tr("&View")), "mnuMapView");
  mnuFitMission = Entry(mnuView, WithKey(tr("&Fit Mission"), "F"), "mnuFitMission");
  mnuFitFlight = Entry(mnuView, WithKey(tr("Fit F&light"), "Shift+F"), "mnuFitFlight");
  mnuZoomIn = Entry(mnuView, tr("Zoom &In"), "mnuZoomIn", QKeySequence::ZoomIn);
  mnuZoomOut = Entry(mnuView, tr("Zoom &Out"), "mnuZoomOut", QKeySequence::ZoomOut);
  mnuRuler = Entry(mnuView, WithKey(tr("&Ruler"), "M"), "mnuRuler");
  mnuView->addSeparator();
  mnuLayers = Menu(mnuView->addMenu(tr("Sho&w")), "mnuLayers");
  for (std::size_t i = 0; i < kMapLayers; ++i) {
    const QString name =
        QString::fromLatin1(kMapLayerNames[i].data(), qsizetype(kMapLayerNames[i].size()));
    mnuLayer[i] = AddEntry(mnuLayers, name, QStringLiteral("mnuLayer(%1)").arg(i), true);
    mnuLayer[i]->setChecked(true);
  }
  mnuCompare = Menu(mnuView->addMenu(tr("&Compare With")), "mnuCompare");
  mnuView->addSeparator();
  mnuLegend = Entry(mnuView, tr("L&egend"), "mnuLegend", {}, true);
  mnuProfile = Entry(mnuView, tr("&Profile"), "mnuProfile", {}, true);
  mnuOverTime = Entry(mnuView, tr("Profile Over &Time"), "mnuOverTime", {}, true);
  for (auto* entry : {mnuLegend, mnuProfile}) entry->setChecked(true);
}

void frmMap::BuildToolBar() {
  tlbMap = Named(addToolBar(tr("Map")), "tlbMap", tr("Tool Bar"));
  tlbMap->setMovable(false);
  tlbMap->setToolButtonStyle(Qt::ToolButtonTextOnly);
  const auto menu = [&](QMenu* entries, const char* name) {
    auto* button = Named(new QToolButton, name, Spoken(entries->title()));
    button->setText(Spoken(entries->title()));
    button->setMenu(entries);
    button->setPopupMode(QToolButton::InstantPopup);
    tlbMap->addWidget(button);
  };
  for (auto* entry : {mnuFitMission, mnuFitFlight, mnuZoomIn, mnuZoomOut, mnuRuler})
    tlbMap->addAction(entry);
  tlbMap->addSeparator();
  menu(mnuLayers, "cmdLayers");
  menu(mnuCompare, "cmdCompare");
  tlbMap->addSeparator();
  for (auto* entry : {mnuUnlock, mnuReverse, mnuTable}) tlbMap->addAction(entry);
  // A tab in a caption parts the key from it, which a button does not know.
  for (auto* entry : tlbMap->actions()) {
    if (entry->text().isEmpty()) continue;
    const QStringList parts = entry->text().split(u'\t');
    const QString caption = Spoken(parts[0]).remove(QStringLiteral("..."));
    entry->setIconText(caption);
    const QString key = parts.size() > 1 ? parts[1] : entry->shortcut().toString();
    entry->setToolTip(key.isEmpty() ? caption : QStringLiteral("%1 (%2)").arg(caption, key));
  }
  // All of them fit into a small window.
  mnuUnlock->setIconText(tr("Unlock"));
  mnuTable->setIconText(tr("Table"));
}

QWidget* frmMap::BuildProfile() {
  boxProfile = Named(new QWidget, "boxProfile");
  auto* column = new QVBoxLayout(boxProfile);
  column->setContentsMargins(0, 0, 0, 0);
  profile = Named(new ProfileView, "profile", tr("Profile"));
  lblMeetings = Named(new ElidedLabel, "lblMeetings", tr("Who meets whom"));
  lblMeetings->setTextFormat(Qt::PlainText);
  lblMeetings->hide();
  column->addWidget(profile, 1);
  column->addWidget(lblMeetings);
  return boxProfile;
}

QWidget* frmMap::BuildPlacePanel() {
  auto* box = new QWidget;
  auto* row = new QHBoxLayout(box);
  row->setContentsMargins(0, 0, 0, 0);
  lblPoint = Named(new QLabel, "lblPoint", tr("Selected waypoint"));
  lblPoint->setTextFormat(Qt::PlainText);
  lblPoint->setMinimumWidth(fontMetrics().averageCharWidth() * 24);
  row->addWidget(lblPoint);
  const std::array<std::pair<QLineEdit**, QString>, 2> boxes{
      {{&txtX, tr("&X [m]:")}, {&txtY, tr("&Y [m]:")}}};
  for (const auto& [place, caption] : boxes) {
    auto* text = new QLineEdit;
    *place = Named(text, place == &txtX ? "txtX" : "txtY", Spoken(caption).remove(u':'),
                   tr("Metres from the south-west corner of the map; the other selected waypoints "
                      "move along"));
    text->setFixedWidth(fontMetrics().averageCharWidth() * 14);
    auto* label = new QLabel(caption);
    label->setBuddy(text);
    row->addWidget(label);
    row->addWidget(text);
  }
  row->addStretch();
  return box;
}

}  // namespace rws
