#include "mainwindow/plane_panel.h"

#include <QPointer>

#include "catalogues/aircraft.h"
#include "catalogues/squadrons.h"
#include "mainwindow/plane_panels.h"
#include "platform/qt_text.h"
#include "services/numbers.h"
#include "services/paths.h"
#include "services/trapped.h"
#include "session/current.h"
#include "session/doors.h"
#include "session/loading.h"

namespace rws {

namespace {

const QString kDefault = QStringLiteral("default");

constexpr EditKind kChoices[] = {{"cboAPSkin_Click", "Plane skin"},
                                 {"cboPSkin_Click", "Pilot skin"},
                                 {"cboPNoseArt_Click", "Nose art"}};
/** Two that are compared by their handlers: only what differs from the shadow lights Update, going
    back to its value can but darken it. */
constexpr EditKind kNoseArtText{"cboPNoseArt_Change", "Nose art", Lighting::None};
constexpr EditKind kSkill{"cboSL_Click", "Plane skill", Lighting::None};
constexpr EditKind kMarkings{"chkMark_Click", "Markings"};
constexpr EditKind kPlayer{"chkPlayer_Click", "Player"};

/** An emptied box counts as "default": no file is named ".bmp". */
bool ShowsDefault(const EditDropDown* list) {
  const QString text = list->Value();
  return text.isEmpty() || text == kDefault;
}

}  // namespace

PlanePanel::PlanePanel(Session& session, PlanePanels& all, int plane)
    : GroupFrame(&all), session_(session), all_(all), plane_(plane) {
  Build();
  Connect();
}

void PlanePanel::Connect() {
  const Services& services = session_.Services;
  for (const Paint paint : {kSkin, kPilot, kNoseArt}) ConnectPaint(paint);
  connect(cboPNoseArt, &QComboBox::editTextChanged, this, &PlanePanel::NoseArtTyped);
  connect(cboSL, &QComboBox::currentIndexChanged, this, &PlanePanel::SkillChosen);
  connect(chkMark, &QCheckBox::toggled, this,
          Trapped(services, kMarkings.Handler, [this](bool) { MarkClicked(); }));
  connect(chkPlayer, &QCheckBox::toggled, this, &PlanePanel::PlayerClicked);
}

void PlanePanel::ConnectPaint(Paint paint) {
  const Services& services = session_.Services;
  const EditDropDown* list = Lists()[paint];
  const LabelButton* label = Labels()[paint];
  const char* chosen = kChoices[paint].Handler;
  connect(list, &QComboBox::currentIndexChanged, this,
          Trapped(services, chosen, [=, this](int) { PaintChosen(paint); }));
  // A missing file shows as "default"; who chooses "default" then wants the name gone.
  const auto chooseAgain = [=, this](int) {
    if (label->Color() == LabelColor::Red && ShowsDefault(list)) PaintChosen(paint);
  };
  connect(list, &QComboBox::activated, this, Trapped(services, chosen, chooseAgain));
  constexpr const char* kLabelHandlers[] = {"lbl2_MouseUp", "lbl3_Click", "lbl4_Click"};
  connect(label, &LabelButton::Clicked, this,
          Trapped(services, kLabelHandlers[paint],
                  [=, this](Qt::MouseButton button) { LabelClicked(paint, button); }));
}

PlaneSlot& PlanePanel::Slot() { return At(CurrentFlight(session_).PlaneSlots, plane_); }

PlaneSlot& PlanePanel::ShadowSlot() {
  const Document& doc = session_.Doc;
  Mission& shadow = At(session_.Doc.MissionShadow, doc.CurMission);
  return At(At(shadow.Flights, doc.CurFlight).PlaneSlots, plane_);
}

bool PlanePanel::CountryIsUsa() {
  return GetCountryByGroup(session_.Tables, session_.Services, CurrentFlight(session_).Name) ==
         "usa";
}

std::string& PlanePanel::File(Paint paint) {
  PlaneSlot& slot = Slot();
  return paint == kSkin ? slot.Skin : paint == kPilot ? slot.Pilot : slot.NoseArt;
}

void PlanePanel::SetFrame(bool enabled, bool noHighlight) {
  Highlight(false);
  bool noseArt = false;
  ResumeNext([&] {
    noseArt = CountryIsUsa() && IsNoseart(session_.Tables, CurrentFlight(session_).Class);
  });
  const Loading loading(session_.Doc);
  chkPlayer->setChecked(false);
  for (QWidget* control : std::initializer_list<QWidget*>{this, chkPlayer, cboAPSkin, cboPSkin,
                                                          chkMark, lbl1, lbl2, lbl3})
    control->setEnabled(enabled);
  cboPNoseArt->setEnabled(enabled && noseArt);
  lbl4->setEnabled(enabled && noseArt);
  ResumeNext([&] {
    const Flight& flight = CurrentFlight(session_);
    if (enabled)
      chkPlayer->setEnabled(IsFlyable(session_.Tables, flight.Class) && flight.OnlyAI != "1");
    const Mission& mission = CurrentMission(session_);
    if (noHighlight || mission.Player != flight.Name || Val(mission.PlayerNum) != plane_) return;
    Highlight(true);
    chkPlayer->setChecked(true);
  });
}

void PlanePanel::Clear(bool noHighlight) {
  SetFrame(false, noHighlight);
  ChkLabels(false);
  for (auto* label : Labels()) label->setToolTip(QString());
  cboSL->setEnabled(false);
  // A panel beyond the flight's planes shows nothing of the flight before.
  cboSL->setCurrentIndex(-1);
  for (auto* list : Lists()) {
    list->setCurrentIndex(-1);
    list->clearEditText();
  }
  chkMark->setChecked(false);
}

void PlanePanel::DisableAll() {
  for (QWidget* control : std::initializer_list<QWidget*>{
           lbl1, lbl2, lbl3, lbl4, cboSL, cboAPSkin, cboPSkin, cboPNoseArt, chkMark, chkPlayer})
    control->setEnabled(false);
  img->setVisible(false);
  setEnabled(false);
}

void PlanePanel::FillFixedLists() {
  const Loading loading(session_.Doc);
  const CodePage& page = session_.Services.Page;
  cboSL->Fill({tr("Rookie (0)"), tr("Average (1)"), tr("Veteran (2)"), tr("Ace (3)")});
  cboPSkin->Fill(QStringList{kDefault} + SkinCaptions(page, session_.Tables.PilotSkins));
  cboPNoseArt->Fill(QStringList{kDefault} + SkinCaptions(page, session_.Tables.NoseArts));
}

void PlanePanel::FillSkins(const QStringList& rows, const std::string& folder) {
  cboAPSkin->Fill(rows);
  SkinDirectory = folder;
}

void PlanePanel::OfferSkins(const QStringList& rows, const std::string& folder) {
  const Showing showing(session_);
  const Loading loading(session_.Doc);
  const QString shown = cboAPSkin->Value();
  FillSkins(rows, folder);
  // A panel beyond the flight's planes shows nothing.
  if (!shown.isEmpty()) cboAPSkin->SelectText(shown);
  if (lbl2->Color() != LabelColor::Red || !SelectFile(cboAPSkin, Slot().Skin)) return;
  ColorLabel(lbl2, LabelColor::Black);
  ChkLabels(true);
}

void PlanePanel::Fill() {
  const Showing showing(session_);
  const Loading loading(session_.Doc);
  chkMark->setChecked(Slot().NumberOn.empty());
  ShowSkill();
  all_.LoadSkinList(GetPlaneFolder(session_.Tables, CurrentFlight(session_).Class), plane_);
  if (!SelectFile(cboAPSkin, Slot().Skin)) TurnRed(lbl2, cboAPSkin);
  const bool pilotFound = SelectFile(cboPSkin, Slot().Pilot);
  if (!pilotFound) TurnRed(lbl3, cboPSkin);
  FillNoseArt(pilotFound);
  SetFrame(true, false);
  ChkLabels(true);
}

void PlanePanel::ShowSkill() {
  const bool custom = CurrentFlight(session_).Skill == "Custom";
  const std::string skill = custom ? Slot().Skill : CurrentFlight(session_).Skill;
  if (custom) cboSL->setEnabled(true);
  if (skill.empty()) return cboSL->setCurrentIndex(-1);
  ResumeNext([&] { cboSL->SelectRow(CInt(Val(skill))); });
}

bool PlanePanel::SelectFile(EditDropDown* list, const std::string& file) {
  const CodePage& page = session_.Services.Page;
  if (file.empty()) {
    list->SelectText(kDefault);
    return list->count() > 0;
  }
  const std::string wanted = page.LCase(GetBaseName(file));
  for (int row = 0; row < list->count(); ++row) {
    const QString text = list->itemText(row);
    if (text.size() != static_cast<qsizetype>(wanted.size())) continue;
    if (page.LCase(ToBytes(page, text)) != wanted) continue;
    list->SelectRow(row);
    return true;
  }
  return false;
}

void PlanePanel::TurnRed(LabelButton* label, EditDropDown* list) {
  ColorLabel(label, LabelColor::Red);
  label->setToolTip(tr("Click here"));
  list->SelectText(kDefault);
}

void PlanePanel::FillNoseArt(bool found) {
  cboPNoseArt->SelectRow(0);
  if (!CountryIsUsa()) return cboPNoseArt->setEnabled(false);
  // What the pilot's search found counts here too, and an empty field finds nothing: so a missing
  // nose art turns red only beside a missing pilot, and so does none at all.
  const std::string file = Slot().NoseArt;
  if (SelectFile(cboPNoseArt, file) && !file.empty()) found = true;
  if (!found) TurnRed(lbl4, cboPNoseArt);
}

void PlanePanel::ChkLabels(bool active) {
  bool viewable = false;
  for (const Paint paint : {kSkin, kPilot, kNoseArt}) {
    LabelButton* label = Labels()[paint];
    if (active && label->Color() == LabelColor::Red) continue;
    const bool blue = active && !ShowsDefault(Lists()[paint]);
    ColorLabel(label, blue ? LabelColor::Blue : LabelColor::Black);
    label->setToolTip(!blue           ? QString()
                      : label == lbl2 ? tr("Left click to view skin image, right click for skin "
                                           "directory")
                                      : tr("Click here"));
    viewable = viewable || blue;
  }
  img->setVisible(viewable);
  // Markings switched off on a default skin deserve a warning.
  ColorMark(active && lbl2->Color() == LabelColor::Black && !chkMark->isChecked());
}

std::string PlanePanel::ChosenFile(Paint paint) const {
  const EditDropDown* list = Lists()[paint];
  return ShowsDefault(list) ? "" : ToBytes(session_.Services.Page, list->Value()) + ".bmp";
}

void PlanePanel::ClearRed(Paint paint) {
  // Nose art clears the skin's label, not its own, and always has.
  const bool other = paint == kNoseArt && !ShowsDefault(cboPNoseArt);
  ColorLabel(other ? lbl2 : Labels()[paint], LabelColor::Black);
}

void PlanePanel::PaintChosen(Paint paint) {
  if (session_.Doc.bLoading) return;
  const std::string file = ChosenFile(paint);
  const auto store = [&] {
    File(paint) = file;
    ClearRed(paint);
  };
  if (File(paint) != file) {
    Edit(session_, kChoices[paint], store);
  } else {
    // A nose art has been stored by its text already; it is only compared, as one that is equal.
    store();
    SetModify(session_);
  }
  all_.ChkLabels(plane_, true);
}

void PlanePanel::NoseArtTyped() {
  if (session_.Doc.bLoading) return;
  const bool done = Edit(session_, kNoseArtText, [&] {
    File(kNoseArt) = ChosenFile(kNoseArt);
    ClearRed(kNoseArt);
    if (Slot().NoseArt != ShadowSlot().NoseArt || CurrentMission(session_).Modified)
      SetModify(session_);
  });
  if (done) all_.ChkLabels(plane_, true);
}

void PlanePanel::SkillChosen(int row) {
  if (session_.Doc.bLoading || row < 0) return;
  Edit(session_, kSkill, [&] {
    Slot().Skill = std::to_string(row);
    if (Slot().Skill != ShadowSlot().Skill || CurrentMission(session_).Modified)
      SetModify(session_);
  });
}

void PlanePanel::MarkClicked() {
  if (session_.Doc.bLoading) return;
  const bool on = chkMark->isChecked();
  if (!Edit(session_, kMarkings, [this, on] { Slot().NumberOn = on ? "" : "0"; })) return;
  if (plane_ == 0) Q_EMIT all_.MarkingsShown(on);
  all_.ChkLabels(plane_, true);
}

void PlanePanel::PlayerClicked() {
  if (session_.Doc.bLoading) return;
  Edit(session_, kPlayer, [&] {
    Mission& mission = CurrentMission(session_);
    const std::string player = mission.Player, number = mission.PlayerNum;
    if (chkPlayer->isChecked()) {
      mission.PlayerNum = std::to_string(plane_);
      mission.Player = CurrentFlight(session_).Name;
    }
    if (!all_.IsAnyPlayerChecked()) {
      mission.Player.clear();
      mission.PlayerNum.clear();
    }
    if (mission.Player != player || mission.PlayerNum != number) Refill();
  });
}

void PlanePanel::Refill() {
  QPointer<QWidget> focus = window()->focusWidget();
  Q_EMIT all_.PlanesChanged();
  // Disabled and enabled again, a control has lost the focus; a label may have no more to do.
  if (auto* label = qobject_cast<LabelButton*>(focus); label && label->focusPolicy() == Qt::NoFocus)
    focus = label->buddy();
  if (focus && focus->isEnabled()) focus->setFocus(Qt::OtherFocusReason);
}

}  // namespace rws
