#pragma once

#include <QAction>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QStackedLayout>
#include <array>
#include <functional>
#include <optional>
#include <string>

#include "controls/dialog.h"
#include "mission/pending_lines.h"
#include "session/session.h"
#include "tools/compare_view.h"
#include "tools/logic/change_rows.h"

namespace rws {

/** Shows what an Update will change in a mission: its file as it is and as it would be written, in
    either of the two ways, with the user's edits told from what is only rewritten. An edit can be
    taken back here. The caller sets what is shown, loads and shows the form. */
class frmChanges : public Dialog {
  Q_OBJECT

 public:
  frmChanges(Session& session, QWidget* parent);

  void LoadForm();
  /** Stores size and place, however the form is closed. */
  void done(int result) override;

  /** Full path of a mission that is in memory. */
  std::string MissionPath;
  /** What the window shows of it. */
  std::function<ShownValues()> Shown;
  /** Makes a way to write the one for this mission. Without it, and without the next one, the form
      only shows. */
  std::function<void(UntouchedLines)> Choose;
  /** Called when an edit has been taken back. */
  std::function<void()> Changed;

  QLabel *lblSubject, *lblWay, *lblRule, *lblNote;
  enum Way : std::size_t { kKeep, kAnew };
  std::array<QRadioButton*, 2> optWay;
  CompareView* cmpTexts;
  /** Why there is nothing to compare. */
  QPlainTextEdit* txtFault;
  enum Command : std::size_t { kUse, kTakeBack, kCopy, kClose };
  std::array<QPushButton*, 4> cmd;
  /** The same two in the menu of the lists. */
  QAction *mnuTakeBack, *mnuCopy;

 private:
  void Build();
  void PlaceControls();
  void Connect();
  void LookAgain();
  void ShowWay();
  void ShowTexts();
  void ShowRule();
  void EnableCommands();
  void TakeBackCurrent();
  void CopyAsText();
  std::optional<ChangedLine> CurrentEdit() const;
  const Mission& Record() const;
  bool Keeps() const { return optWay[kKeep]->isChecked(); }
  const LineArray& Written() const { return Keeps() ? pending_.Kept : pending_.Anew; }
  const std::string& Fault() const { return Keeps() ? pending_.KeptFault : pending_.AnewFault; }

  Session& session_;
  PendingLines pending_;
  ChangeLabels labels_;
  QStackedLayout* parts_;
};

}  // namespace rws
