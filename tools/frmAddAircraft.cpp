#include "tools/frmAddAircraft.h"

#include <algorithm>

#include "catalogues/own_names.h"
#include "controls/list_colors.h"
#include "platform/qt_text.h"
#include "services/text.h"

namespace rws {

frmAddAircraft::frmAddAircraft(Session& session, QWidget* parent)
    : Dialog(session.Services, "frmAddAircraft", parent), session_(session) {
  Build();
  Connect();
}

void frmAddAircraft::Connect() {
  for (auto* box : {txtName, txtKey, txtMore})
    On(box, &QLineEdit::textChanged, "txt_Change", [this] { Judge(); });
  On(cmd[kAdd], &QPushButton::clicked, "cmd_Click", [this] { ClickAdd(); });
  On(cmd[kOk], &QPushButton::clicked, "cmd_Click", [this] { ClickOk(); });
  connect(cmd[kCancel], &QPushButton::clicked, this, &QDialog::reject);
}

void frmAddAircraft::LoadForm() {
  ApplyListColors(*this, session_.Prefs);
  Load("Form_Load", [&] { Propose(); });
  proposed_ = Entered();
  Judge();
  txtName->selectAll();
  txtName->setFocus();
  setWindowTitle(tr("%1 - Add This Aircraft").arg(QLatin1String(kProgramTitle)));
}

/** What is known of it; an entry that the file has by now would else be lost. */
void frmAddAircraft::Propose() {
  const CodePage& page = services_.Page;
  lblSeen->setText(FromPath(SeenText(Seen)));
  txtClass->setText(FromBytes(page, Class));
  OwnAircraft entry{page.ToUtf8(Class), ProposedAircraftName(session_.Tables, services_, Class),
                    IsBlue, true, ProposedAircraftKey(session_.Tables, services_, Class)};
  Qt::CheckState seen = Qt::Checked;
  ResumeNext([&] {
    for (const auto& own : ParseOwnEntries(ReadOwnEntriesFile(services_)).Aircraft)
      if (own.Class == entry.Class) entry = own, seen = Qt::Unchecked;
  });
  ShowEntry(entry);
  for (const auto& key : Seen.Loadouts) ShowLoadout(page.ToUtf8(key), seen);
}

void frmAddAircraft::ShowEntry(const OwnAircraft& entry) {
  txtName->setText(FromPath(entry.Name));
  cboSide->setCurrentIndex(entry.IsBlue ? 1 : 0);
  chkFlyable->setChecked(entry.Flyable);
  txtKey->setText(FromPath(entry.Key));
  for (const auto& key : entry.Loadouts) ShowLoadout(key, Qt::Checked);
}

/** Lights a loadout, which is added where the list lacks it. */
void frmAddAircraft::ShowLoadout(const std::string& key, Qt::CheckState state) {
  if (!WhyNotWord(services_, "loadout", key).empty()) return;
  const QString text = FromPath(key);
  const auto known = lstLoadouts->findItems(text, Qt::MatchFixedString);
  auto* item = known.isEmpty() ? new QListWidgetItem(text, lstLoadouts) : known.front();
  if (known.isEmpty() || state == Qt::Checked) item->setCheckState(state);
  lstLoadouts->setCurrentItem(item);
}

OwnAircraft frmAddAircraft::Entered() const {
  OwnAircraft entry{services_.Page.ToUtf8(Class), ToPath(txtName->text().simplified()),
                    cboSide->currentIndex() == 1, chkFlyable->isChecked(),
                    ToPath(txtKey->text().trimmed())};
  for (int row = 0; row < lstLoadouts->count(); ++row)
    if (lstLoadouts->item(row)->checkState() == Qt::Checked)
      entry.Loadouts.push_back(ToPath(lstLoadouts->item(row)->text()));
  entry.From = SeenMissionsText(Seen);
  return entry;
}

bool frmAddAircraft::HoldsUnstored() const {
  return Entered() != proposed_ || !txtMore->text().isEmpty();
}

std::string frmAddAircraft::WhyNot() const {
  std::string why = WhyNotAircraftName(session_.Tables, services_, Class, ToPath(txtName->text()));
  const std::string key = ToPath(txtKey->text().trimmed()),
                    more = ToPath(txtMore->text().trimmed());
  if (why.empty() && !key.empty()) why = WhyNotWord(services_, "name in home bases", key);
  if (why.empty() && !more.empty()) why = WhyNotWord(services_, "loadout", more);
  return why;
}

void frmAddAircraft::Judge() {
  const QString why = FromPath(WhyNot());
  const std::string more = ToPath(txtMore->text().trimmed());
  lblWhyNot->setText(why.isEmpty() ? why : QStringLiteral("\u26A0 ") + why);
  for (QWidget* box : {txtName, txtKey, txtMore}) box->setAccessibleDescription(why);
  cmd[kOk]->setEnabled(why.isEmpty());
  const bool mayAdd = !more.empty() && WhyNotWord(services_, "loadout", more).empty();
  cmd[kAdd]->setEnabled(mayAdd);
  // Enter adds what is being typed before it closes the form.
  cmd[mayAdd ? kAdd : kOk]->setDefault(true);
}

void frmAddAircraft::ClickAdd() {
  ShowLoadout(ToPath(txtMore->text().trimmed()), Qt::Checked);
  txtMore->clear();
  txtMore->setFocus();
}

void frmAddAircraft::ClickOk() {
  if (!txtMore->text().trimmed().isEmpty()) ClickAdd();
  IsAdded = Trap([&] { AddOwnAircraft(services_, Entered()); },
                 [&](const Fault& caught) {
                   LogError(services_, caught.Text, "frmAddAircraft.ClickOk");
                   services_.Ask.MsgBox("The aircraft could not be added.\n" + caught.Text,
                                        Buttons::Ok, Icon::Critical, kProgramTitle);
                 });
  if (IsAdded) accept();
}

}  // namespace rws
