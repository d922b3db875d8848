#pragma once

#include <QPushButton>
#include <array>
#include <vector>

#include "controls/dialog.h"
#include "controls/elided_frame.h"
#include "controls/show_dialog.h"
#include "editors/logic/stationary_aircraft.h"
#include "editors/static_list.h"
#include "session/session.h"

namespace rws {

/** Lists the parked aircraft of the current mission and changes their type and country. Nothing is
    in the mission before Apply; the caller then runs `SetModify` if `Static` tells so. */
class frmStatic : public Dialog {
  Q_OBJECT

 public:
  frmStatic(Session& session, QWidget* parent);

  /** Fills the form. Without a current mission it stays empty. */
  void LoadForm();
  /** True after an Apply that wrote at least one line, be it as it was. */
  bool Static() const { return static_; }

  /** Shows the dialog that changes aircraft until it is closed. */
  rws::ShowDialog ShowDialog = ShowUntilClosed;

  StaticList* lstStatic;
  ElidedFrame* fra;
  enum Command : std::size_t { kExit, kChange, kApply };
  std::array<QPushButton*, 3> cmd;

  /** What the list shows; its order is that of the lines. */
  std::vector<StaticPlane> StaticPlanes;

 protected:
  /** Aircraft were changed and not applied. */
  bool HoldsUnstored() const override { return cmd[kApply]->isEnabled(); }

 private:
  void Build();
  void Connect();
  void FillList();
  void ShowButtons();
  void Change();
  void Apply();

  Session& session_;
  bool static_ = false;
};

}  // namespace rws
