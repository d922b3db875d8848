#include "editors/frmChgAC.h"

#include "catalogues/aircraft.h"
#include "controls/list_colors.h"
#include "platform/form_placement.h"
#include "platform/qt_text.h"
#include "services/trapped.h"

namespace rws {

frmChgAC::frmChgAC(Session& session, QWidget* parent) : QDialog(parent), session_(session) {
  Build();
  Connect();
}

void frmChgAC::Connect() {
  const Services& services = session_.Services;
  connect(cmd[0], &QPushButton::clicked, this, [this] { Apply(); });
  connect(cmd[1], &QPushButton::clicked, this, [this] {
    ACName = "  ";
    unanswered_ = false;
    reject();
  });
  connect(lstPlanes, &ListBox::clicked, this,
          Trapped(services, "lstPlanes_Click", [this](const auto&...) { PlaneChosen(); }));
  connect(lstPlanes, &ListBox::MouseReleased, this, [this] { Changed = true; });
  // By whatever means the user moves: arrow keys and typed letters count as the mouse does.
  connect(lstPlanes->selectionModel(), &QItemSelectionModel::selectionChanged, this,
          Trapped(services, "lstPlanes_Click", [this](const auto&...) {
            if (filling_) return;
            Changed = true;
            PlaneChosen();
          }));
  connect(tview->selectionModel(), &QItemSelectionModel::selectionChanged, this,
          Trapped(services, "tview_NodeClick", [this](const auto&...) {
            if (!filling_) NodeChosen();
          }));
}

void frmChgAC::LoadForm() {
  const Services& services = session_.Services;
  filling_ = unanswered_ = true;
  Changed = false;
  LogAndLeave(services, "Form_Load", [&] {
    LoadFormSize(services, *this);
    LoadFormPos(services, *this);
  });
  ApplyListColors(*this, session_.Prefs.ForeColor, session_.Prefs.BackColor);
  setWindowTitle(QLatin1String(kProgramTitle));
  LogAndLeave(services, "Form_Load", [&] { FillPlanes(); });
  LogAndLeave(services, "Form_Load", [&] { FillTree(); });
  LogAndLeave(services, "Form_Load", [&] {
    fraPlane->SetCaption(
        tr("%1 Selected")
            .arg(FromBytes(services.Page, GetPlaneName(session_.Tables, services, ACName))));
  });
  LogAndLeave(services, "Form_Load", [&] {
    fraSq->SetCaption(
        FromBytes(services.Page, StartCaption(tree_, session_.Tables, services.Page, Group)));
  });
  lstPlanes->setFocus();
  filling_ = false;
}

void frmChgAC::FillPlanes() {
  lstPlanes->SetRows({});
  const AircraftRows rows = MakeAircraftRows(session_.Tables, ACName);
  QStringList texts;
  for (const auto& text : rows.Texts) texts << FromBytes(session_.Services.Page, text);
  lstPlanes->SetRows(texts);
  lstPlanes->SelectRow(static_cast<int>(rows.Selected));
}

void frmChgAC::FillTree() {
  const CodePage& page = session_.Services.Page;
  const QColor background = FromBgr(session_.Prefs.BackColor);
  nodes_.clear();
  tree_ = MakeGroupTree(session_.Tables, page, ChangeModeOf(Mode), Group);
  for (const auto& group : tree_.Groups) {
    auto* root = new QStandardItem(FromBytes(page, group.Text));
    if (group.Color) root->setForeground(Readable(FromBgr(*group.Color), background));
    QList<QStandardItem*> children;
    for (const auto& regiment : group.Regiments) {
      children << new QStandardItem(FromBytes(page, regiment.Code));
      children.back()->setToolTip(FromBytes(page, regiment.Tag));
    }
    root->appendRows(children);
    nodes_.appendRow(root);
  }
  tview->setRootIsDecorated(tree_.Mode == ChangeMode::Flight);
  QModelIndex chosen = nodes_.index(static_cast<int>(tree_.Selected.Group), 0);
  if (tree_.Selected.Regiment >= 0)
    chosen = nodes_.index(static_cast<int>(tree_.Selected.Regiment), 0, chosen);
  if (!chosen.isValid()) return;
  tview->setCurrentIndex(chosen);
  tview->scrollTo(chosen, QTreeView::PositionAtCenter);
}

NodePlace frmChgAC::Chosen() const {
  const auto selected = tview->selectionModel()->selectedIndexes();
  if (selected.isEmpty()) return {};
  const QModelIndex node = selected.front(), parent = node.parent();
  return parent.isValid() ? NodePlace{parent.row(), node.row()} : NodePlace{node.row(), -1};
}

std::string frmChgAC::SelectedPlane() const {
  const auto selected = lstPlanes->selectionModel()->selectedIndexes();
  if (selected.isEmpty()) return "";
  return AircraftOfRow(ToBytes(session_.Services.Page, selected.front().data().toString()));
}

void frmChgAC::PlaneChosen() {
  fraPlane->SetCaption(tr("%1 Selected").arg(FromBytes(session_.Services.Page, SelectedPlane())));
}

void frmChgAC::NodeChosen() {
  const CodePage& page = session_.Services.Page;
  fraSq->SetCaption(FromBytes(page, NodeCaption(tree_, session_.Tables, page, Chosen())));
}

void frmChgAC::Apply() {
  const Services& services = session_.Services;
  unanswered_ = false;
  LogAndLeave(services, "cmd_Click", [&] { ACName = SelectedPlane(); });
  LogAndLeave(services, "cmd_Click", [&] {
    if (tree_.Mode == ChangeMode::Flight) Squad = SquadOf(tree_, Chosen());
  });
  LogAndLeave(services, "cmd_Click",
              [&] { CodeOut = CodeOutOf(tree_, session_.Tables, services.Page, Chosen(), Group); });
  accept();
}

void frmChgAC::done(int result) {
  LogAndLeave(session_.Services, "Form_Unload", [&] {
    if (unanswered_) ACName = "Cancel";
    SaveFormSize(session_.Services, *this);
    SaveFormPos(session_.Services, *this);
  });
  QDialog::done(result);
}

}  // namespace rws
