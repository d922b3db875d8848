#include <QHBoxLayout>
#include <QToolTip>
#include <QVBoxLayout>

#include "controls/layouts.h"
#include "controls/page_validator.h"
#include "tools/frmSkins.h"

namespace rws {

namespace {

/** For a text of one line: a line break that is pasted becomes a blank. */
class NoteValidator : public PageValidator {
 public:
  using PageValidator::PageValidator;

  State validate(QString& text, int& position) const override {
    for (QChar& c : text)
      if (c == QLatin1Char('\n') || c == QLatin1Char('\r') || c.isNull() ||
          c == QChar::LineSeparator || c == QChar::ParagraphSeparator)
        c = QLatin1Char(' ');
    return PageValidator::validate(text, position);
  }
};

QGroupBox* Frame(const QString& caption, const char* name) {
  auto* frame = new QGroupBox(caption);
  frame->setObjectName(QLatin1String(name));
  return frame;
}

QLabel* Label(const QString& caption, const char* name = "lbl") {
  auto* label = new QLabel(caption);
  label->setObjectName(QLatin1String(name));
  return label;
}

DropDown* List(const char* name, const QString& accessibleName, const QString& toolTip) {
  constexpr int kLetters = 24;
  auto* list = new DropDown;
  Describe(list, name, accessibleName, toolTip);
  // Names may be of any length and there may be thousands: the form is not made for the longest.
  list->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  list->setMinimumContentsLength(kLetters);
  return list;
}

PictureBox* Picture(const char* name, const QString& text) {
  constexpr int kLines = 18;
  auto* picture = new PictureBox;
  Describe(picture, name, text, text);
  const int side = picture->fontMetrics().height() * kLines;
  picture->setMinimumSize(side, side);
  return picture;
}

}  // namespace

void frmSkins::Build() {
  setObjectName(QStringLiteral("frmSkins"));
  BuildSkins();
  BuildImages();
  BuildInfo();
  PlaceControls();
}

QPushButton* frmSkins::AddButton(std::size_t index, const QString& caption,
                                 const QString& toolTip) {
  auto* button = new QPushButton(caption);
  const QByteArray name = QStringLiteral("cmd(%1)").arg(index).toLatin1();
  Describe(button, name.constData(), caption, toolTip);
  button->setAutoDefault(false);
  return cmd[index] = button;
}

void frmSkins::BuildSkins() {
  fraSkins = Frame(tr("Aircraft Skins"), "fraSkins");
  cboPlanes = List("cboPlanes", tr("Available Aircraft"), tr("Select the aircraft type"));
  cboSkins = List("cboSkins", tr("Available Skins"), tr("Select the aircraft skin"));
  imgSkin = Picture("imgSkin", tr("Skin image"));
  auto* rows = new QGridLayout(fraSkins);
  rows->addWidget(Label(tr("Available Aircraft")), 0, 0);
  rows->addWidget(cboPlanes, 0, 1);
  rows->addWidget(Label(tr("Available Skins")), 1, 0);
  rows->addWidget(cboSkins, 1, 1);
  rows->addWidget(imgSkin, 2, 0, 1, 2);
  rows->setColumnStretch(1, 1);
  rows->setRowStretch(2, 1);
}

void frmSkins::BuildImages() {
  fraImage = Frame(tr("Aircraft Images"), "fraImage");
  imgPic = Picture("imgPic", tr("Aircraft image"));
  fraImgOpt = Frame(tr("Image Options"), "fraImgOpt");
  lbl = {Label(tr("Link this images to the skin"), "lbl(0)")};
  auto* options = new QGridLayout(fraImgOpt);
  options->addWidget(Label(tr("Locate aircraft image")), 0, 0);
  options->addWidget(AddButton(1, tr("Locate"), tr("Locate an image to link to the skin")), 0, 1);
  options->addWidget(lbl[0], 1, 0);
  options->addWidget(AddButton(0, tr("Link"), tr("Click here to link the image to the skin ")), 1,
                     1);
  options->setColumnStretch(0, 1);
  fraClear = Frame(tr("Clear Link"), "fraClear");
  auto* clear = new QHBoxLayout(fraClear);
  clear->addWidget(Label(tr("Clear the link")), 1);
  clear->addWidget(AddButton(3, tr("Clear"), tr("Click here to clear the link ")));
  auto* rows = new QVBoxLayout(fraImage);
  rows->addWidget(imgPic, 1);
  rows->addWidget(fraImgOpt);
  rows->addWidget(fraClear);
}

void frmSkins::AddNote(QGridLayout& rows, std::size_t index, const QString& caption,
                       const QString& name, const QString& toolTip) {
  auto* box = new QLineEdit;
  const QByteArray objectName = QStringLiteral("txt(%1)").arg(index).toLatin1();
  Describe(box, objectName.constData(), name, toolTip);
  box->setMaxLength(static_cast<int>(kLongestNote));
  box->setValidator(new NoteValidator(session_.Services.Page, box));
  connect(box, &QLineEdit::inputRejected, box, [box] {
    QToolTip::showText(
        box->mapToGlobal(box->rect().bottomLeft()),
        tr("A note has at most %1 characters, all of them of the code page.").arg(kLongestNote),
        box);
  });
  const int row = static_cast<int>(index);
  rows.addWidget(Label(caption), row, 0);
  rows.addWidget(box, row, 1);
  txt[index] = box;
}

void frmSkins::BuildInfo() {
  fraInfo = Frame(tr("Skin Information"), "fraInfo");
  auto* rows = new QGridLayout(fraInfo);
  AddNote(*rows, 0, tr("Skinner:"), tr("Skinner"), tr("Enter the skinners name"));
  AddNote(*rows, 1, tr("Country:"), tr("Country"), tr("Enter the country of the markings"));
  AddNote(*rows, 2, tr("Comments:"), tr("Comments"), tr("Enter any other comments about the skin"));
  rows->addWidget(AddButton(4, tr("Update"), tr("Click here to save the information")), 2, 2);
  rows->setColumnStretch(1, 1);
}

void frmSkins::PlaceControls() {
  auto* buttons = new QHBoxLayout;
  // The words of its neighbour, on purpose.
  buttons->addWidget(AddButton(5, tr("Help"), tr("Exit the skin manager")));
  buttons->addStretch();
  buttons->addWidget(AddButton(2, tr("Exit"), tr("Exit the skin manager")));
  auto* pictures = new QHBoxLayout;
  pictures->addWidget(fraSkins, 1);
  pictures->addWidget(fraImage, 1);
  auto* whole = new QVBoxLayout(this);
  whole->addLayout(pictures, 1);
  whole->addWidget(fraInfo);
  whole->addLayout(buttons);
  const std::array<QWidget*, 11> order = {cboPlanes, cboSkins, cmd[1], cmd[0], cmd[3], txt[0],
                                          txt[1],    txt[2],   cmd[4], cmd[5], cmd[2]};
  for (std::size_t i = 1; i < order.size(); ++i) setTabOrder(order[i - 1], order[i]);
  // A place is only good for the size that the form will have.
  adjustSize();
}

}  // namespace rws
