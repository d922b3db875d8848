#include "editors/frmBrief.h"

#include <QTextCursor>
#include <algorithm>

#include "controls/list_colors.h"
#include "editors/logic/briefing_inserts.h"
#include "editors/logic/briefing_letters.h"
#include "platform/form_placement.h"
#include "platform/qt_text.h"
#include "services/paths.h"
#include "services/setting_values.h"
#include "services/system_facts.h"
#include "session/journal.h"

namespace rws {

namespace {

const std::array<const SettingValue*, 4> kLabels = {
    &setting::BriefMapLabel, &setting::BriefWeatherLabel, &setting::BriefCloudLabel,
    &setting::BriefTimeLabel};

void WriteFlag(const Services& services, const SettingValue& value, bool flag) {
  WriteSetting(services.Settings, value, flag ? "True" : "False");
}

}  // namespace

frmBrief::frmBrief(Session& session, QWidget* parent)
    : Dialog(session.Services, "frmBrief", parent), session_(session) {
  Build();
  Connect();
}

void frmBrief::Connect() {
  connect(cmd[kCancel], &QPushButton::clicked, this, &QDialog::reject);
  On(cmd[kApply], &QPushButton::clicked, "cmd_Click", [this] { Apply(); });
  On(cmd[kHelp], &QPushButton::clicked, "cmd_Click", [this] { ShowHelp(); });
  connect(txtBrief, &TextBox::MenuAsked, this,
          [this](const QPoint& place) { mnuMain->popup(place); });
  ConnectMenus();
}

void frmBrief::ConnectMenus() {
  connect(mnuExit, &QAction::triggered, this, &QDialog::reject);
  On(mnuConvert, &QAction::triggered, "mnuConvert_Click", [this](bool on) {
    UseUS = on;
    WriteFlag(services_, setting::UseUSMeasurement, on);
  });
  const auto onEach = [&](auto& items, const char* name, void (frmBrief::*handle)(std::size_t)) {
    for (std::size_t i = 0; i < items.size(); ++i)
      On(items[i], &QAction::triggered, name, [this, handle, i] { (this->*handle)(i); });
  };
  onEach(mnuMod, "mnuMod_Click", &frmBrief::ModifyLabel);
  onEach(mnuInsert, "mnuInsert_Click", &frmBrief::InsertValue);
  onEach(mnuTags, "mnuTags_Click", &frmBrief::WrapInTag);
}

void frmBrief::LoadForm() {
  CenterForm(*this);
  Load(
      "Form_Load", [&] { LoadSettings(); }, [&] { Read(); });
  txtName->setFocus();
}

void frmBrief::LoadSettings() {
  const Settings& settings = services_.Settings;
  UseUS = ReadFlag(settings, setting::UseUSMeasurement);
  for (std::size_t i = 0; i < mnuMod.size(); ++i) {
    labels_[i] = ReadSetting(settings, *kLabels[i]);
    mnuMod[i]->setText(FromPath(labels_[i]).replace(QLatin1Char('&'), QLatin1String("&&")));
  }
  mnuConvert->setChecked(UseUS);
  ApplyListColors(*this, session_.Prefs);
  mnuLabel->setChecked(ReadFlag(settings, setting::LabelInsert));
}

void frmBrief::Read() {
  Briefing briefing;
  const auto read = [&] {
    auto found = ReadBriefing(services_, BriefName);
    read_ = found;
    if (found) briefing = std::move(*found);
  };
  Trap(read, [&](const Fault& caught) {
    readFault_ = caught.Text;
    Tell("The briefing could not be read.\n" + readFault_);
  });
  before_ = {std::move(briefing.Name), std::move(briefing.Short), std::move(briefing.Description)};
  for (std::size_t i = 0; i < before_.size(); ++i)
    Boxes()[i]->setPlainText(
        QString::fromStdU16String(BriefingLetters(services_.Page, before_[i])));
  for (auto* box : Boxes()) box->document()->setModified(false);
}

bool frmBrief::HoldsUnstored() const {
  const auto boxes = Boxes();
  return std::any_of(boxes.begin(), boxes.end(),
                     [](const TextBox* box) { return box->document()->isModified(); });
}

void frmBrief::Apply() {
  if (Save()) accept();
}

bool frmBrief::MayReplace() const {
  if (!services_.Files.FileExists(BriefName)) return true;
  std::optional<Briefing> now;
  ResumeNext([&] { now = ReadBriefing(services_, BriefName); });
  // A failed writing may have come to its end all the same.
  if (now && (now == read_ || now == written_)) return true;
  if (read_)
    return services_.Ask.MsgBox("Another program has changed \"" + BriefName +
                                    "\" since it was read.\n\nReplace it by the briefing as it is "
                                    "here? Undo brings back what stands there now.",
                                Buttons::YesNo, Icon::Exclamation, kProgramTitle) == Answer::Yes;
  Tell("\"" + BriefName + "\" holds a briefing that is not shown here. It is not replaced.\n" +
       readFault_);
  return false;
}

bool frmBrief::Save() {
  if (!MayReplace()) return false;
  const auto bytes = [&](std::size_t i) {
    return SpellBriefing(services_.Page, before_[i], Boxes()[i]->Text().toStdU16String());
  };
  const Briefing briefing{bytes(0), bytes(1), bytes(2)};
  written_ = ParseBriefing(BriefingText(briefing));
  const auto save = [&] {
    RecordFiles(session_, "Briefing of " + GetBaseName(BriefName),
                [&] { SaveBriefing(services_, BriefName, briefing); });
  };
  return Trap(
      save, [&](const Fault& caught) { Tell("The briefing could not be saved.\n" + caught.Text); });
}

void frmBrief::InsertValue(std::size_t index) {
  // A menu bar that took the focus has given it back by now.
  auto* box = qobject_cast<TextBox*>(focusWidget());
  if (!box || box == txtName) return;
  if (index == kAircraftCount) {
    if (AircraftCount) box->Insert(FromBytes(services_.Page, AircraftCount()));
    return;
  }
  const BriefingValues values{Map, Weather, Clouds, MisTime};
  QString text = FromBytes(services_.Page, BriefingInsert(values, index, UseUS));
  // The default labels end in a blank themselves: two blanks then stand behind the colon.
  if (mnuLabel->isChecked()) text.prepend(FromPath(At(labels_, std::ptrdiff_t(index)) + " "));
  box->Insert(text);
}

void frmBrief::ModifyLabel(std::size_t index) {
  const auto answer = services_.Ask.InputBox("Enter new label", kProgramTitle, labels_[index]);
  if (!answer || answer->empty()) return;
  // The item keeps its caption until the form is opened again.
  WriteSetting(services_.Settings, *kLabels[index], *answer);
}

void frmBrief::WrapInTag(std::size_t index) {
  static constexpr std::array<const char*, 3> kTags = {"<ARMY NONE>", "<ARMY RED>", "<ARMY BLUE>"};
  QTextCursor cursor = txtBrief->textCursor();
  if (!cursor.hasSelection()) {
    services_.Ask.MsgBox(
        "This option requires you to select the text in the mission\n"
        "briefing window so that the will tags will inclose the text.",
        Buttons::Ok, Icon::Information, kProgramTitle);
    return;
  }
  const int start = cursor.selectionStart(), end = cursor.selectionEnd();
  cursor.beginEditBlock();
  cursor.setPosition(end);
  cursor.insertText(QStringLiteral("</ARMY>"));
  const int behind = cursor.position();
  cursor.setPosition(start);
  cursor.insertText(QLatin1String(kTags[index]));
  cursor.endEditBlock();
  cursor.setPosition(behind + int(std::string_view(kTags[index]).size()));
  txtBrief->setTextCursor(cursor);
}

void frmBrief::Tell(const std::string& text) const {
  services_.Ask.MsgBox(text, Buttons::Ok, Icon::Critical, kProgramTitle);
}

void frmBrief::done(int result) {
  LogAndLeave(services_, "Form_Unload",
              [&] { WriteFlag(services_, setting::LabelInsert, mnuLabel->isChecked()); });
  Dialog::done(result);
}

}  // namespace rws
