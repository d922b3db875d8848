#include "editors/frmStatic.h"

#include <QHeaderView>

#include "editors/frmChgAC.h"
#include "mainwindow/loading.h"
#include "mainwindow/trapped.h"
#include "services/controls/list_colors.h"
#include "services/platform/form_placement.h"
#include "services/platform/qt_text.h"

namespace rws {

frmStatic::frmStatic(WindowContext context, QWidget* parent) : QDialog(parent), context_(context) {
  Build();
  Connect();
}

void frmStatic::Connect() {
  const Services& services = context_.Services;
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
  const Services& services = context_.Services;
  static_ = false;
  StaticPlanes.clear();
  setWindowTitle(QLatin1String(kProgramTitle));
  ApplyListColors(*this, context_.Run.ForeColor, context_.Run.BackColor);
  lstStatic->SetBackground(FromBgr(context_.Run.BackColor));
  LogAndLeave(services, "Form_Load", [&] {
    const Loading loading(context_.Doc);
    const Mission& mission = At(context_.Doc.Missions, context_.Doc.CurMission);
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
  lstStatic->SetRows(MakeStaticRows(StaticPlanes, context_.Tables, context_.Services));
}

void frmStatic::ShowButtons() {
  if (context_.Doc.bLoading) return;
  cmd[1]->setEnabled(lstStatic->selectionModel()->hasSelection());
}

void frmStatic::Change() {
  const auto chosen = lstStatic->SelectedPlanes();
  if (chosen.empty()) return;
  const StaticPlane& first = At(StaticPlanes, static_cast<std::ptrdiff_t>(chosen.front()));
  frmChgAC form(context_, this);
  form.ACName = first.PlaneClass;
  form.Group = first.Country;
  form.Mode = "Static";
  form.LoadForm();
  ShowDialog(form);
  if (!ChangeStaticPlanes(StaticPlanes, chosen, context_.Tables, form.ACName, form.CodeOut)) return;
  FillList();
  cmd[2]->setEnabled(true);
}

void frmStatic::Apply() {
  Mission& mission = At(context_.Doc.Missions, context_.Doc.CurMission);
  static_ = ApplyStaticPlanes(StaticPlanes, mission.Lines);
  // Only now: a fault on the way leaves the form open with what was chosen.
  accept();
}

}  // namespace rws
