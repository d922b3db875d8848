#pragma once

#include <QAction>
#include <QGroupBox>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <array>

#include "controls/dialog.h"
#include "controls/grid.h"
#include "session/session.h"

namespace rws {

/** The waypoint editor: the route of the current flight in a grid, in which altitude, speed, type
    and radio silence are changed. Each change is in the record at once; closing the form, by
    whichever way, keeps it. The caller then runs `SetModify`. */
class frmWP : public Dialog {
  Q_OBJECT

 public:
  frmWP(Session& session, QWidget* parent);
  ~frmWP() override;

  /** Fills the form. Without a current flight it stays empty. */
  void LoadForm();
  /** Goes to the row of a waypoint, counted from 0. */
  void SelectWaypoint(std::size_t waypoint);
  /** Takes what is being typed and stores the chosen units, however the form is closed. */
  void done(int result) override;

  QGroupBox *Frame1, *fra;
  enum Units : std::size_t { kMetric, kNonMetric };
  std::array<QRadioButton*, 2> opt;
  Grid* grd;
  enum Command : std::size_t { kApply, kExit };
  std::array<QPushButton*, 2> cmd;
  QMenu *mnuMain, *mnuPop;
  QAction* mnuMain1;
  /** In the order of `kWaypointKinds`. */
  std::array<QAction*, 4> mnuPop1;

  /** Meters and kilometers; else feet and miles. */
  bool Metric = true;
  /** Whether the field changed last differs from the shadow's. Earlier ones do not count. */
  bool WPModified = false;
  /** Text of the cell when its edit began. */
  QString CellBefore;

 private:
  void Build();
  QMenuBar* BuildMenus();
  QGroupBox* BuildUnits();
  QLayout* BuildButtons();
  void Connect();

  void LoadTable();
  /** The same for the one row that a change is seen in. */
  void LoadRow(int row);
  void ShowHeadings();
  void OfferKinds();
  void SetKind(std::size_t kind);
  void UnitChosen();
  void MouseStep(Qt::MouseButton button, QPoint globalPosition);
  void FlipRadioSilence();
  void EndEdit(int row, int column, const QString& text);
  void TakeText(int row, int column, const QString& text);
  void TakeNumber(int row, int column, const std::string& value);
  void EditRows(const Grid::Cells& cells);
  std::string AskValue(int column);

  Session& session_;
};

}  // namespace rws
