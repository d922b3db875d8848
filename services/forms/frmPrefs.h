#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QStatusBar>
#include <array>
#include <cstdint>
#include <functional>
#include <string>

#include "controls/dialog.h"
#include "controls/elided_label.h"
#include "controls/wrapped_label.h"
#include "session/session.h"

namespace rws {

/** The preferences. The caller sets the fields, loads and shows the form; when it closed with
    `Applied` the fields hold what the user wants. It stores nothing itself. */
class frmPrefs : public Dialog {
  Q_OBJECT

 public:
  frmPrefs(Session& session, QWidget* parent);

  /** Shows the stored game directory; `GamePath`, the one in use, where none is stored. */
  void LoadForm();
  /** Ends every way of closing. */
  void done(int result) override;

  bool Backup = false, Associate = false, LockWT = false, SndPlayer = false;
  /** How many dated backups of a mission stay; 0 is all. */
  int BackupsKept = 0;
  /** Of deleted and replaced files. */
  int StoreDays = 0, StoreMegabytes = 0;
  /** Row of `optSave`. */
  int SavePromptMode = 0;
  /** Row of `cboLines`. */
  int LaterVersions = 0;
  std::string GamePath;
  /** Blue-green-red numbers. */
  std::int32_t ForeColor = 0, BackColor = 0;
  /** The desktop's colours instead. */
  bool DesktopColors = false;
  /** Where the names of aircraft, maps and squadrons come from, UTF-8; and the dialog in which the
      user chooses, which takes effect by itself. */
  std::function<std::string()> NamesText;
  std::function<void()> OpenNames;

  /** Out: closed by Apply. */
  bool Applied = false;
  /** Out: another game directory was chosen. */
  bool GameChanged = false;

  /** What happens to edits, the switches, the colours, the game directory, the names. */
  QGroupBox *fra, *fra1, *fra2, *fra3, *fraNames;
  std::array<QRadioButton*, 3> optSave;
  /** What an Update does with lines that were not edited. */
  QComboBox* cboLines;
  QLabel* lblLines;
  QCheckBox *chkBackup, *chkWA, *chkLock, *chkSnd, *chkDesktop;
  /** The first row of it says "all". */
  QSpinBox* spnKept;
  QSpinBox *spnDays, *spnStore;
  /** The caption of that box, and the space that all backups take. */
  QLabel *lblKept, *lblSpace;
  /** The same for deleted and replaced files. */
  QLabel *lblDays, *lblStore, *lblStored;
  enum Color : std::size_t { kText, kBackground };
  std::array<QPushButton*, 2> cmdColor;
  /** Samples of both colours together. */
  std::array<QLabel*, 2> lblColor;
  ElidedLabel* lblPath;
  QPushButton* cmdChg;
  WrappedLabel* lblNames;
  QPushButton* cmdNames;
  enum Command : std::size_t { kApply, kExit };
  std::array<QPushButton*, 2> cmd;
  QStatusBar* stBar;

 private:
  void Build();
  void PlaceControls();
  void NameControls();
  void Connect();

  void ShowFields();
  void ShowPath(const std::string& path);
  void ShowColors();
  int SaveRow() const;

  void ChkModify();
  bool Differs() const;
  void ClickApply();
  void ClickChange();
  void ClickNames();
  void ClickColor(Color which);

  Session& session_;
  bool bLoading = false;
  ElidedLabel* stPath_;
  std::string pathAtEntry_;
  /** What the controls show: a path need not be text, and a sample's colour goes by its palette. */
  std::string path_;
  std::int32_t foreColor_ = 0, backColor_ = 0;
};

}  // namespace rws
