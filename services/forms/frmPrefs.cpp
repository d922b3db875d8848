#include "services/forms/frmPrefs.h"

#include "controls/list_colors.h"
#include "mission/backup_index.h"
#include "platform/form_placement.h"
#include "platform/qt_text.h"
#include "services/association.h"
#include "services/numbers.h"
#include "services/paths.h"
#include "services/pickers.h"
#include "services/setting_values.h"
#include "session/file_store.h"

namespace rws {

namespace {

constexpr char kSkinFolder[] = "PaintSchemes\\Skins";

}  // namespace

frmPrefs::frmPrefs(Session& session, QWidget* parent)
    : Dialog(session.Services, "frmPrefs", parent), session_(session) {
  Build();
  Connect();
}

void frmPrefs::Connect() {
  const auto modified = [this] { ChkModify(); };
  for (auto* option : optSave) On(option, &QRadioButton::toggled, "frmPrefs.ChkModify", modified);
  On(chkDesktop, &QCheckBox::toggled, "frmPrefs.cmdColor_Click", [this] { ShowColors(); });
  for (auto* box : {chkBackup, chkWA, chkLock, chkSnd, chkDesktop})
    On(box, &QCheckBox::toggled, "frmPrefs.ChkModify", modified);
  for (auto* box : {spnKept, spnDays, spnStore})
    On(box, &QSpinBox::valueChanged, "frmPrefs.ChkModify", [modified](int) { modified(); });
  On(cmd[kApply], &QPushButton::clicked, "frmPrefs.cmd_Click", [this] { ClickApply(); });
  On(cboLines, &QComboBox::currentIndexChanged, "frmPrefs.ChkModify",
     [modified](int) { modified(); });
  connect(cmd[kExit], &QPushButton::clicked, this, &QDialog::reject);
  On(cmdChg, &QPushButton::clicked, "frmPrefs.cmdChg_Click", [this] { ClickChange(); });
  On(cmdNames, &QPushButton::clicked, "frmPrefs.cmdNames_Click", [this] { ClickNames(); });
  for (const auto which : {kText, kBackground})
    On(cmdColor[which], &QPushButton::clicked, "frmPrefs.cmdColor_Click",
       [this, which] { ClickColor(which); });
}

void frmPrefs::LoadForm() {
  bLoading = true;
  Applied = GameChanged = false;
  // The path in use may be what a wrong folder left, for this run only.
  GamePath = ReadSetting(services_.Settings, setting::GamePath, GamePath);
  Load(
      "frmPrefs.Form_Activate", [&] { LoadFormPos(services_, *this); }, [&] { ShowFields(); });
  stPath_->setText(FromPath(GamePath));
  stPath_->setToolTip(FromPath(GamePath));
  cmd[kApply]->setEnabled(false);
  bLoading = false;
}

void frmPrefs::ShowFields() {
  chkBackup->setChecked(Backup);
  spnKept->setValue(BackupsKept);
  spnDays->setValue(StoreDays);
  spnStore->setValue(StoreMegabytes);
  if (NamesText) lblNames->setText(FromPath(NamesText()));
  lblStored->setText(tr("They take %1").arg(FromPath(SizeText(StoreBytes(services_)))));
  lblSpace->setText(tr("All backups take %1").arg(FromPath(SizeText(BackupSpaceUsed(services_)))));
  chkWA->setChecked(Associate);
  chkLock->setChecked(LockWT);
  chkSnd->setChecked(SndPlayer);
  pathAtEntry_ = GamePath;
  ShowPath(GamePath);
  foreColor_ = ForeColor;
  backColor_ = BackColor;
  chkDesktop->setChecked(DesktopColors);
  ShowColors();
  At(optSave, SavePromptMode)->setChecked(true);
  cboLines->setCurrentIndex(LaterVersions);
}

void frmPrefs::ShowPath(const std::string& path) {
  path_ = path;
  lblPath->setText(FromPath(path));
  lblPath->setToolTip(FromPath(path));
}

void frmPrefs::ShowColors() {
  const bool told = !chkDesktop->isChecked();
  for (auto* sample : lblColor) {
    QPalette colors = palette();
    colors.setColor(QPalette::WindowText,
                    told ? FromBgr(foreColor_) : colors.color(QPalette::Text));
    colors.setColor(QPalette::Window, told ? FromBgr(backColor_) : colors.color(QPalette::Base));
    sample->setPalette(colors);
  }
  for (auto* button : cmdColor) button->setEnabled(told);
}

int frmPrefs::SaveRow() const {
  for (int row = 0; row < std::ssize(optSave); ++row)
    if (At(optSave, row)->isChecked()) return row;
  return kSaveAsk;
}

/** Against what is stored, read as the program reads it: a value that was never stored counts as
    its default. */
bool frmPrefs::Differs() const {
  const Settings& settings = services_.Settings;
  return SaveRow() != ReadNumber(settings, setting::SaveWarn, kSaveAsk, kSaveNever) ||
         cboLines->currentIndex() != ReadNumber(settings, setting::LaterVersions, 0, 2) ||
         chkWA->isChecked() != IsAssociated(services_) ||
         chkBackup->isChecked() != ReadFlag(settings, setting::Backup) ||
         spnKept->value() != ReadNumber(settings, setting::BackupsKept, 0, kMostBackupsKept) ||
         spnDays->value() != ReadNumber(settings, setting::StoreDays, 1, kMostStoreDays) ||
         spnStore->value() !=
             ReadNumber(settings, setting::StoreMegabytes, 1, kMostStoreMegabytes) ||
         chkLock->isChecked() != ReadFlag(settings, setting::LockWT) ||
         chkSnd->isChecked() != ReadFlag(settings, setting::SndPlayer) ||
         chkDesktop->isChecked() != session_.Prefs.bDesktopColors ||
         foreColor_ != session_.Prefs.ForeColor || backColor_ != session_.Prefs.BackColor ||
         path_ != pathAtEntry_;
}

void frmPrefs::ChkModify() {
  if (bLoading) return;
  cmd[kApply]->setEnabled(Differs());
}

void frmPrefs::ClickApply() {
  Backup = chkBackup->isChecked();
  BackupsKept = spnKept->value();
  StoreDays = spnDays->value();
  StoreMegabytes = spnStore->value();
  Associate = chkWA->isChecked();
  LockWT = chkLock->isChecked();
  SndPlayer = chkSnd->isChecked();
  SavePromptMode = SaveRow();
  LaterVersions = cboLines->currentIndex();
  GamePath = path_;
  ForeColor = foreColor_;
  BackColor = backColor_;
  DesktopColors = chkDesktop->isChecked();
  Applied = true;
  accept();
}

void frmPrefs::ClickChange() {
  const std::string before = path_;
  std::string answer = GetFolder(services_, "Please select where IL2 is installed", false, before);
  const bool accepted =
      !answer.empty() && services_.Files.FolderExists(BuildPath(answer, kSkinFolder));
  // On purpose, though the form closes: it lasts until the path is read again.
  if (!answer.empty() && !accepted) session_.Doc.GamePath = GetParentFolderName(answer);
  if (IsDrive(answer)) {
    services_.Ask.MsgBox("The game path is incorrect, please try again.", Buttons::Ok,
                         Icon::Information, kProgramTitle);
    answer.clear();
  }
  if (!accepted) {
    // A cancelled question ends here too, and closes the form; it stays so.
    LogError(services_, BuildPath(answer, kSkinFolder), "Does not exist! RWS will not run!");
    return reject();
  }
  GameChanged = !answer.empty();
  ShowPath(GameChanged ? answer : before);
  LogAndLeave(services_, "frmPrefs.ChkModify", [&] { ChkModify(); });
}

void frmPrefs::ClickNames() {
  if (OpenNames) OpenNames();
  if (NamesText) lblNames->setText(FromPath(NamesText()));
}

void frmPrefs::ClickColor(Color which) {
  std::int32_t& color = which == kText ? foreColor_ : backColor_;
  LogAndLeave(services_, "frmPrefs.cmdColor_Click", [&] { color = GetColor(services_, color); });
  ShowColors();
  LogAndLeave(services_, "frmPrefs.ChkModify", [&] { ChkModify(); });
}

void frmPrefs::done(int result) {
  LogAndLeave(services_, "frmPrefs.Form_Unload", [&] { SaveFormPos(services_, *this); });
  Dialog::done(result);
}

}  // namespace rws
