#include "editors/frmChgAC.h"

#include "catalogues/aircraft.h"
#include "controls/list_colors.h"
#include "platform/form_placement.h"
#include "platform/qt_text.h"

namespace rws {

frmChgAC::frmChgAC(Session& session, QWidget* parent)
    : Dialog(session.Services, "frmChgAC", parent), session_(session) {
  Build();
  Connect();
}

void frmChgAC::Connect() {
  connect(cmd[kApply], &QPushButton::clicked, this, [this] { Apply(); });
  connect(cmd[kCancel], &QPushButton::clicked, this, [this] {
    ACName = "  ";
    unanswered_ = false;
    reject();
  });
  On(lstPlanes, &ListBox::clicked, "lstPlanes_Click", [this] { PlaneChosen(); });
  connect(lstPlanes, &ListBox::MouseReleased, this, [this] { Changed = true; });
  // By whatever means the user moves: arrow keys and typed letters count as the mouse does.
  On(lstPlanes->selectionModel(), &QItemSelectionModel::selectionChanged, "lstPlanes_Click",
     [this] {
       if (filling_) return;
       Changed = true;
       PlaneChosen();
     });
  On(tview->selectionModel(), &QItemSelectionModel::selectionChanged, "tview_NodeClick", [this] {
    if (!filling_) NodeChosen();
  });
}

void frmChgAC::LoadForm() {
  filling_ = unanswered_ = true;
  Changed = false;
  Load(
      "Form_Load", [&] { LoadFormPlace(services_, *this); },
      [&] { ApplyListColors(*this, session_.Prefs); }, [&] { FillPlanes(); }, [&] { FillTree(); },
      [&] {
        const std::string name = GetPlaneName(session_.Tables, services_, ACName);
        fraPlane->SetCaption(tr("%1 Selected").arg(FromBytes(services_.Page, name)));
      },
      [&] {
        const std::string caption = StartCaption(tree_, session_.Tables, services_.Page, Group);
        fraSq->SetCaption(FromBytes(services_.Page, caption));
      });
  lstPlanes->setFocus();
  filling_ = false;
}

void frmChgAC::FillPlanes() {
  lstPlanes->SetRows({});
  const AircraftRows rows = MakeAircraftRows(session_.Tables, ACName);
  QStringList texts;
  for (const auto& text : rows.Texts) texts << FromBytes(services_.Page, text);
  lstPlanes->SetRows(texts);
  lstPlanes->SelectRow(static_cast<int>(rows.Selected));
}

void frmChgAC::FillTree() {
  const CodePage& page = services_.Page;
  nodes_.clear();
  tree_ = MakeGroupTree(session_.Tables, page, ChangeModeOf(Mode), Group);
  for (const auto& group : tree_.Groups) {
    auto* root = new QStandardItem(FromBytes(page, group.Text));
    if (group.Color) root->setForeground(FromBgr(*group.Color));
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
  return AircraftOfRow(ToBytes(services_.Page, selected.front().data().toString()));
}

void frmChgAC::PlaneChosen() {
  fraPlane->SetCaption(tr("%1 Selected").arg(FromBytes(services_.Page, SelectedPlane())));
}

void frmChgAC::NodeChosen() {
  const CodePage& page = services_.Page;
  fraSq->SetCaption(FromBytes(page, NodeCaption(tree_, session_.Tables, page, Chosen())));
}

void frmChgAC::Apply() {
  unanswered_ = false;
  LogAndLeave(services_, "cmd_Click", [&] { ACName = SelectedPlane(); });
  LogAndLeave(services_, "cmd_Click", [&] {
    if (tree_.Mode == ChangeMode::Flight) Squad = SquadOf(tree_, Chosen());
  });
  LogAndLeave(services_, "cmd_Click", [&] {
    CodeOut = CodeOutOf(tree_, session_.Tables, services_.Page, Chosen(), Group);
  });
  accept();
}

void frmChgAC::done(int result) {
  LogAndLeave(services_, "Form_Unload", [&] {
    if (unanswered_) ACName = "Cancel";
    SaveFormPlace(services_, *this);
  });
  Dialog::done(result);
}

}  // namespace rws
