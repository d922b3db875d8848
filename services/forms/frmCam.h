#pragma once

#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QToolButton>
#include <array>
#include <optional>
#include <string>

#include "controls/dialog.h"
#include "session/session.h"

namespace rws {

/** A row of the report; UTF-8. */
struct CamRow {
  std::string Text;
  /** What to know of it; "" for nothing. */
  std::string Warning;
};

/** Sets out whether a mission suits the game installed. The caller works the report out. */
class frmCam : public Dialog {
  Q_OBJECT

 public:
  frmCam(Session& session, QWidget* parent);

  void LoadForm();
  /** Ends every way of closing. */
  void done(int result) override;

  /** Squadrons, aircraft, map; without it the rows stay as they are built. */
  std::optional<std::array<CamRow, 3>> Report;

  QPushButton* cmd;
  /** The report, the legend of game versions. */
  QGroupBox *fra1, *fra;
  QLabel *lblSq, *lblAC, *lblMap;
  /** Squadrons, aircraft, map. */
  std::array<QToolButton*, 3> imgWarn;
  /** A row of the legend each. */
  std::array<QLabel*, 5> imgVer, lbl;

 private:
  void Build();
  void PlaceControls();
  void NameControls();
  void FillReport();
  void ShowWarning(std::size_t row) const;

  Session& session_;
};

}  // namespace rws
