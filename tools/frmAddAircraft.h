#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <array>
#include <string>

#include "catalogues/own_entries.h"
#include "controls/dialog.h"
#include "library/seen_aircraft.h"
#include "session/session.h"

namespace rws {

/** Gives an aircraft that no table and no list knows a name, a side and loadouts, which are kept
    among the user's own entries. */
class frmAddAircraft : public Dialog {
  Q_OBJECT

 public:
  frmAddAircraft(Session& session, QWidget* parent);

  void LoadForm();

  /** Mission text; this, the side that is proposed and what missions tell are set by the caller. */
  std::string Class;
  bool IsBlue = false;
  SeenAircraft Seen;
  /** The entry has been written. */
  bool IsAdded = false;

  /** In which missions it flies. */
  QLabel* lblSeen;
  QLabel *lblClass, *lblName, *lblSide, *lblKey, *lblLoadouts, *lblMore;
  QLineEdit *txtClass, *txtName, *txtKey;
  QComboBox* cboSide;
  QCheckBox* chkFlyable;
  /** Those that are ticked become loadouts of the aircraft. */
  QListWidget* lstLoadouts;
  /** A loadout that no mission has. */
  QLineEdit* txtMore;
  /** Why it cannot be added so; "" if it can. */
  QLabel* lblWhyNot;
  enum Command : std::size_t { kAdd, kOk, kCancel };
  std::array<QPushButton*, 3> cmd;

 protected:
  bool HoldsUnstored() const override;

 private:
  void Build();
  void PlaceControls();
  void Connect();
  void Propose();
  void ShowLoadout(const std::string& key, Qt::CheckState state);
  void ShowEntry(const OwnAircraft& entry);
  OwnAircraft Entered() const;
  std::string WhyNot() const;
  void Judge();
  void ClickAdd();
  void ClickOk();

  Session& session_;
  OwnAircraft proposed_;
};

}  // namespace rws
