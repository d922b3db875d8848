#include "editors/frmStatic.h"

#include <QHeaderView>

#include "controls/list_colors.h"
#include "editors/frmChgAC.h"
#include "platform/form_placement.h"
#include "platform/qt_text.h"
#include "session/doors.h"
#include "session/loading.h"

namespace rws {

namespace {

constexpr EditKind kParkedAircraft{"cmd_Click", "Parked aircraft", Lighting::None};

}  // namespace

frmStatic::frmStatic(Session& session, QWidget* parent)
    : Dialog(session.Services, "frmStatic", parent), session_(session) {
  Build();
  Connect();
}

void frmStatic::Connect() {
  connect(cmd[kExit], &QPushButton::clicked, this, &QDialog::reject);
  On(cmd[kChange], &QPushButton::clicked, "cmd_Click", [this] { Change(); });
  connect(cmd[kApply], &QPushButton::clicked, this, [this] { Apply(); });
  On(lstStatic, &StaticList::doubleClicked, "lstStatic_DblClick", [this] { Change(); });
  On(lstStatic->header(), &QHeaderView::sectionClicked, "lstStatic_ColumnClick",
     [this] { lstStatic->Sort(); });
  On(lstStatic->selectionModel(), &QItemSelectionModel::selectionChanged, "lstStatic_ItemClick",
     [this] { ShowButtons(); });
}

void frmStatic::LoadForm() {
  static_ = false;
  StaticPlanes.clear();
  ApplyListColors(*this, session_.Prefs);
  Load("Form_Load", [&] {
    const Loading loading(session_.Doc);
    const Mission& mission = At(session_.Doc.Missions, session_.Doc.CurMission);
    const QString caption = tr("Stationary Aircraft for %1").arg(FromPath(mission.BaseName));
    fra->SetCaption(caption);
    fra->setAccessibleName(caption);
    StaticPlanes = FindStaticPlanes(mission.Lines);
    FillList();
  });
  cmd[kApply]->setEnabled(false);
  ShowButtons();
  lstStatic->setFocus();
  CenterForm(*this);
}

void frmStatic::FillList() {
  lstStatic->SetRows(MakeStaticRows(StaticPlanes, session_.Tables, services_));
}

void frmStatic::ShowButtons() {
  if (session_.Doc.bLoading) return;
  cmd[kChange]->setEnabled(lstStatic->selectionModel()->hasSelection());
}

void frmStatic::Change() {
  const auto chosen = lstStatic->SelectedPlanes();
  if (chosen.empty()) return;
  const StaticPlane& first = At(StaticPlanes, static_cast<std::ptrdiff_t>(chosen.front()));
  frmChgAC form(session_, this);
  form.ACName = first.PlaneClass;
  form.Group = first.Country;
  form.Mode = "Static";
  form.LoadForm();
  ShowDialog(form);
  if (!ChangeStaticPlanes(StaticPlanes, chosen, session_.Tables, form.ACName, form.CodeOut)) return;
  FillList();
  cmd[kApply]->setEnabled(true);
}

void frmStatic::Apply() {
  const bool done = Edit(session_, kParkedAircraft, [&] {
    Mission& mission = At(session_.Doc.Missions, session_.Doc.CurMission);
    static_ = mission.KeepsLines ? ApplyKeptStaticPlanes(StaticPlanes, mission.Lines)
                                 : ApplyStaticPlanes(StaticPlanes, mission.Lines);
  });
  // Else the form stays open with what was chosen.
  if (done) accept();
}

}  // namespace rws
