#include "services/forms/frmPrefs.h"

#include "controls/list_colors.h"
#include "platform/form_placement.h"
#include "platform/qt_text.h"
#include "services/association.h"
#include "services/paths.h"
#include "services/pickers.h"
#include "services/setting_values.h"
#include "services/trapped.h"

namespace rws {

namespace {

constexpr char kSkinFolder[] = "PaintSchemes\\Skins";

/** True for a drive alone; where there are no drives, for the root. */
bool IsDrive(const std::string& path) {
#ifdef _WIN32
  const bool rooted = path.size() == 2 || (path.size() == 3 && IsSeparator(path[2]));
  return rooted && path[1] == ':';
#else
  return path == "/";
#endif
}

}  // namespace

frmPrefs::frmPrefs(Session& session, QWidget* parent) : QDialog(parent), session_(session) {
  Build();
  Connect();
}

void frmPrefs::Connect() {
  const Services& services = session_.Services;
  const auto modified = Trapped(services, "frmPrefs.ChkModify", [this](bool) { ChkModify(); });
  for (auto* option : optSave) connect(option, &QRadioButton::toggled, this, modified);
  for (auto* box : {chkBackup, chkWA, chkLock, chkSnd})
    connect(box, &QCheckBox::toggled, this, modified);
  connect(cmd[0], &QPushButton::clicked, this,
          Trapped(services, "frmPrefs.cmd_Click", [this](bool) { ClickApply(); }));
  connect(cmd[1], &QPushButton::clicked, this, &QDialog::reject);
  connect(cmdChg, &QPushButton::clicked, this,
          Trapped(services, "frmPrefs.cmdChg_Click", [this](bool) { ClickChange(); }));
  for (std::size_t i = 0; i < cmdColor.size(); ++i)
    connect(cmdColor[i], &QPushButton::clicked, this,
            Trapped(services, "frmPrefs.cmdColor_Click", [this, i](bool) { ClickColor(i); }));
}

void frmPrefs::LoadForm() {
  const Services& services = session_.Services;
  bLoading = true;
  Applied = GameChanged = false;
  LogAndLeave(services, "frmPrefs.Form_Activate", [&] { LoadFormPos(services, *this); });
  LogAndLeave(services, "frmPrefs.Form_Activate", [&] { ShowFields(); });
  stPath_->setText(FromPath(GamePath));
  stPath_->setToolTip(FromPath(GamePath));
  cmd[0]->setEnabled(false);
  bLoading = false;
}

void frmPrefs::ShowFields() {
  chkBackup->setChecked(Backup);
  chkWA->setChecked(Associate);
  chkLock->setChecked(LockWT);
  chkSnd->setChecked(SndPlayer);
  pathAtEntry_ = GamePath;
  ShowPath(GamePath);
  foreColor_ = ForeColor;
  backColor_ = BackColor;
  ShowColors();
  At(optSave, SavePromptMode)->setChecked(true);
}

void frmPrefs::ShowPath(const std::string& path) {
  path_ = path;
  lblPath->setText(FromPath(path));
  lblPath->setToolTip(FromPath(path));
}

void frmPrefs::ShowColors() {
  for (auto* sample : lblColor) {
    QPalette colors = sample->palette();
    colors.setColor(QPalette::WindowText, FromBgr(foreColor_));
    colors.setColor(QPalette::Window, FromBgr(backColor_));
    sample->setPalette(colors);
  }
}

int frmPrefs::SaveRow() const {
  for (int row = 0; row < std::ssize(optSave); ++row)
    if (At(optSave, row)->isChecked()) return row;
  return kSaveAsk;
}

/** Against what is stored, read as the program reads it: a value that was never stored counts as
    its default. */
bool frmPrefs::Differs() const {
  const Services& services = session_.Services;
  const Settings& settings = services.Settings;
  return SaveRow() != ReadNumber(settings, setting::SaveWarn, kSaveAsk, kSaveNever) ||
         chkWA->isChecked() != IsAssociated(services) ||
         chkBackup->isChecked() != ReadFlag(settings, setting::Backup) ||
         chkLock->isChecked() != ReadFlag(settings, setting::LockWT) ||
         chkSnd->isChecked() != ReadFlag(settings, setting::SndPlayer) ||
         foreColor_ != session_.Prefs.ForeColor || backColor_ != session_.Prefs.BackColor ||
         path_ != pathAtEntry_;
}

void frmPrefs::ChkModify() {
  if (bLoading) return;
  cmd[0]->setEnabled(Differs());
}

void frmPrefs::ClickApply() {
  Backup = chkBackup->isChecked();
  Associate = chkWA->isChecked();
  LockWT = chkLock->isChecked();
  SndPlayer = chkSnd->isChecked();
  SavePromptMode = SaveRow();
  GamePath = path_;
  ForeColor = foreColor_;
  BackColor = backColor_;
  Applied = true;
  accept();
}

void frmPrefs::ClickChange() {
  constexpr int kPasses = 21;
  const Services& services = session_.Services;
  const std::string before = path_;
  std::string answer = GetFolder(services, "Please select where IL2 is installed", false, before);
  bool accepted = false;
  // Every pass looks at the same answer: the user is asked once, on purpose.
  for (int pass = 0; pass < kPasses && !answer.empty(); ++pass) {
    if (services.Files.FolderExists(BuildPath(answer, kSkinFolder)))
      accepted = true;
    else
      session_.Doc.GamePath = GetParentFolderName(answer);
    if (IsDrive(answer)) {
      services.Ask.MsgBox("The game path is incorrect, please try again.", Buttons::Ok,
                          Icon::Information, kProgramTitle);
      answer.clear();
    }
  }
  if (!accepted) {
    // A cancelled question ends here too, and closes the form; it stays so.
    LogError(services, BuildPath(answer, kSkinFolder), "Does not exist! RWS will not run!");
    return reject();
  }
  GameChanged = !answer.empty();
  ShowPath(GameChanged ? answer : before);
  LogAndLeave(services, "frmPrefs.ChkModify", [&] { ChkModify(); });
}

void frmPrefs::ClickColor(std::size_t index) {
  const Services& services = session_.Services;
  std::int32_t& color = index == 0 ? foreColor_ : backColor_;
  LogAndLeave(services, "frmPrefs.cmdColor_Click", [&] { color = GetColor(services, color); });
  ShowColors();
  LogAndLeave(services, "frmPrefs.ChkModify", [&] { ChkModify(); });
}

void frmPrefs::done(int result) {
  LogAndLeave(session_.Services, "frmPrefs.Form_Unload",
              [&] { SaveFormPos(session_.Services, *this); });
  QDialog::done(result);
}

}  // namespace rws
