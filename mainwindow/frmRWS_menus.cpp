#include <QMenuBar>

#include "controls/layouts.h"
#include "controls/menu_entries.h"
#include "mainwindow/frmRWS.h"
#include "platform/icons.h"
#include "services/setting_values.h"
#include "services/trapped.h"

namespace rws {

namespace {

QMenu* Titled(QMenu* menu, const char* objectName) {
  menu->setObjectName(QLatin1String(objectName));
  return menu;
}

/** The tip of a tool button follows the caption, which may name a step: "Undo Fuel (Ctrl+Z)". */
void KeepTip(QAction* entry) {
  const auto tell = [entry] {
    const QString caption = Spoken(entry->text()).remove(QStringLiteral("..."));
    const QString key = entry->shortcut().toString(QKeySequence::NativeText);
    const QString tip = key.isEmpty() ? caption : QStringLiteral("%1 (%2)").arg(caption, key);
    if (entry->toolTip() != tip) entry->setToolTip(tip);
  };
  QObject::connect(entry, &QAction::changed, entry, tell);
  tell();
}

QIcon ToolIcon(const char* name) {
  return ProgramIcon(QStringLiteral("toolbar/") + QLatin1String(name));
}

}  // namespace

void frmRWS::BuildMenus() {
  BuildFileMenu();
  BuildEditMenu();
  BuildViewMenu();
  BuildMirrorMenus();
  mnuTool = Titled(menuBar()->addMenu(tr("&Tools")), "mnuTool");
  AddEntries<6>(mnuTool, mnuTools, "mnuTools",
                {tr("&Skin Manager"), tr("&Rename All"), tr("&Convert Mission Folder"),
                 tr("Copy &From"), QString(), tr("RWS &Preferences")});
  mnuTool->addSeparator();
  mnuFind = AddEntry(mnuTool, tr("F&ind Missions..."), QStringLiteral("mnuFind"));
  mnuFind->setShortcut(Qt::CTRL | Qt::SHIFT | Qt::Key_F);
  BuildCheckMenu();
  mnuEditMany = AddEntry(mnuTool, tr("&Edit Many Missions..."), QStringLiteral("mnuEditMany"));
  mnuHelp = Titled(menuBar()->addMenu(tr("Hel&p")), "mnuHelp");
  AddEntries<3>(mnuHelp, mnuH, "mnuH", {tr("&Contents"), tr("&About"), tr("Check for &Updates")});
}

void frmRWS::BuildFileMenu() {
  mnuFile = Titled(menuBar()->addMenu(tr("&File")), "mnuFile");
  mnuSave = AddEntry(mnuFile, tr("&Save"), QStringLiteral("mnuSave"));
  mnuSave->setShortcut(Qt::CTRL | Qt::Key_S);
  mnuSaveAll = AddEntry(mnuFile, tr("Save &All"), QStringLiteral("mnuSaveAll"));
  mnuSaveAll->setShortcut(Qt::CTRL | Qt::SHIFT | Qt::Key_S);
  mnuRevert = AddEntry(mnuFile, tr("Re&vert to File"), QStringLiteral("mnuRevert"));
  for (auto* entry : {mnuSave, mnuSaveAll, mnuRevert}) entry->setEnabled(false);
  mnuFile->addSeparator();
  mnuOpenFolder = AddEntry(mnuFile, tr("&Open Folder..."), QStringLiteral("mnuOpenFolder"));
  mnuOpenFolder->setShortcut(Qt::CTRL | Qt::Key_O);
  mnuRecent = Titled(mnuFile->addMenu(tr("Recent &Folders")), "mnuRecent");
  mnuRecent->setToolTipsVisible(true);
  mnuRecent->addSeparator();
  mnuClearRecent = AddEntry(mnuRecent, tr("&Clear"), QStringLiteral("mnuClearRecent"));
  mnuReread = AddEntry(mnuFile, tr("&Reread Folder"), QStringLiteral("mnuReread"));
  mnuReread->setShortcut(Qt::Key_F5);
  mnuFile->addSeparator();
  mnuExit = AddEntry(mnuFile, tr("E&xit"), QStringLiteral("mnuExit"));
}

void frmRWS::BuildEditMenu() {
  mnuEdit = Titled(menuBar()->addMenu(tr("&Edit")), "mnuEdit");
  mnuUndo = AddEntry(mnuEdit, tr("&Undo"), QStringLiteral("mnuUndo"));
  mnuUndo->setShortcut(Qt::CTRL | Qt::Key_Z);
  mnuRedo = AddEntry(mnuEdit, tr("&Redo"), QStringLiteral("mnuRedo"));
  mnuRedo->setShortcuts({Qt::CTRL | Qt::SHIFT | Qt::Key_Z, Qt::CTRL | Qt::Key_Y});
  for (auto* entry : {mnuUndo, mnuRedo}) entry->setEnabled(false);
  mnuEdit->addSeparator();
  // Here too, as a mission without flights has no menu of them.
  mnuEdit->addAction(flightArea->mnuPaste);
  mnuFilter = AddEntry(mnuEdit, tr("&Filter Missions"), QStringLiteral("mnuFilter"));
  mnuFilter->setShortcut(Qt::CTRL | Qt::Key_F);
}

void frmRWS::BuildViewMenu() {
  mnuView = Titled(menuBar()->addMenu(tr("&View")), "mnuView");
  mnuMap = AddEntry(mnuView, tr("&Map"), QStringLiteral("mnuMap"));
  mnuMap->setShortcut(Qt::CTRL | Qt::Key_M);
}

/** The entries are those of the menus at the rows, so that each state is that of the other. */
void frmRWS::BuildMirrorMenus() {
  mnuMission = Titled(menuBar()->addMenu(tr("&Mission")), "mnuMission");
  mnuMission->addActions(mnuMisPop->actions());
  mnuMission->addSeparator();
  mnuRestoreBackup =
      AddEntry(mnuMission, tr("Restore a Bac&kup..."), QStringLiteral("mnuRestoreBackup"));
  mnuRestoreBackup->setEnabled(false);
  mnuChanges = AddEntry(mnuMission, tr("C&hanges..."), QStringLiteral("mnuChanges"));
  mnuAddMap = AddEntry(mnuMission, tr("Add This Ma&p..."), QStringLiteral("mnuAddMap"));
  mnuAddMap->setEnabled(false);
  mnuFlight = Titled(menuBar()->addMenu(tr("Fli&ght")), "mnuFlight");
  mnuFlight->addActions(flightArea->mnuAircraft->actions());
  for (auto* menu : {mnuMission, mnuFlight}) menu->menuAction()->setEnabled(false);
}

void frmRWS::BuildToolBar() {
  tlbMain = new QToolBar(tr("Tool &Bar"), this);
  tlbMain->setObjectName(QStringLiteral("tlbMain"));
  tlbMain->setAccessibleName(tr("Tool Bar"));
  tlbMain->setMovable(false);
  tlbMain->setFloatable(false);
  const int side = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this);
  tlbMain->setIconSize({side, side});
  const std::array<std::pair<QAction*, const char*>, 4> entries{
      {{mnuOpenFolder, "open"}, {mnuSave, "save"}, {mnuUndo, "undo"}, {mnuRedo, "redo"}}};
  for (const auto& [entry, icon] : entries) {
    entry->setIcon(ToolIcon(icon));
    KeepTip(entry);
    tlbMain->addAction(entry);
    if (entry == mnuSave) tlbMain->addSeparator();
  }
  addToolBar(tlbMain);
  mnuToolBar = tlbMain->toggleViewAction();
  mnuToolBar->setObjectName(QStringLiteral("mnuToolBar"));
  mnuView->addAction(mnuToolBar);
}

void frmRWS::BuildMissionPopup() {
  mnuMisPop = Titled(new QMenu(this), "mnuMisPop");
  AddEntries<9>(
      mnuMisPop, mnuMissionPop, "mnuMissionPop",
      {tr("Edit Mission &Brief"), tr("&View in Notepad"), tr("Edit &Spawn Points"),
       tr("&Add Sound File"), QString(), tr("Sav&eAs"), tr("&Delete"), tr("&Move"), tr("&Rename")});
  mnuCase = Titled(new QMenu(mnuMisPop), "mnuCase");
  AddEntries<4>(mnuCase, mnuCases, "mnuCase",
                {tr("&Manual"), tr("&Proper Case"), tr("&Lowercase"), tr("&Uppercase")});
  mnuMissionPop[kRename]->setMenu(mnuCase);
}

void frmRWS::ConnectMenus() {
  const Services& services = session_.Services;
  connect(mnuMission, &QMenu::aboutToShow, this, Trapped(services, "mnuMission_Popup", [this] {
            LightCurrentMission();
            EnableAddMap();
          }));
  connect(mnuFlight, &QMenu::aboutToShow, this,
          Trapped(services, "mnuFlight_Popup", [this] { flightArea->PrepareMenu(); }));
  connect(flightArea->lstPlanes->model(), &QAbstractItemModel::modelReset, this,
          [this] { mnuFlight->menuAction()->setEnabled(flightArea->lstPlanes->RowCount() > 0); });
  // Not `toggled`, which also comes when the window is hidden.
  connect(mnuToolBar, &QAction::triggered, this,
          Trapped(services, "mnuToolBar_Click", [this](bool shown) {
            WriteSetting(session_.Services.Settings, setting::ToolBar, shown ? "True" : "False");
          }));
}

}  // namespace rws
