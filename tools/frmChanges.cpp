#include "tools/frmChanges.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QSignalBlocker>

#include "controls/list_colors.h"
#include "mission/unified_diff.h"
#include "mission/untouched.h"
#include "platform/form_placement.h"
#include "platform/qt_text.h"
#include "services/faults.h"
#include "session/lines_rule.h"
#include "session/recording.h"
#include "tools/logic/taken_back.h"

namespace rws {

frmChanges::frmChanges(Session& session, QWidget* parent)
    : Dialog(session.Services, "frmChanges", parent), session_(session) {
  Build();
  Connect();
}

void frmChanges::Connect() {
  cmpTexts->Model.LabelOf = [this](const CompareRow& row, std::string_view line) {
    return labels_.LabelOf(row, line);
  };
  // One of the two is toggled off for each that is toggled on.
  On(optWay[kKeep], &QRadioButton::toggled, "optWay_Click", [this] { ShowWay(); });
  On(cmpTexts->lstSide[0]->selectionModel(), &QItemSelectionModel::currentRowChanged,
     "lstSide_RowChange", [this] { EnableCommands(); });
  On(cmd[kUse], &QPushButton::clicked, "cmd_Click", [this] {
    Choose(Keeps() ? UntouchedLines::Keep : UntouchedLines::Anew);
    LookAgain();
  });
  On(cmd[kTakeBack], &QPushButton::clicked, "cmd_Click", [this] { TakeBackCurrent(); });
  On(mnuTakeBack, &QAction::triggered, "mnuTakeBack_Click", [this] { TakeBackCurrent(); });
  On(cmd[kCopy], &QPushButton::clicked, "cmd_Click", [this] { CopyAsText(); });
  On(mnuCopy, &QAction::triggered, "mnuCopy_Click", [this] { CopyAsText(); });
  On(cmd[kClose], &QPushButton::clicked, "cmd_Click", [this] { reject(); });
}

const Mission& frmChanges::Record() const {
  return At(session_.Doc.Missions, MissionAt(session_.Doc, MissionPath));
}

void frmChanges::LoadForm() {
  ApplyListColors(*this, session_.Prefs);
  Load(
      "Form_Load", [&] { LoadFormPlace(services_, *this); },
      [&] {
        lblSubject->setText(FromPath(MissionPath));
        const QSignalBlocker quiet(optWay[kKeep]);
        optWay[WillKeepLines(session_.Doc, Record()) ? kKeep : kAnew]->setChecked(true);
      },
      [&] { LookAgain(); });
  cmpTexts->lstSide[0]->setFocus();
}

/** Makes both texts from the records as they are now. */
void frmChanges::LookAgain() {
  const auto mission = static_cast<std::size_t>(MissionAt(session_.Doc, MissionPath));
  pending_ = LookAhead(session_.Doc, services_, Record(), Shown ? Shown() : ShownValues(),
                       SavedMission(session_, mission), PendingPart::Both);
  const LineArray& edited = pending_.KeptFault.empty() ? pending_.Kept : pending_.File;
  labels_ = ChangeLabels(pending_.File.FileText(), edited.FileText());
  ShowWay();
}

void frmChanges::ShowWay() {
  lblNote->clear();
  if (Fault().empty()) {
    ShowTexts();
    parts_->setCurrentWidget(cmpTexts);
  } else {
    txtFault->setPlainText(tr("The mission cannot be written this way.") + QStringLiteral("\n\n") +
                           FromBytes(services_.Page, Fault()));
    parts_->setCurrentWidget(txtFault);
  }
  ShowRule();
  EnableCommands();
}

void frmChanges::ShowTexts() {
  cmpTexts->SetCaptions(tr("As it is on disk"), tr("As it would be written"));
  cmpTexts->SetTexts(pending_.File.FileText(), Written().FileText());
  // Line ends are no lines; that they change is told by the view.
  if (!cmpTexts->Model.Counts().None() || cmpTexts->Model.SameBytes())
    cmpTexts->lblCounts->setText(FromPath(ChangeCountText(pending_, Keeps())) + QLatin1Char('.'));
}

void frmChanges::ShowRule() {
  const UntouchedLines rule = UntouchedRule(session_.Doc, Record());
  const bool asks = rule == UntouchedLines::Ask;
  const bool keeps = WillKeepLines(session_.Doc, Record());
  lblRule->setText(keeps  ? tr("Update keeps them.")
                   : asks ? tr("No choice yet: Update asks where it matters.")
                          : tr("Update writes them anew."));
  cmd[kUse]->setVisible(static_cast<bool>(Choose));
  cmd[kUse]->setEnabled(Choose && Fault().empty() && (asks || keeps != Keeps()));
}

void frmChanges::EnableCommands() {
  const bool differs = Fault().empty() && !cmpTexts->Model.SameBytes();
  const bool mayTakeBack = Changed && CurrentEdit();
  cmd[kTakeBack]->setVisible(static_cast<bool>(Changed));
  mnuTakeBack->setVisible(static_cast<bool>(Changed));
  cmd[kTakeBack]->setEnabled(mayTakeBack);
  mnuTakeBack->setEnabled(mayTakeBack);
  cmd[kCopy]->setEnabled(differs);
  mnuCopy->setEnabled(differs);
}

std::optional<ChangedLine> frmChanges::CurrentEdit() const {
  const auto& model = cmpTexts->Model;
  const int current = cmpTexts->CurrentRow();
  if (!Fault().empty() || current < 0 || current >= model.rowCount()) return {};
  const CompareRow& row = model.Rows()[static_cast<std::size_t>(current)];
  return labels_.EditAt(row, model.LineOf(row, 1));
}

void frmChanges::TakeBackCurrent() {
  const auto edit = CurrentEdit();
  if (!edit || !Changed) return;
  const auto mission = static_cast<std::size_t>(MissionAt(session_.Doc, MissionPath));
  const auto others = TakeChangeBack(session_, mission, *edit);
  if (!others) {
    lblNote->setText(tr("This change cannot be taken back by itself."));
    return;
  }
  const int row = cmpTexts->CurrentRow();
  Changed();
  LookAgain();
  cmpTexts->Select(row);
  lblNote->setText(
      *others == 0 ? tr("Taken back; Undo brings it back.")
      : *others == 1
          ? tr("Taken back with 1 line that belongs to it; Undo brings them back.")
          : tr("Taken back with %1 lines that belong to it; Undo brings them back.").arg(*others));
}

void frmChanges::CopyAsText() {
  if (!Fault().empty()) return;
  // A name that the code page cannot spell stands as it is.
  const std::string& path = Record().FileName;
  const std::string name = services_.Page.FromUtf8(path).value_or(path);
  const std::string text = UnifiedDiff(name, name, pending_.File.FileText(), Written().FileText());
  QGuiApplication::clipboard()->setText(FromBytes(services_.Page, text));
  lblNote->setText(tr("The changes are on the clipboard."));
}

void frmChanges::done(int result) {
  LogAndLeave(services_, "Form_Unload", [&] { SaveFormPlace(services_, *this); });
  Dialog::done(result);
}

}  // namespace rws
