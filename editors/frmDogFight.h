#pragma once

#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QSlider>
#include <QStandardItemModel>
#include <array>

#include "controls/arrow_button.h"
#include "controls/dialog.h"
#include "controls/drop_down.h"
#include "controls/report_list.h"
#include "controls/up_down.h"
#include "editors/logic/home_bases.h"
#include "session/session.h"

namespace rws {

/** Edits the home bases of a multiplayer mission: colour, size and the aircraft on offer. The
    caller reads the table of aircraft, sets `Idx`, loads and shows the form; it runs `SetModify`
    when `frmCancel` is false. The edits are made in the shadow of the mission and stay there; only
    Apply takes them over. Lists and their frames and buttons count 0 for the aircraft available at
    the base and 1 for the reserve. */
class frmDogFight : public Dialog {
  Q_OBJECT

 public:
  frmDogFight(Session& session, QWidget* parent);

  /** Fills the form. Without a home base it stays empty. */
  void LoadForm();

  /** In: index of the mission. */
  int Idx = 0;
  /** Out: false after Apply alone; every other way of closing applies nothing. */
  bool frmCancel = true;
  /** Upper bounds of the home bases and of the table of aircraft. */
  int BaseCount = -1, RowCount = -1;
  /** Index of the home base on show. */
  int CurBase = 0;

  QGroupBox* fra;
  QLabel *Label4, *lbl, *Label1, *lblColor, *Label2;
  /** The size in meters: the base's own until the slider is moved. */
  QLabel* lblSize;
  UpDown* upd;
  DropDown* cbo;
  QSlider* slide;
  std::array<QGroupBox*, 2> fraList;
  std::array<ReportList*, 2> lstAC;
  std::array<ArrowButton*, 2> cmd1;
  QPushButton* cmd2;
  enum Command : std::size_t { kApply, kCancel };
  std::array<QPushButton*, 2> cmd;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Build();
  void BuildBase();
  void BuildLists();
  QLayout* BuildButtons();
  void Connect();

  void FillColors();
  BornPlace& Base();
  bool KeepsLines() const;
  void Refresh();
  void ShowColor(int color);
  void ShowList(std::size_t list);
  void FitColumn(const ReportList& list);
  void ShowSize(int meters);
  void TakeRadius();
  void Move(std::size_t from);
  void MoveSelected(std::size_t from);
  void SetDefault();
  void Apply();

  Session& session_;
  std::array<QStandardItemModel, 2> models_;
  HomeBaseLists lists_;
};

}  // namespace rws
