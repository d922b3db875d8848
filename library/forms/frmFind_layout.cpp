#include <QHeaderView>
#include <QVBoxLayout>

#include "controls/layouts.h"
#include "library/completion.h"
#include "library/forms/frmFind.h"

namespace rws {

void frmFind::Build() {
  const Session& session = session_;
  Library = new MissionLibrary(
      services_.Page,
      [&session] { return NamesFrom(session.Doc.Maps, session.Tables, session.Services.Page); },
      this);
  Query = new LibraryQuery(*Library, this);
  txtFolder = Named(new QLineEdit, "txtFolder", tr("Folder"));
  chkBelow =
      Named(new QCheckBox(tr("&With the folders below")), "chkBelow", tr("With the folders below"));
  chkBelow->setChecked(true);
  qryFind = Named(new QueryBox, "qryFind");
  qryFind->txtQuery->setAccessibleName(tr("Find"));
  qryFind->txtQuery->setPlaceholderText(tr("All missions; type words of names, or map:crimea ..."));
  qryFind->txtQuery->setToolTip(
      tr("Words of names, or map:crimea, aircraft:\"bf 109\", -kind:coop and more; Ctrl+Space "
         "lists what there is"));
  qryFind->Completions = [this](std::string_view line, std::size_t cursor) {
    return Complete(line, cursor, Library->Index());
  };
  cmdRecent = Named(new QToolButton, "cmdRecent", tr("Last queries"), tr("The last queries"));
  cmdRecent->setText(tr("&Last"));
  cmdRecent->setPopupMode(QToolButton::InstantPopup);
  cmdRecent->setFocusPolicy(Qt::StrongFocus);
  mnuRecent = Named(new QMenu(cmdRecent), "mnuRecent");
  cmdRecent->setMenu(mnuRecent);
  BuildTable();
  preview = new MissionPreview(session_);
  lblState = Named(new QLabel, "lblState");
  lblState->setTextFormat(Qt::PlainText);
  lblState->setWordWrap(true);
  cmd = {Button("cmd(0)", tr("&Browse..."), tr("Choose the folder to look in")),
         Button("cmd(1)", tr("&Stop"), tr("Reads no more missions")),
         Button("cmd(2)", tr("&Open"), tr("Open the folder of the mission with it selected")),
         Button("cmd(3)", tr("&Export..."), tr("Write the list to a file for other programs")),
         Button("cmd(4)", tr("&Close"), tr("Close window and Exit")),
         Button("cmd(5)", tr("Chec&k..."), tr("Check the missions found, or those selected")),
         Button("cmd(6)", tr("Edit &Many..."), tr("Edit the missions found, or those selected"))};
  for (auto* button : cmd) button->setAutoDefault(false);
  PlaceControls();
}

void frmFind::BuildTable() {
  Table = new MissionTable(*Library, *Query, this);
  lstFound = Named(new ReportList, "lstFound", tr("Missions found"));
  lstFound->setModel(Table);
  lstFound->installEventFilter(this);
  // Folders differ at their ends.
  lstFound->setTextElideMode(Qt::ElideMiddle);
  auto* header = lstFound->header();
  header->setSectionsMovable(true);
  header->setFirstSectionMovable(false);
  header->setStretchLastSection(false);
  header->setSortIndicatorShown(true);
  header->setContextMenuPolicy(Qt::CustomContextMenu);
  header->setToolTip(tr("Click to sort; right click to choose the columns"));
  mnuColumns = Named(new QMenu(lstFound), "mnuColumns");
  for (const auto column : kAllColumns) {
    const std::string title(ColumnTitle(column));
    auto* entry = mnuColumns->addAction(QString::fromStdString(title));
    entry->setCheckable(true);
    // Something must be there to take the others back by.
    entry->setEnabled(column != MissionColumn::Mission);
  }
  mnuColumns->addSeparator();
  mnuColumns->addAction(tr("Usual Columns"));
}

void frmFind::PlaceControls() {
  constexpr int kLetters = 170, kLines = 44;
  auto* whole = new QVBoxLayout(this);
  auto* folder = new QHBoxLayout;
  auto* caption = new QLabel(tr("&Folder"));
  caption->setBuddy(txtFolder);
  folder->addWidget(caption);
  folder->addWidget(txtFolder, 1);
  folder->addWidget(cmd[kBrowse]);
  folder->addWidget(chkBelow);
  whole->addLayout(folder);
  auto* query = new QHBoxLayout;
  query->addWidget(qryFind, 1);
  query->addWidget(cmdRecent, 0, Qt::AlignTop);
  whole->addLayout(query);
  parts_ = Named(new QSplitter, "splFind");
  parts_->setChildrenCollapsible(false);
  parts_->addWidget(lstFound);
  parts_->addWidget(preview);
  parts_->setStretchFactor(0, 1);
  whole->addWidget(parts_, 1);
  auto* below = new QHBoxLayout;
  below->addWidget(lblState, 1);
  for (const Command command : {kStop, kOpen, kCheck, kEdit, kExport, kClose})
    below->addWidget(cmd[command]);
  whole->addLayout(below);
  setWindowFlag(Qt::WindowMaximizeButtonHint);
  setWindowFlag(Qt::WindowMinimizeButtonHint);
  TabOrder({txtFolder, cmd[kBrowse], chkBelow, qryFind->txtQuery, cmdRecent, lstFound,
            preview->txtBriefing, preview->lstFlights, cmd[kStop], cmd[kOpen], cmd[kCheck],
            cmd[kEdit], cmd[kExport], cmd[kClose]});
  const int width = fontMetrics().averageCharWidth() * kLetters;
  parts_->setSizes({width * 2 / 3, width / 3});
  resize(width, fontMetrics().height() * kLines);
}

}  // namespace rws
