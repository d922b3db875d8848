#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <array>
#include <functional>

#include "controls/dialog.h"
#include "controls/report_list.h"
#include "controls/row_model.h"
#include "gamelists/game_names.h"
#include "session/session.h"

namespace rws {

/** The lists that were read. Columns: what it is of, entries, file. */
class ListSourceModel : public RowModel<ListSource> {
  Q_OBJECT

 public:
  explicit ListSourceModel(QObject* parent) : RowModel(3, parent) {}

  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
};

/** What was not understood. Columns: why, line, file. */
class ListTroubleModel : public RowModel<ListTrouble> {
  Q_OBJECT

 public:
  explicit ListTroubleModel(QObject* parent) : RowModel(3, parent) {}

  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
};

/** Shows where names of aircraft, maps and squadrons come from, and lets the user choose. */
class frmLists : public Dialog {
  Q_OBJECT

 public:
  frmLists(Session& session, QWidget* parent);

  void LoadForm();
  /** Stores size and place, however the form is closed. */
  void done(int result) override;

  /** What is in use. */
  GameNames Names;
  NameChoices Choices;
  /** Stores choices and reads the lists by them; gives what is in use then. */
  std::function<GameNames(const NameChoices& choices, ReadLists how)> Use;

  QLabel* lblNames;
  /** How many entries the user has added by hand, and where. */
  QLabel* lblOwn;
  QCheckBox *chkUse, *chkFlyable;
  QLabel *lblPack, *lblLanguage;
  QComboBox *cboPack, *cboLanguage;
  QLabel *lblSources, *lblTroubles;
  ListSourceModel Sources;
  ListTroubleModel Troubles;
  ReportList *lstSources, *lstTroubles;
  enum Command : std::size_t { kReadAgain, kOk, kCancel };
  std::array<QPushButton*, 3> cmd;

 protected:
  bool HoldsUnstored() const override { return Chosen() != Choices; }

 private:
  void Build();
  void PlaceControls();
  void Connect();
  void ShowChoices();
  void FillPacks();
  void FillLanguages();
  void ShowNames();
  void ShowOwn(std::vector<ListTrouble>& troubles);
  void EnableChoices();
  NameChoices Chosen() const;
  /** False, told, if the choices could not be stored. */
  bool Take(ReadLists how);
  void ClickOk();

  Session& session_;
};

}  // namespace rws
