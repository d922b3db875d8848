#pragma once

#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <array>

#include "controls/dialog.h"
#include "session/session.h"

namespace rws {

/** Sets out whether a mission suits the game installed. Prepared for that: nothing works the report
    out or opens the form yet. */
class frmCam : public Dialog {
  Q_OBJECT

 public:
  frmCam(Session& session, QWidget* parent);

  void LoadForm();
  /** Ends every way of closing. */
  void done(int result) override;

  QPushButton* cmd;
  /** The report, the legend of game versions. */
  QGroupBox *fra1, *fra;
  QLabel *lblSq, *lblAC, *lblMap;
  /** Squadrons, aircraft, map. */
  std::array<QLabel*, 3> imgWarn;
  /** A row of the legend each. */
  std::array<QLabel*, 5> imgVer, lbl;

 private:
  void Build();
  void PlaceControls();
  void NameControls();

  Session& session_;
};

}  // namespace rws
