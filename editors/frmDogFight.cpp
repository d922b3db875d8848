#include "editors/frmDogFight.h"

#include <QEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QScrollBar>
#include <algorithm>
#include <utility>

#include "controls/list_colors.h"
#include "platform/form_placement.h"
#include "platform/qt_text.h"
#include "services/arrays.h"
#include "session/doors.h"
#include "session/loading.h"

namespace rws {

namespace {

// Made in the shadow, they differ from nothing; who opened the form compares after Apply.
constexpr EditKind kColor{"cbo_Click", "Home base colour", Lighting::None};
constexpr EditKind kSize{"slide_MouseUp", "Home base size", Lighting::None};
constexpr EditKind kMovedAircraft{nullptr, "Aircraft of a home base", Lighting::None};
constexpr EditKind kDefaultAircraft{"cmd2_Click", "Aircraft of a home base", Lighting::None};
constexpr EditKind kHomeBases{"cmd_Click", "Home bases", Lighting::None};

}  // namespace

frmDogFight::frmDogFight(Session& session, QWidget* parent)
    : Dialog(session.Services, "frmDogFight", parent), session_(session) {
  Build();
  Connect();
}

void frmDogFight::Connect() {
  connect(upd, &UpDown::ValueChanged, this, [this](int value) {
    if (session_.Doc.bLoading) return;
    CurBase = value;
    Refresh();
  });
  connect(cbo, &DropDown::activated, this, [this](int row) {
    Edit(session_, kColor, [&] {
      Base().Army = static_cast<std::int16_t>(row);
      ShowColor(row);
    });
  });
  slide->installEventFilter(this);
  connect(slide, &QSlider::valueChanged, this, &frmDogFight::ShowSize);
  for (std::size_t i = 0; i < lstAC.size(); ++i) {
    lstAC[i]->installEventFilter(this);
    // By whatever means the user moves: keys count as the mouse does.
    connect(lstAC[i]->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this, i] { cmd1[i]->setEnabled(models_[i].rowCount() > 0); });
    connect(cmd1[i], &QPushButton::clicked, this, [this, i] { Move(i); });
    connect(lstAC[i], &ReportList::doubleClicked, this, [this, i] { MoveSelected(i); });
  }
  On(cmd2, &QPushButton::clicked, "cmd2_Click", [this] { SetDefault(); });
  connect(cmd[kApply], &QPushButton::clicked, this, [this] { Apply(); });
  connect(cmd[kCancel], &QPushButton::clicked, this, [this] {
    frmCancel = true;
    reject();
  });
}

void frmDogFight::LoadForm() {
  // A form closed by its title bar has not been applied.
  frmCancel = true;
  ResumeNext([&] {
    const Loading loading(session_.Doc);
    setWindowTitle(FromPath(kProgramTitle));
    ApplyListColors(*this, session_.Prefs);
    RowCount = static_cast<int>(SafeUBound(session_.Tables.DogFightAircraft));
    BaseCount = static_cast<int>(SafeUBound(At(session_.Doc.MissionShadow, Idx).BornPlaces));
    upd->SetRange(0, BaseCount);
    upd->SetValue(0);
    FillColors();
    lblColor->clear();
    CurBase = upd->Value();
    Refresh();
    // In the middle only now: the names of the colours decide how wide the form is.
    adjustSize();
    CenterForm(*this);
  });
}

void frmDogFight::FillColors() {
  QStringList names;
  for (const auto& color : kHomeBaseColors) names << FromPath(color.Name);
  cbo->Fill(names);
  for (int i = 0; i < cbo->count(); ++i) cbo->setItemData(i, i);
}

BornPlace& frmDogFight::Base() {
  return At(At(session_.Doc.MissionShadow, Idx).BornPlaces, CurBase);
}

/** The lines of a list are then edited, not made anew. */
bool frmDogFight::KeepsLines() const { return At(session_.Doc.Missions, Idx).KeepsLines; }

void frmDogFight::Refresh() {
  ResumeNext([&] {
    const BornPlace& base = Base();
    lbl->setNum(CurBase);
    // A colour or size that the controls do not have stays in the record.
    cbo->setCurrentIndex(base.Army < cbo->count() ? base.Army : -1);
    ShowColor(base.Army);
    slide->setValue(ShownRadius(base.Radius));
    // The base's own, which the slider may not reach.
    ShowSize(base.Radius);
    lists_ = FillHomeBase(session_.Tables.DogFightAircraft, base, services_.Page,
                          KeepsLines() ? UnknownAircraft::Spelled : UnknownAircraft::Unnamed);
    for (std::size_t i = 0; i < lists_.size(); ++i) ShowList(i);
  });
}

void frmDogFight::ShowColor(int color) {
  QPalette palette;
  const bool told = color > 0 && color < static_cast<int>(kHomeBaseColors.size());
  if (told) {
    const auto& [name, red, green, blue] = kHomeBaseColors[static_cast<std::size_t>(color)];
    palette.setColor(QPalette::Window, QColor(red, green, blue));
  }
  lblColor->setBackgroundRole(told ? QPalette::Window : QPalette::Button);
  lblColor->setPalette(palette);
}

void frmDogFight::ShowSize(int meters) { lblSize->setText(tr("%1 m").arg(meters)); }

void frmDogFight::ShowList(std::size_t list) {
  QList<QStandardItem*> items;
  for (const auto& item : lists_[list]) {
    items << new QStandardItem(FromBytes(services_.Page, item.Text));
    items.back()->setData(FromPath(item.Key));
    items.back()->setEditable(false);
  }
  models_[list].clear();
  models_[list].appendColumn(items);
  models_[list].setHorizontalHeaderLabels({tr("Aircraft")});
  FitColumn(*lstAC[list]);
  // Only when something is selected again.
  cmd1[list]->setEnabled(false);
}

void frmDogFight::FitColumn(const ReportList& list) {
  constexpr int kTwipsBeside = 300;
  list.header()->resizeSection(0, list.width() - kTwipsBeside / kTwipsPerPixel);
}

bool frmDogFight::eventFilter(QObject* watched, QEvent* event) {
  // The mouse alone writes the size; keys only move the slider, on purpose.
  if (watched == slide && event->type() == QEvent::MouseButtonRelease)
    LogAndLeave(services_, "slide_MouseUp", [&] { TakeRadius(); });
  for (std::size_t i = 0; i < lstAC.size(); ++i) {
    if (watched != lstAC[i]) continue;
    if (event->type() == QEvent::Resize) FitColumn(*lstAC[i]);
    if (event->type() != QEvent::KeyPress) continue;
    const int key = static_cast<QKeyEvent*>(event)->key();
    // Else it would press Apply.
    if (key == Qt::Key_Return || key == Qt::Key_Enter) return MoveSelected(i), true;
  }
  return false;
}

void frmDogFight::MoveSelected(std::size_t from) {
  if (!lstAC[from]->SelectedRows().empty()) Move(from);
}

void frmDogFight::TakeRadius() {
  // A click that moves nothing must not cut a size that the slider cannot show.
  if (slide->value() == ShownRadius(Base().Radius)) return;
  Edit(session_, kSize, [&] { Base().Radius = slide->value(); });
}

void frmDogFight::Move(std::size_t from) {
  std::array<int, 2> scrolled;
  for (std::size_t i = 0; i < 2; ++i) scrolled[i] = lstAC[i]->verticalScrollBar()->value();
  const auto rows = lstAC[from]->SelectedRows();
  Edit(session_, kMovedAircraft, [&] {
    BornPlace& base = Base();
    auto& table = session_.Tables.DogFightAircraft;
    std::vector<std::string_view> names;
    for (const int row : rows) names.push_back(At(lists_[from], row).Text);
    const HomeBaseList list = from == kAvailable ? kAvailable : kReserve;
    if (KeepsLines()) {
      MoveKeptAircraft(table, base, list, names);
      return Refresh();
    }
    MoveAircraft(table, base, list, names);
    Refresh();
    EraseIfDefault(table, base, lists_[kAvailable]);
  });
  // The place in the lists is kept, so that the next aircraft need not be sought anew.
  for (std::size_t i = 0; i < 2; ++i) lstAC[i]->verticalScrollBar()->setValue(scrolled[i]);
  const int next = std::min<int>(rows.value(0), models_[from].rowCount() - 1);
  lstAC[from]->selectionModel()->setCurrentIndex(models_[from].index(next, 0),
                                                 QItemSelectionModel::NoUpdate);
  lstAC[from]->setFocus();
}

void frmDogFight::SetDefault() {
  const Answer answer = services_.Ask.MsgBox(
      "This will set all flyable aircraft to this Home Base.\nAre you sure you want to do this?",
      Buttons::YesNo, Icon::Question, kProgramTitle);
  if (answer != Answer::Yes) return;
  Edit(session_, kDefaultAircraft, [&] {
    Base().Planes.clear();
    Refresh();
  });
}

void frmDogFight::Apply() {
  const bool done = Edit(session_, kHomeBases, [&] {
    auto bases = At(session_.Doc.MissionShadow, Idx).BornPlaces;
    At(session_.Doc.Missions, Idx).BornPlaces = std::move(bases);
  });
  if (!done) return;
  frmCancel = false;
  accept();
}

}  // namespace rws
