#include "tools/frmLists.h"

#include <algorithm>

#include "catalogues/own_entries.h"
#include "controls/list_colors.h"
#include "platform/form_placement.h"
#include "platform/qt_text.h"
#include "services/numbers.h"
#include "services/text.h"

namespace rws {

namespace {

/** What a cell of a table shows; its tip is the whole text. */
QVariant Cell(int role, const QString& text, bool isNumber) {
  if (role == Qt::DisplayRole || role == Qt::ToolTipRole) return text;
  if (role == Qt::TextAlignmentRole && isNumber)
    return static_cast<int>(Qt::AlignRight | Qt::AlignVCenter);
  return {};
}

QVariant Heading(const QStringList& names, int section, Qt::Orientation orientation, int role) {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
  return names.value(section);
}

}  // namespace

frmLists::frmLists(Session& session, QWidget* parent)
    : Dialog(session.Services, "frmLists", parent),
      Sources(this),
      Troubles(this),
      session_(session) {
  Build();
  Connect();
}

void frmLists::Connect() {
  On(chkUse, &QCheckBox::toggled, "chkUse_Click", [this] { EnableChoices(); });
  On(cmd[kReadAgain], &QPushButton::clicked, "cmd_Click", [this] { Take(ReadLists::Anew); });
  On(cmd[kOk], &QPushButton::clicked, "cmd_Click", [this] { ClickOk(); });
  connect(cmd[kCancel], &QPushButton::clicked, this, &QDialog::reject);
}

void frmLists::LoadForm() {
  ApplyListColors(*this, session_.Prefs);
  Load(
      "Form_Load", [&] { LoadFormPlace(services_, *this); }, [&] { ShowChoices(); },
      [&] { ShowNames(); });
  setWindowTitle(tr("%1 - Names and Lists").arg(QLatin1String(kProgramTitle)));
}

void frmLists::done(int result) {
  LogAndLeave(services_, "Form_Unload", [&] { SaveFormPlace(services_, *this); });
  Dialog::done(result);
}

void frmLists::ShowChoices() {
  chkUse->setChecked(Choices.UseLists);
  chkFlyable->setChecked(Choices.UnlistedFlyable);
  FillPacks();
  FillLanguages();
  EnableChoices();
}

/** Those of the game, also while none is in use. */
void frmLists::FillPacks() {
  cboPack->clear();
  const auto packs = FindPacks(services_, session_.Doc.GamePath).Packs;
  const bool isKnown = std::any_of(packs.begin(), packs.end(), [&](const GamePack& pack) {
    return EqualNoCase(pack.Folders, Choices.Pack);
  });
  if (packs.empty()) cboPack->addItem(tr("None found"), FromPath(Choices.Pack));
  if (packs.size() > 1 && !isKnown)
    cboPack->addItem(tr("Choose one of %1").arg(packs.size()), FromPath(Choices.Pack));
  for (const auto& pack : packs) {
    const QString name = FromPath(pack.Name), folders = FromPath(pack.Folders);
    // The only one counts by itself: no choice is stored for it.
    const std::string& stored = packs.size() > 1 ? pack.Folders : Choices.Pack;
    cboPack->addItem(name == folders ? name : tr("%1 in %2").arg(name, folders), FromPath(stored));
    if (packs.size() > 1 && EqualNoCase(pack.Folders, Choices.Pack))
      cboPack->setCurrentIndex(cboPack->count() - 1);
  }
}

void frmLists::FillLanguages() {
  const std::array<std::pair<const char*, QString>, 9> languages{{{"us", tr("English")},
                                                                  {"de", tr("German")},
                                                                  {"fr", tr("French")},
                                                                  {"cs", tr("Czech")},
                                                                  {"pl", tr("Polish")},
                                                                  {"hu", tr("Hungarian")},
                                                                  {"lt", tr("Lithuanian")},
                                                                  {"ru", tr("Russian")},
                                                                  {"ja", tr("Japanese")}}};
  cboLanguage->clear();
  const std::string ofGame = GameLanguage(services_, session_.Doc.GamePath);
  cboLanguage->addItem(tr("As the game (%1)").arg(FromPath(ofGame)), QString());
  for (const auto& [code, name] : languages)
    cboLanguage->addItem(QStringLiteral("%1 (%2)").arg(name, QLatin1String(code)),
                         QLatin1String(code));
  const QString stored = FromPath(Choices.Language);
  if (cboLanguage->findData(stored) < 0) cboLanguage->addItem(stored, stored);
  cboLanguage->setCurrentIndex(cboLanguage->findData(stored));
}

void frmLists::EnableChoices() {
  const bool isUsed = chkUse->isChecked();
  for (QWidget* control : {static_cast<QWidget*>(lblPack), static_cast<QWidget*>(cboPack)})
    control->setEnabled(isUsed && cboPack->count() > 1);
  for (QWidget* control : {static_cast<QWidget*>(lblLanguage), static_cast<QWidget*>(cboLanguage),
                           static_cast<QWidget*>(chkFlyable)})
    control->setEnabled(isUsed);
}

void frmLists::ShowNames() {
  lblNames->setText(FromPath(NamesText(Names, Choices)));
  std::vector<ListTrouble> troubles;
  for (const auto& text : Names.Troubles) troubles.push_back({"", 0, text});
  if (Names.Kept) {
    const GameLists& lists = Names.Kept->Lists;
    troubles.insert(troubles.end(), lists.Troubles.begin(), lists.Troubles.end());
    Sources.SetRows(lists.Sources);
  } else {
    Sources.SetRows({});
  }
  ShowOwn(troubles);
  lblTroubles->setText(troubles.empty()
                           ? tr("What was &not understood: nothing")
                           : tr("What was &not understood (%1):").arg(troubles.size()));
  lstTroubles->setVisible(!troubles.empty());
  Troubles.SetRows(std::move(troubles));
}

/** The user's own entries, which count whether or not lists are in use. */
void frmLists::ShowOwn(std::vector<ListTrouble>& troubles) {
  const std::string path = OwnEntriesFile(services_);
  OwnEntries own;
  Trap([&] { own = ParseOwnEntries(ReadOwnEntriesFile(services_)); },
       [&](const Fault& caught) {
         troubles.push_back({path, 0, caught.Text});
       });
  for (const auto& text : own.Troubles) {
    const std::size_t colon = text.find(": ");
    troubles.push_back({path, static_cast<std::size_t>(Val(text)),
                        "No line of an entry: " + text.substr(colon + 2)});
  }
  const auto counted = [](std::size_t count, const char* one, const char* many) {
    return FromPath(GroupedNumber(count) + " " + (count == 1 ? one : many));
  };
  lblOwn->setText(tr("Added by you: %1 and %2, in %3")
                      .arg(counted(own.Aircraft.size(), "aircraft", "aircraft"),
                           counted(own.Maps.size(), "map", "maps"), FromPath(path)));
}

NameChoices frmLists::Chosen() const {
  NameChoices chosen;
  chosen.UseLists = chkUse->isChecked();
  chosen.Pack = ToPath(cboPack->currentData().toString());
  chosen.Language = ToPath(cboLanguage->currentData().toString());
  chosen.UnlistedFlyable = chkFlyable->isChecked();
  return chosen;
}

bool frmLists::Take(ReadLists how) {
  const NameChoices chosen = Chosen();
  return Trap(
      [&] {
        Names = Use(chosen, how);
        Choices = chosen;
        ShowChoices();
        ShowNames();
      },
      [&](const Fault& caught) {
        LogError(services_, caught.Text, "frmLists.Take");
        services_.Ask.MsgBox("The choices could not be taken over.\n" + caught.Text, Buttons::Ok,
                             Icon::Critical, kProgramTitle);
      });
}

void frmLists::ClickOk() {
  if (Chosen() == Choices || Take(ReadLists::IfChanged)) accept();
}

QVariant ListSourceModel::data(const QModelIndex& index, int role) const {
  const ListSource* row = RowOf(index);
  if (!row) return {};
  const QString texts[] = {FromPath(row->List), FromPath(GroupedNumber(row->Entries)),
                           FromPath(row->Path)};
  return Cell(role, texts[index.column()], index.column() == 1);
}

QVariant ListSourceModel::headerData(int section, Qt::Orientation orientation, int role) const {
  return Heading({tr("List"), tr("Entries"), tr("File")}, section, orientation, role);
}

QVariant ListTroubleModel::data(const QModelIndex& index, int role) const {
  const ListTrouble* row = RowOf(index);
  if (!row) return {};
  const QString texts[] = {FromPath(row->Text), row->Line ? QString::number(row->Line) : QString(),
                           FromPath(row->Path)};
  return Cell(role, texts[index.column()], index.column() == 1);
}

QVariant ListTroubleModel::headerData(int section, Qt::Orientation orientation, int role) const {
  return Heading({tr("Why"), tr("Line"), tr("File")}, section, orientation, role);
}

}  // namespace rws
