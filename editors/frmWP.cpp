#include "editors/frmWP.h"

#include <QScreen>
#include <algorithm>

#include "controls/list_colors.h"
#include "editors/logic/waypoint_table.h"
#include "platform/form_placement.h"
#include "platform/qt_text.h"
#include "services/setting_values.h"
#include "session/doors.h"
#include "session/loading.h"

namespace rws {

namespace {

const QString kYes = QStringLiteral("Yes"), kNo = QStringLiteral("No");

// Who opened the form compares when it has closed.
constexpr EditKind kTypeChosen{"mnuPop1_Click", "Waypoint type", Lighting::None};

/** A change of altitude, speed or radio silence; those of several rows fail without a line. */
EditKind KindOf(int column, const char* handler) {
  const char* what = column == kWaypointAlt     ? "Altitude"
                     : column == kWaypointSpeed ? "Speed"
                                                : "Radio silence";
  return {handler, what, Lighting::None};
}

QStringList Texts(const CodePage& page, const WaypointRow& row) {
  QStringList texts;
  texts.reserve(kWaypointColumns);
  for (const auto& text : row) texts << FromBytes(page, text);
  return texts;
}

}  // namespace

frmWP::frmWP(Session& session, QWidget* parent)
    : Dialog(session.Services, "frmWP", parent), session_(session) {
  Build();
  Connect();
}

// The grid outlives this part of the form and still ends an edit then.
frmWP::~frmWP() { grd->disconnect(this); }

void frmWP::Connect() {
  On(grd, &Grid::CurrentCellChanged, "grd_RowColChange", [this] { OfferKinds(); });
  connect(grd, &Grid::EditBegan, this,
          [this](int row, int column) { CellBefore = grd->Text(row, column); });
  connect(grd, &Grid::EditEnded, this, &frmWP::EndEdit);
  On(grd, &Grid::MouseReleased, "grd_MouseUp",
     [this](Qt::MouseButton button, QPoint position) { MouseStep(button, position); });
  for (std::size_t i = 0; i < mnuPop1.size(); ++i)
    connect(mnuPop1[i], &QAction::triggered, this, [this, i] { SetKind(i); });
  On(opt[kMetric], &QRadioButton::toggled, "opt_Click", [this] { UnitChosen(); });
  for (auto* button : cmd) connect(button, &QPushButton::clicked, this, [this] { accept(); });
  connect(mnuMain1, &QAction::triggered, this, [this] { accept(); });
}

void frmWP::LoadForm() {
  Load("Form_Load", [&] {
    const Loading loading(session_.Doc);
    ApplyListColors(*this, session_.Prefs);
    Metric = ReadFlag(services_.Settings, setting::WPMetric);
    WPModified = false;
    cmd[kApply]->setEnabled(WPModified);
    opt[Metric ? kMetric : kNonMetric]->setChecked(true);
    for (std::size_t i = 0; i < mnuPop1.size(); ++i)
      mnuPop1[i]->setData(FromPath(kWaypointKinds[i].Keyword));
    ShowHeadings();
    QString caption =
        FromBytes(services_.Page, RouteCaption(session_.Doc, session_.Tables, services_));
    fra->setAccessibleName(caption);
    fra->setTitle(caption.replace(QLatin1Char('&'), QStringLiteral("&&")));
    LoadTable();
  });
  // In the middle only now: the headings decide how wide the form is.
  resize(sizeHint().boundedTo(screen()->availableSize()));
  CenterForm(*this);
}

void frmWP::SelectWaypoint(std::size_t waypoint) {
  const int row = static_cast<int>(waypoint);
  if (row >= grd->RowCount()) return;
  grd->FinishEdit();
  grd->setCurrentIndex(grd->model()->index(row, std::max(grd->currentIndex().column(), 0)));
}

void frmWP::done(int result) {
  grd->FinishEdit();
  LogAndLeave(services_, "Form_Unload", [&] {
    WriteSetting(services_.Settings, setting::WPMetric, Metric ? "True" : "False");
  });
  Dialog::done(result);
}

void frmWP::ShowHeadings() {
  QList<GridColumn> columns;
  for (const auto& look : kWaypointLooks)
    columns << GridColumn{FromPath(Metric ? look.Metric : look.NonMetric),
                          look.ToTheRight ? Qt::AlignRight : Qt::AlignHCenter, look.Typed};
  grd->SetColumns(columns);
}

void frmWP::LoadTable() {
  ShowHeadings();
  QList<QStringList> rows;
  QSet<int> fixed;
  for (const auto& row : WaypointRows(session_.Doc, Metric)) {
    rows << Texts(services_.Page, row);
    const int number = static_cast<int>(rows.size());
    if (IsTriggersRow(session_.Doc, number)) fixed << number;
  }
  grd->SetRows(rows, fixed, tr("Triggers of the game: kept as they are"));
}

void frmWP::LoadRow(int row) {
  const auto texts = OneWaypointRow(session_.Doc, row, Metric);
  grd->SetRow(row, Texts(services_.Page, texts));
}

void frmWP::OfferKinds() {
  // No row, and so no kind, where nothing may be changed.
  const int row = grd->IsFixed(grd->Row()) ? 0 : grd->Row();
  const auto offered = OfferedKinds(row, grd->RowCount());
  for (std::size_t i = 0; i < mnuPop1.size(); ++i) mnuPop1[i]->setEnabled(offered[i]);
}

void frmWP::SetKind(std::size_t kind) {
  Edit(session_, kTypeChosen, [&] {
    const int row = grd->Row();
    SetWaypoint(session_.Doc, row, kWaypointType,
                ToBytes(services_.Page, mnuPop1[kind]->data().toString()));
    WPModified = WaypointDiffers(session_.Doc, row, kWaypointType);
    // Apply stays as it is, on purpose: a new type alone does not mark the mission.
    LoadRow(row);
  });
}

void frmWP::UnitChosen() {
  if (session_.Doc.bLoading) return;
  // What is being typed was meant in the units that are still shown.
  grd->FinishEdit();
  Metric = opt[kMetric]->isChecked();
  LoadTable();
}

void frmWP::MouseStep(Qt::MouseButton button, QPoint globalPosition) {
  const Grid::Cells cells = grd->Selection();
  if (cells.RowCount() == 0 || cells.FirstCol != cells.LastCol) return;
  const int column = grd->Col();
  const bool right = button == Qt::RightButton, several = cells.RowCount() > 1;
  if (!several && grd->IsFixed(cells.FirstRow)) return;
  if (right && several && (column == kWaypointRadio || IsTypedColumn(column)))
    EditRows(cells);
  else if (button == Qt::LeftButton && !several && column == kWaypointRadio)
    FlipRadioSilence();
  else if (right && !several && column == kWaypointType)
    mnuPop->popup(globalPosition);
}

void frmWP::FlipRadioSilence() {
  const int row = grd->Row(), column = grd->Col();
  const QString text = grd->Text(row, column) == kYes ? kNo : kYes;
  grd->SetText(row, column, text);
  EndEdit(row, column, text);
}

void frmWP::EndEdit(int row, int column, const QString& text) {
  LogAndLeave(services_, "grd_AfterEdit", [&] { TakeText(row, column, text); });
  // Also after a text that was refused.
  cmd[kApply]->setEnabled(true);
}

void frmWP::TakeText(int row, int column, const QString& text) {
  // Not in the code page of missions, which lacks characters that would make a text no number.
  const std::string typed = ToPath(text);
  if (const auto value = TypedValue(typed, column, Metric)) {
    // A look into a cell must not change what feet and miles round: 250 km/h would become 249.
    const bool untouched = !Metric && text == CellBefore;
    if (row > 0 && IsTypedColumn(column) && !untouched) TakeNumber(row, column, *value);
    return;
  }
  if (column != kWaypointRadio) return grd->SetText(row, column, CellBefore);
  Edit(session_, KindOf(column, "grd_AfterEdit"), [&] {
    SetWaypoint(session_.Doc, row, column, MarkerOf(text == kYes));
    WPModified = WaypointDiffers(session_.Doc, row, column);
  });
}

void frmWP::TakeNumber(int row, int column, const std::string& value) {
  Edit(session_, KindOf(column, "grd_AfterEdit"), [&] {
    SetWaypoint(session_.Doc, row, column, value);
    LoadRow(row);
    WPModified = WaypointDiffers(session_.Doc, row, column);
  });
}

void frmWP::EditRows(const Grid::Cells& cells) {
  const int column = grd->Col();
  std::string value, failure;
  const auto keep = [&](const Fault& caught) { failure = caught.Text; };
  const auto write = [&] {
    SetWaypoints(session_.Doc, cells.FirstRow, cells.LastRow, column, value, grd->Row(),
                 [this](bool differs) {
                   WPModified = differs;
                   if (WPModified) cmd[kApply]->setEnabled(true);
                 });
  };
  Trap([&] { value = AskValue(column); }, keep);
  if (!value.empty()) Edit(session_, KindOf(column, nullptr), [&] { Trap(write, keep); });
  if (!failure.empty()) services_.Ask.MsgBox(failure, Buttons::Ok, Icon::Critical, kProgramTitle);
  LoadTable();
}

/** What all selected rows are to get; "" for nothing. */
std::string frmWP::AskValue(int column) {
  const Prompts& ask = services_.Ask;
  if (column == kWaypointRadio) {
    const Answer answer =
        ask.MsgBox("Radio Silence?", Buttons::YesNoCancel, Icon::Question, kProgramTitle);
    if (answer == Answer::Cancel) return "";
    return std::string(MarkerOf(answer == Answer::Yes));
  }
  const std::string prompt =
      "Enter a new numeric value in " + std::string(UnitWord(column, Metric));
  const auto typed = ask.InputBox(prompt, kProgramTitle, "");
  return TypedValue(typed.value_or(""), column, Metric).value_or("");
}

}  // namespace rws
