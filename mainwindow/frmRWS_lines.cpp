#include <QPointer>

#include "mainwindow/frmLines.h"
#include "mainwindow/frmRWS.h"
#include "mission/untouched.h"
#include "platform/qt_text.h"
#include "services/numbers.h"
#include "services/setting_values.h"
#include "services/trapped.h"
#include "session/current.h"
#include "session/lines_rule.h"
#include "session/recording.h"
#include "tools/frmChanges.h"

namespace rws {

void frmRWS::ConnectLines() {
  constexpr int kPauseMilliseconds = 200;
  linesTimer_ = new QTimer(this);
  linesTimer_->setObjectName(QStringLiteral("linesTimer"));
  linesTimer_->setSingleShot(true);
  linesTimer_->setInterval(kPauseMilliseconds);
  connect(linesTimer_, &QTimer::timeout, this,
          Trapped(session_.Services, "ShowPendingLines", [this](auto) { ShowPendingLines(); }));
  connect(cmdLines, &QToolButton::clicked, this,
          Trapped(session_.Services, "mnuChanges_Click", [this](bool) { ClickChanges(); }));
  connect(mnuChanges, &QAction::triggered, this,
          Trapped(session_.Services, "mnuChanges_Click", [this](bool) { ClickChanges(); }));
  AskLines = [this](const auto& paths) { return AskAboutMissions(paths); };
  session_.AskLines =
      [window = QPointer<frmRWS>(this)](const auto& paths) -> std::optional<UntouchedLines> {
    if (!window) return {};
    return window->AskLines(paths);
  };
}

/** Called after each edit and for each mission that is shown. */
void frmRWS::LinesMayHaveChanged() {
  const bool shown = IsMissionShown(session_);
  mnuChanges->setEnabled(shown);
  cmdLines->setVisible(shown);
  const std::string path = shown ? PathOf(CurrentMission(session_)) : "";
  if (path != linesOf_) bars->Hide(kLinesBar);
  if (shown) linesTimer_->start();
}

void frmRWS::ShowPendingLines() {
  if (!IsMissionShown(session_)) return;
  const Mission& mission = CurrentMission(session_);
  const auto current = static_cast<std::size_t>(session_.Doc.CurMission);
  const ShownValues shown = missionPanel->Shown();
  const std::string path = PathOf(mission);
  if (path != linesOf_ || !mission.AsRead.SharesWith(linesSeen_)) {
    linesOf_ = path;
    linesSeen_ = mission.AsRead;
    // Of no use for a mission that is not made anew.
    madeAnew_ = mission.KeepsLines ? MadeAnewCheck()
                                   : CheckMadeAnew(session_.Doc, session_.Services, mission, shown);
  }
  std::size_t edited = 0, rewritten = mission.KeepsLines ? 0 : madeAnew_.Lines;
  if (IsUnsaved(session_, current)) {
    const PendingLines pending =
        LookAhead(session_.Doc, session_.Services, mission, shown, SavedMission(session_, current),
                  mission.KeepsLines ? PendingPart::Kept : PendingPart::Both);
    edited = ChangedLines(pending.File, pending.Kept);
    if (!mission.KeepsLines) {
      const std::size_t all = ChangedLines(mission.AsRead, pending.Anew);
      if (!pending.KeptFault.empty()) edited = 0;
      rewritten = all > edited ? all - edited : 0;
    }
  }
  cmdLines->setText(FromPath(PendingText(edited, rewritten)));
  OfferToKeepLines();
}

/** The bar stays away from missions that an Update would leave as they are, and once a choice is
    made. */
void frmRWS::OfferToKeepLines() {
  const Mission& mission = CurrentMission(session_);
  const bool open = !mission.KeepsLines && !madeAnew_.KeepsMeaning &&
                    UntouchedRule(session_.Doc, mission) == UntouchedLines::Ask;
  if (!open) return bars->Hide(kLinesBar);
  const QString lines = FromPath(GroupedNumber(madeAnew_.Lines));
  BarContent bar{BarKind::Warning,
                 tr("This mission holds more than RWS Edit's own rules know: an Update would also "
                    "change %1 lines that you did not edit.")
                     .arg(lines),
                 {},
                 {},
                 tr("Always do so")};
  if (const auto* shown = bars->Bar(kLinesBar); shown && shown->Text() == bar.Text) return;
  const auto choose = [this](UntouchedLines choice) {
    return [this, choice] {
      const bool always = bars->Bar(kLinesBar)->chk->isChecked();
      bars->Hide(kLinesBar);
      if (always) StoreUntouched(choice);
      ChooseShownLines(always ? std::nullopt : std::optional(choice));
    };
  };
  bar.Buttons = {{tr("Keep them"), choose(UntouchedLines::Keep)},
                 {tr("Show..."), [this] { ClickChanges(); }},
                 {tr("Write anew"), choose(UntouchedLines::Anew)}};
  // Closed by its cross it comes back when the mission is shown again.
  bar.OnClose = [this] { madeAnew_.KeepsMeaning = true; };
  bars->Show(kLinesBar, bar);
}

/** Null for the choice for all missions. */
void frmRWS::ChooseShownLines(std::optional<UntouchedLines> choice) {
  const std::string path = At(session_.Doc.MissionFiles, session_.Doc.CurMission);
  const int flight = session_.Doc.CurFlight;
  const auto current = static_cast<std::size_t>(session_.Doc.CurMission);
  if (choice)
    ChooseLines(session_, current, *choice);
  else
    ChooseAsForAll(session_, current);
  GoTo(path, flight);
}

/** The choice for all missions from now on. */
void frmRWS::StoreUntouched(UntouchedLines choice) {
  session_.Doc.Untouched = choice;
  WriteSetting(session_.Services.Settings, setting::LaterVersions,
               std::to_string(static_cast<int>(choice)));
}

void frmRWS::ClickChanges(bool mayChange) {
  frmChanges form(session_, this);
  form.MissionPath = PathOf(CurrentMission(session_));
  form.Shown = [this] { return missionPanel->Shown(); };
  if (mayChange) {
    form.Choose = [this](UntouchedLines choice) { ChooseShownLines(choice); };
    form.Changed = [this] {
      const std::string path = At(session_.Doc.MissionFiles, session_.Doc.CurMission);
      GoTo(path, session_.Doc.CurFlight);
    };
  }
  form.LoadForm();
  Popups.ShowDialog(form);
}

std::optional<UntouchedLines> frmRWS::AskAboutMissions(const std::vector<std::string>& paths) {
  frmLines form(session_.Services, this);
  form.Missions = paths;
  // While an Update waits nothing may be changed.
  form.Show = [this] { ClickChanges(false); };
  form.LoadForm();
  Popups.ShowDialog(form);
  if (form.Choice && form.chkAlways->isChecked()) StoreUntouched(*form.Choice);
  return form.Choice;
}

}  // namespace rws
