#include <QEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QShortcutEvent>

#include "controls/list_colors.h"
#include "mainwindow/plane_panel.h"
#include "platform/icons.h"

namespace rws {

namespace {

constexpr std::int32_t kRed = 0x0000FF, kHighlight = 0xFFC0C0;
constexpr int kShownCharacters = 9;

}  // namespace

void PlanePanel::Build() {
  BuildControls();
  PlaceControls();
  NameControls();
}

void PlanePanel::BuildControls() {
  const CodePage& page = session_.Services.Page;
  // The order of making is the order of the Tab key.
  lbl1 = new QLabel(tr("Skill Level"), this);
  cboSL = new DropDown(this);
  lbl2 = new LabelButton(tr("Plane Skin"), this);
  cboAPSkin = new EditDropDown(page, EditDropDown::Typed::RowsOnly, this);
  lbl3 = new LabelButton(tr("Pilot Skin"), this);
  cboPSkin = new EditDropDown(page, EditDropDown::Typed::RowsOnly, this);
  lbl4 = new LabelButton(tr("Nose art"), this);
  cboPNoseArt = new EditDropDown(page, EditDropDown::Typed::Keeps, this);
  chkMark = new CheckBox(tr("Markings On"), this);
  chkPlayer = new CheckBox(tr("Player"), this);
  img = new QLabel(this);
  img->setPixmap(ProgramIcon(QStringLiteral("picture")).pixmap(QSize(16, 16)));
  lbl1->setBuddy(cboSL);
  for (const Paint paint : {kSkin, kPilot, kNoseArt}) Labels()[paint]->setBuddy(Lists()[paint]);
  lbl2->SetAlwaysReachable();
  for (QComboBox* list :
       std::initializer_list<QComboBox*>{cboSL, cboAPSkin, cboPSkin, cboPNoseArt}) {
    list->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    list->setMinimumContentsLength(kShownCharacters);
  }
}

void PlanePanel::PlaceControls() {
  auto* grid = new QGridLayout(this);
  grid->setContentsMargins(8, 4, 8, 4);
  grid->setVerticalSpacing(2);
  grid->setHorizontalSpacing(6);
  int row = 0;
  const auto add = [&](QWidget* label, QWidget* list) {
    grid->addWidget(label, row, 0);
    grid->addWidget(list, row++, 1);
  };
  add(lbl1, cboSL);
  for (const Paint paint : {kSkin, kPilot, kNoseArt}) add(Labels()[paint], Lists()[paint]);
  auto* last = new QHBoxLayout;
  last->addWidget(chkMark);
  last->addWidget(chkPlayer);
  last->addStretch();
  last->addWidget(img);
  grid->addLayout(last, row, 0, 1, 2);
  grid->setColumnStretch(1, 1);
  QSizePolicy keepsItsPlace = img->sizePolicy();
  keepsItsPlace.setRetainSizeWhenHidden(true);
  img->setSizePolicy(keepsItsPlace);
}

void PlanePanel::NameControls() {
  const QString number = QString::number(plane_ + 1);
  setTitle(tr("Plane &%1").arg(number));
  setObjectName(QStringLiteral("fraPlane(%1)").arg(plane_));
  const auto name = [&](QWidget* control, const char* given, const QString& text,
                        const QString& toolTip) {
    control->setObjectName(QStringLiteral("%1(%2)").arg(QLatin1String(given)).arg(plane_));
    control->setAccessibleName(text);
    control->setToolTip(toolTip);
  };
  name(lbl1, "lbl1", lbl1->text(), QString());
  name(lbl2, "lbl2", lbl2->text(), QString());
  name(lbl3, "lbl3", lbl3->text(), QString());
  name(lbl4, "lbl4", lbl4->text(), QString());
  name(cboSL, "cboSL", tr("Skill Level of plane %1").arg(number),
       tr("Set this plane's skill level"));
  name(cboAPSkin, "cboAPSkin", tr("Plane Skin of plane %1").arg(number),
       tr("Set the plane's skin"));
  name(cboPSkin, "cboPSkin", tr("Pilot Skin of plane %1").arg(number), tr("Set the pilot's skin"));
  name(cboPNoseArt, "cboPNoseArt", tr("Nose art of plane %1").arg(number), QString());
  for (auto* list : {cboAPSkin, cboPSkin, cboPNoseArt})
    list->lineEdit()->setAccessibleName(list->accessibleName());
  name(chkMark, "chkMark", tr("Markings On, plane %1").arg(number),
       tr("Set the country's defualt markings"));
  name(chkPlayer, "chkPlayer", tr("Player, plane %1").arg(number),
       tr("Selects the aircraft the player will fly"));
  name(img, "img", tr("There is an image to view"), tr("Click on the blue text to view image"));
}

bool PlanePanel::event(QEvent* event) {
  // The frame's own way leads to its first control, which is mostly disabled.
  if (event->type() == QEvent::Shortcut && isEnabled()) {
    cboAPSkin->setFocus(Qt::ShortcutFocusReason);
    return true;
  }
  return GroupFrame::event(event);
}

void PlanePanel::changeEvent(QEvent* event) {
  GroupFrame::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) ColorMark(markRed_);
}

void PlanePanel::Highlight(bool on) {
  highlighted_ = on;
  QPalette colors;
  if (on)
    for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
      colors.setColor(group, QPalette::Window, FromBgr(kHighlight));
      colors.setColor(group, QPalette::WindowText,
                      group == QPalette::Disabled ? Qt::darkGray : Qt::black);
    }
  setPalette(colors);
  setAutoFillBackground(on);
}

void PlanePanel::ColorMark(bool red) {
  markRed_ = red;
  if (!chkMark) return;
  SetFixedColor(*chkMark, red ? std::optional(FromBgr(kRed)) : std::nullopt,
                palette().color(QPalette::Window));
}

void PlanePanel::ColorLabel(LabelButton* label, LabelColor color) {
  label->SetColor(color, color == LabelColor::Blue  ? tr("file to view")
                         : color == LabelColor::Red ? tr("file is missing")
                                                    : tr("default"));
}

}  // namespace rws
