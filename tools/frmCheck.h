#pragma once

#include <QCheckBox>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>
#include <array>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "controls/dialog.h"
#include "controls/report_list.h"
#include "library/mission_checker.h"
#include "session/session.h"
#include "tools/finding_model.h"

namespace rws {

/** Lists what is wrong with the mission on show, as an Update would write it, with the missions of
    its folder or with those that were found. Goes to where a finding is, and mends some as edits.
    Stays open beside the main window. */
class frmCheck : public Dialog {
  Q_OBJECT

 public:
  frmCheck(Session& session, QWidget* parent);
  ~frmCheck() override;

  void LoadForm();
  /** Stores size and place, however the form is closed. */
  void done(int result) override;

  enum Subject : std::size_t { kShown, kFolder, kFound };
  /** Checks anew; what was found before goes. */
  void Check(Subject subject);
  /** Lets these missions be checked, by their full paths; none take the choice away. */
  void SetFound(std::vector<std::string> paths);

  /** The next check reads the tables anew. */
  void ForgetTables() { tables_.reset(); }

  /** What the window shows of the current mission. */
  std::function<ShownValues()> Shown;
  /** Shows a mission and the flight of a finding, or of none; false when that was cancelled. */
  std::function<bool(const std::string& path, const Finding* finding)> GoTo;
  /** Called when the current mission has been mended. */
  std::function<void()> Mended;
  /** Shows whether the mission on show suits the game. */
  std::function<void()> Compatibility;

  std::array<QRadioButton*, 3> optWhat;
  /** Of notes, warnings and errors. */
  std::array<QCheckBox*, 3> chkSeverity;
  QLineEdit* txtFilter;
  ReportList* lstFindings;
  FindingModel Model;
  /** The whole sentence of the finding that is lit. */
  QLabel* lblText;
  QLabel* lblState;
  QProgressBar* prgState;
  enum Command : std::size_t {
    kCheck,
    kStop,
    kGoTo,
    kMend,
    kMendAll,
    kCompatibility,
    kExport,
    kClose
  };
  std::array<QPushButton*, 8> cmd;

 private:
  void Build();
  void BuildSubjects();
  void BuildList();
  void BuildCommands();
  void PlaceControls();
  void Connect();
  void Filter();
  std::vector<CheckedMission> FindingsNow();
  void DropStale(std::vector<Finding>& findings);
  void CheckCurrent();
  void TakeResults();
  void Take(std::vector<CheckedMission> batch);
  std::ptrdiff_t UnsavedAt(const std::string& path) const;
  void ShowProgress(std::size_t found);
  void EndRun(const QString& how);
  void ShowCounts(const QString& how);
  void EnableCommands();
  void ShowText();
  void SpanHeadings(int first);
  void GoToCurrent(bool alsoElsewhere);
  void Mend(const std::vector<int>& rows);
  bool IsShown(const std::string& path) const;
  std::vector<int> MendableRows() const;
  void Export();
  /** The tables as they are on disk, read once while the form is open. */
  const std::shared_ptr<const CheckTables>& Tables();

  Session& session_;
  std::vector<std::string> found_;
  std::shared_ptr<const CheckTables> tables_;
  std::unique_ptr<GameFiles> game_;
  /** Null while nothing is under way. */
  std::unique_ptr<MissionChecker> checker_;
  /** Missions with unsaved edits when the run began, sorted. */
  std::vector<std::string> unsaved_;
  /** Of these some could not be read. */
  std::size_t checked_ = 0, leftOut_ = 0;
  std::string lastChecked_;
  QElapsedTimer sinceBegin_;
  QTimer timer_{this};
};

}  // namespace rws
