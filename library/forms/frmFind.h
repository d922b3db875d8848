#pragma once

#include <QCheckBox>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QToolButton>
#include <array>
#include <functional>
#include <string>
#include <vector>

#include "controls/dialog.h"
#include "library/forms/mission_preview.h"
#include "library/forms/mission_table.h"
#include "library/forms/query_box.h"

namespace rws {

/** Looks for missions in a folder and those below it: a line that says which, a table of what was
    found, and what the selected one is about. Stays open beside the main window. */
class frmFind : public Dialog {
  Q_OBJECT

 public:
  frmFind(Session& session, QWidget* parent);

  /** Reads the folder that was looked through last. */
  void LoadForm();
  /** Stores place, columns and the query, however the form is closed. */
  void done(int result) override;

  /** Full paths of all that were found, and of those that are selected, in the order of the
      table. */
  std::vector<std::string> FoundPaths() const;
  std::vector<std::string> SelectedPaths() const;

  /** Opens a mission in the main window. */
  std::function<void(const std::string& path)> OpenMission = [](const std::string&) {};
  /** Checks missions, and edits those that were found. */
  std::function<void(const std::vector<std::string>& paths)> CheckMissions = [](const auto&) {};
  std::function<void()> EditMissions = [] {};

  QLineEdit* txtFolder;
  QCheckBox* chkBelow;
  QueryBox* qryFind;
  /** The last queries. */
  QToolButton* cmdRecent;
  QMenu* mnuRecent;
  MissionLibrary* Library;
  LibraryQuery* Query;
  MissionTable* Table;
  ReportList* lstFound;
  /** Which columns there are. */
  QMenu* mnuColumns;
  MissionPreview* preview;
  /** How far the reading is, and what could not be read. */
  QLabel* lblState;
  enum Command : std::size_t { kBrowse, kStop, kOpen, kExport, kClose, kCheck, kEdit };
  std::array<QPushButton*, 7> cmd;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Build();
  void BuildTable();
  void PlaceControls();
  void Connect();
  void ConnectTable();

  void Browse();
  void ReadFolder();
  void ShowState();
  void ShowFound();
  /** Fills the table anew; what was selected stays so. */
  void Fill(const std::function<void()>& fill);
  /** Selects what was selected before the folder was read anew, as it comes; true when the mission
      that was lit has come. */
  bool TakeAwaited(std::vector<bool>& wanted, std::size_t& current);
  void ForgetAwaited();
  std::string CurrentPath() const;
  void SelectRows(const std::vector<bool>& wanted, std::size_t current);
  void ShowPreview();
  void SortByHeader(int column);
  void Open();
  void Export();

  void LoadColumns();
  void StoreColumns();
  void ResetColumns();
  void ShowColumn(MissionColumn column, int width);
  std::vector<MissionColumn> ShownColumns() const;
  void RememberQuery();
  void FillRecent();

  Session& session_;
  QSplitter* parts_;
  QTimer previewTimer_{this};
  /** Paths of missions that are to be selected, and of the one to be lit. */
  std::vector<std::string> awaited_;
  std::string awaitedCurrent_;
  bool isFilling_ = false;
};

}  // namespace rws
