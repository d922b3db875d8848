#pragma once

#include <QAction>
#include <QLabel>
#include <QMainWindow>
#include <QMenu>
#include <QPointer>
#include <QPushButton>
#include <QSplitter>
#include <QStatusBar>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>
#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <set>

#include "gamelists/game_names.h"
#include "library/forms/library_query.h"
#include "library/forms/query_box.h"
#include "library/seen_aircraft.h"
#include "mainwindow/flight_area.h"
#include "mainwindow/logic/start_up.h"
#include "mainwindow/message_bars.h"
#include "mainwindow/mission_list.h"
#include "mainwindow/mission_panel.h"
#include "mainwindow/popups.h"
#include "mission/pending_lines.h"
#include "mission/update.h"
#include "session/reading.h"
#include "session/recovery.h"
#include "session/session.h"
#include "session/undo.h"
#include "tools/logic/edit_many_step.h"
#include "tools/logic/folder_tools.h"
#include "tools/logic/mission_files.h"

namespace rws {

class FolderWatch;
class frmCheck;
class frmMap;
class WorkProgress;
class frmFind;
class frmPrefs;
class frmWP;
struct Finding;

/** The main window: the missions of one directory, the values of the one selected, and the flows
   that cross its panels. */
class frmRWS : public QMainWindow {
  Q_OBJECT

 public:
  explicit frmRWS(Session& session);
  ~frmRWS() override;

  /** The whole of start-up, up to the first mission on screen. Ends the program when another
     instance runs, no game directory is found or a table that it cannot do without is missing. */
  void LoadForm(const std::string& commandLine);
  /** Rereads `MissionDir` and shows the current mission. What that drops of unsaved edits can be
      undone; `by` names to the user what has dropped them. */
  void Start(const std::string& by = "rereading the folder");
  /** Reads the current mission on first use, takes its baseline and fills every control. Shows that
      flight of it; -1 is the first of the list. */
  void ShowMission(Baseline baseline = Baseline::Take, int flight = -1);
  /** Clears the window and fills its fixed lists. */
  void InitForm();
  /** Fills `lstMission` and selects the current mission. */
  void LoadMissionList();
  /** Shows the preferences and acts on what the user has changed there. */
  void SetPrefs();

  /** Marks the missions that differ from their files: in the list, in the status bar and by an
      asterisk in the title. */
  void ShowUnsaved(const std::set<int>& missions);
  /** Opens a folder, a mission in its folder, or a briefing with its mission, as the command line
      does, once pending edits are settled. */
  bool OpenPath(const std::string& path);

  /** Opens the check of missions: of those found, given by their full paths, else of the one on
      show. */
  void CheckMissions(const std::vector<std::string>& found);
  /** Null until the check is first opened. */
  frmCheck* Check() const { return check_; }

  /** A short text in the status bar that goes away by itself. */
  void Notice(const std::string& text);
  /** Ends the program without a question. */
  void Unload();

  /** What the command line asked for. */
  StartArguments Arguments;

  /** Where the names of aircraft, maps and squadrons come from. */
  GameNames Names;

  /** Leaves in the list what matches. */
  QueryBox* qryFilter;
  MissionList* lstMission;
  MissionPanel* missionPanel;
  FlightArea* flightArea;
  enum Button : std::size_t { kDirectory, kExit, kMinimize, kUpdate };
  std::array<QPushButton*, 4> cmd;
  QStatusBar* staBar;
  /** Panel 1 shows the directory, panel 2 the player. */
  std::array<QLabel*, 2> staPanels;
  /** How many missions are unsaved; empty without one. */
  QLabel* lblUnsaved;
  /** What an Update would do to the lines of the mission on show; a click shows them. */
  QToolButton* cmdLines;
  /** How far the reading of the missions is, with a button that stops it. */
  QWidget* boxReading;
  QLabel* lblReading;
  QToolButton* cmdStopReading;
  /** What waits for the user above the list. */
  MessageBars* bars;
  QToolBar* tlbMain;

  QMenu *mnuFile, *mnuEdit, *mnuView, *mnuTool, *mnuHelp, *mnuMisPop, *mnuCase;
  /** Hold what the menus at the rows of the two lists hold. */
  QMenu *mnuMission, *mnuFlight;
  QMenu* mnuRecent;
  QAction *mnuSave, *mnuSaveAll, *mnuRevert, *mnuOpenFolder, *mnuReread, *mnuClearRecent, *mnuExit;
  QAction *mnuUndo, *mnuRedo, *mnuFilter, *mnuFind, *mnuToolBar, *mnuRestoreBackup, *mnuChanges;
  QAction *mnuCheck, *mnuCompatibility, *mnuEditMany, *mnuAddMap;
  QAction* mnuMap;
  enum Tool : std::size_t {
    kSkinManager,
    kRenameAll,
    kConvertFolder,
    kCopyFrom,
    kLineAbovePreferences,
    kPreferences
  };
  std::array<QAction*, 6> mnuTools;
  enum HelpEntry : std::size_t { kContents, kAbout, kCheckForUpdates };
  std::array<QAction*, 3> mnuH;
  enum MissionEntry : std::size_t {
    kEditBrief,
    kViewText,
    kSpawnPoints,
    kAddSound,
    kLineAboveFiles,
    kSaveAs,
    kDelete,
    kMove,
    kRename
  };
  std::array<QAction*, 9> mnuMissionPop;
  enum Case : std::size_t { kManual, kProperCase, kLowercase, kUppercase };
  std::array<QAction*, 4> mnuCases;

  rws::Popups Popups;

  /** What is known of the missions of the folder. */
  MissionLibrary* Library;
  /** Made when it is first asked for. */
  frmFind* Find = nullptr;
  /** Likewise. A window that stays usable while a dialog of this one is open. */
  std::unique_ptr<frmMap> Map;

  /** The bar that tells that another program has changed the mission on show. */
  static constexpr char kReloadBar[] = "reload";
  /** The bar that tells why the lists of the game are not in use. */
  static constexpr char kNamesBar[] = "names";
  /** The bar that tells that an Update would change more than was edited. */
  static constexpr char kLinesBar[] = "lines";
  /** Asks about missions of which an Update would change more than was edited; in place of the form
      in tests. */
  AskUntouched AskLines;

 protected:
  void closeEvent(QCloseEvent* event) override;

  /** Opens the form that edits many missions at once; the current one is shown anew when it has
      written some. */
  void EditMany(std::vector<EditManyScope> scopes);

 private:
  void LoadTables();
  GameNames FindNames(ReadLists how);
  void LoadNames();
  bool ReloadNames(ReadLists how);
  void ReloadChangedNames();
  void ShowNamesAgain();
  void TellNames();
  void ClickNames(QWidget& parent);
  void ConnectOwnEntries();
  void EnableAddMap();
  std::vector<SeenIn> MissionsThatMayFly(const std::string& aircraftClass) const;
  SeenAircraft LookForClass(const std::string& aircraftClass);
  void ClickAddAircraft();
  void ClickAddMap();
  GameNames UseNames(const NameChoices& choices, ReadLists how);
  bool TakeInstance(const std::string& commandLine);
  void FillForm(const std::string& commandLine);
  void LoadPlacement();
  void SavePlacement();
  void PrepareControls();

  void Build();
  void BuildMenus();
  void BuildFileMenu();
  void BuildEditMenu();
  void BuildViewMenu();
  void BuildMirrorMenus();
  void BuildToolBar();
  void BuildMissionPopup();
  QWidget* BuildLeftSide();
  QWidget* BuildButtons();
  void BuildStatusBar();
  void BuildFilter();
  QWidget* BuildReading();
  void SetTabOrder();
  void Connect();
  void ConnectDocument();
  void TellUnkeptSettings();
  void ConnectList();
  void ConnectButtons();
  void ConnectPanels();
  void ConnectMissionMenu();
  void ConnectTools();
  void ConnectPrefs();
  void ConnectHelp();
  void ConnectMenus();
  void ConnectFolders();

  void ConnectFilter();
  void FollowMissions();
  void ApplyFilter();
  void ApplyFilterWhenFree();
  void TellFilterUnsaved();
  void ShowFilterMessage();
  void LeaveFilter();
  void GoIntoList();
  void ShowReading();
  void ClickFind();
  void TellFind(std::size_t row);
  void TellFindOfStep(bool isUndone);
  void StopReading();

  void FollowList(LeaveBy by);
  void ListMouseReleased(Qt::MouseButton button, int row, QPoint globalPosition);
  bool LeaveMission(LeaveBy by, int& mission);
  void LightCurrentMission();
  bool IsFilteredAway() const;
  bool RefuseGone(int mission);
  void OpenMissionMenu(QPoint globalPosition);
  void OpenMissionMenuAtItsRow();

  void EndMissionCommand(bool reread, const std::string& by = "");
  void RunFileCommand(const std::string& name,
                      ToolOutcome (*command)(const Document&, const Services&));
  void ClickEditBrief();
  void ClickViewText();
  void ClickSpawnPoints();
  void ClickAddSound();
  void ClickSaveAs();
  void ClickDelete();
  void ClickMove();
  void ClickParkedAircraft();

  void ClickContents();
  void ClickAbout();
  void ClickCheckForUpdates();
  bool SettleEdits();
  void RunTool(const std::string& title, bool rereads,
               const std::function<ToolResult(const ToolSeam&)>& tool);
  void TakeToolResult(const ToolResult& result, const std::string& by);
  void TellToolEnd(const ToolResult& result);
  void GoToFolder(const std::string& folder);
  void RememberFolder();
  void FillRecent();
  void ClickReread();
  void HearOtherStarts();
  void ClickSkinManager();
  std::vector<EditManyScope> ScopesHere() const;
  void ApplyPrefs(const frmPrefs& form);
  void ReloadPaintSchemes();

  void FillMission(Baseline baseline, int flight);

  void ConnectHistory();
  void ShowHistory();
  void ShowUnsavedMissions();
  void ClickSave();
  void ClickSaveAll();
  bool SaveMissions(const std::vector<std::string>& paths);
  void ClickRevert();
  void ClickRestoreBackup();
  void Travel(bool back);
  void OpenFolderOf(const std::string& folder);
  void GoTo(const std::string& path, int flight);
  void ShowRows(const std::vector<std::string>& gone = {});
  void TellNotDone(bool back, const std::string& title, const std::string& reason);
  void TellLeftOut(bool back, const std::string& title, const std::vector<std::string>& reasons);

  void ConnectRecovery();
  bool KeepEdits();
  void KeepRenamed();
  void ForgetEdits(const std::vector<std::string>& paths);
  void OfferRecovered();
  void ShowRecoveredBar();
  void RestoreEdits();
  void CompareRecovered();
  void OfferInterrupted();
  void ShowGivenBack(const std::string& path);
  void OfferHalfRenamed();
  bool AskUnsaved(const std::vector<std::string>& refused = {});

  void ConnectOutside();
  void LookOutside();
  void LookAtShownFile();
  void OfferReload(const std::string& path);
  void CompareWithDisk(const std::string& path, const std::string& time);
  std::vector<std::string> GoneRows() const;
  void WatchShown();

  void ConnectReferences();
  void RememberNames();
  void LookForReferences();
  void OfferToFollow(const std::vector<std::pair<std::string, std::string>>& renamed,
                     const QStringList& places);

  void ConnectMap();
  void ClickMap();
  void FollowWaypointEditor(frmWP* form);

  void BuildCheckMenu();
  bool OpenToCheck(const std::string& path);
  bool GoToFinding(const std::string& path, const Finding* finding);
  void ShowCompatibility();

  void ConnectLines();
  void LinesMayHaveChanged();
  void ShowPendingLines();
  void OfferToKeepLines();
  void ChooseShownLines(std::optional<UntouchedLines> choice);
  void StoreUntouched(UntouchedLines choice);
  void ClickChanges(bool mayChange = true);
  std::optional<UntouchedLines> AskAboutMissions(const std::vector<std::string>& paths);

  void Press(std::size_t button);
  void ClickDirectory();
  void ClickExit();
  bool ClickUpdate();
  bool WriteChanges();
  bool MayExit();
  /** Shut-down, but for the closing itself; runs once. */
  void Finish();
  void LightUpdate(bool lit);
  void EnableMission(bool enabled);
  void ShowDirectory();
  void ShowNoMissions();

  Session& session_;
  /** A work that is done on the way to something else, while it is shown. */
  std::unique_ptr<WorkProgress> work_;
  QSplitter* splSides;
  LibraryQuery* query_;
  /** Where the focus was when it came to the filter. */
  QPointer<QWidget> beforeFilter_;
  std::set<int> unsavedShown_;
  bool unloaded_ = false;
  /** The mission that the command line named has been found. */
  bool comLineMissionFound_ = false;
  QTimer* recoveryTimer_;
  RecoveryState recovery_;
  /** Names of the flights of the mission on show, as the last edit left them. */
  std::vector<std::string> names_;
  /** What an Update would do is worked out when the edits pause. */
  QTimer* linesTimer_;
  /** The mission and the text that were looked at last, and what was found. */
  std::string linesOf_;
  LineArray linesSeen_;
  MadeAnewCheck madeAnew_;
  frmCheck* check_ = nullptr;
  FolderWatch* watch_;
  /** The file that is watched, and as it was when it was last looked at. */
  std::string watched_;
  FileStamp stampSeen_;
  /** How many readings and writings of missions there were when one was last shown. */
  std::size_t readingsShown_ = 0;
  std::size_t goneShown_ = 0;
  /** How often in a row that file could not be read. */
  int failedLooks_ = 0;
  /** Place of the step whose undoing has been told as impossible, among all steps. */
  std::pair<std::size_t, std::size_t> stepToldOf_;
  /** What earlier runs have left is this one's. */
  std::shared_ptr<void> recoveredHeld_;
};

}  // namespace rws
