#include "editors/frmStatic.h"

#include <QHeaderView>

#include "controls/list_colors.h"
#include "editors/frmChgAC.h"
#include "platform/form_placement.h"
#include "platform/qt_text.h"
#include "services/trapped.h"
#include "session/loading.h"

namespace rws {

frmStatic::frmStatic(Session& session, QWidget* parent) : QDialog(parent), session_(session) {
  Build();
  Connect();
}

void frmStatic::Connect() {
  const Services& services = session_.Services;
  connect(cmd[0], &QPushButton::clicked, this, [this] { reject(); });
  connect(cmd[1], &QPushButton::clicked, this,
          Trapped(services, "cmd_Click", [this](bool) { Change(); }));
  connect(cmd[2], &QPushButton::clicked, this,
          Trapped(services, "cmd_Click", [this](bool) { Apply(); }));
  connect(lstStatic, &StaticList::doubleClicked, this,
          Trapped(services, "lstStatic_DblClick", [this](const auto&) { Change(); }));
  connect(lstStatic->header(), &QHeaderView::sectionClicked, this,
          Trapped(services, "lstStatic_ColumnClick", [this](int) { lstStatic->Sort(); }));
  connect(lstStatic->selectionModel(), &QItemSelectionModel::selectionChanged, this,
          Trapped(services, "lstStatic_ItemClick", [this](const auto&...) { ShowButtons(); }));
}

void frmStatic::LoadForm() {
  const Services& services = session_.Services;
  static_ = false;
  StaticPlanes.clear();
  setWindowTitle(QLatin1String(kProgramTitle));
  ApplyListColors(*this, session_.Prefs.ForeColor, session_.Prefs.BackColor);
  lstStatic->SetBackground(FromBgr(session_.Prefs.BackColor));
  LogAndLeave(services, "Form_Load", [&] {
    const Loading loading(session_.Doc);
    const Mission& mission = At(session_.Doc.Missions, session_.Doc.CurMission);
    const QString caption = tr("Stationary Aircraft for %1").arg(FromPath(mission.BaseName));
    fra->SetCaption(caption);
    fra->setAccessibleName(caption);
    StaticPlanes = FindStaticPlanes(mission.Lines);
    FillList();
  });
  cmd[2]->setEnabled(false);
  ShowButtons();
  lstStatic->setFocus();
  CenterForm(*this);
}

void frmStatic::FillList() {
  lstStatic->SetRows(MakeStaticRows(StaticPlanes, session_.Tables, session_.Services));
}

void frmStatic::ShowButtons() {
  if (session_.Doc.bLoading) return;
  cmd[1]->setEnabled(lstStatic->selectionModel()->hasSelection());
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
  cmd[2]->setEnabled(true);
}

void frmStatic::Apply() {
  Mission& mission = At(session_.Doc.Missions, session_.Doc.CurMission);
  static_ = ApplyStaticPlanes(StaticPlanes, mission.Lines);
  // Only now: a fault on the way leaves the form open with what was chosen.
  accept();
}

}  // namespace rws
