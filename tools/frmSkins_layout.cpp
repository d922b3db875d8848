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
  return Named(new QGroupBox(caption), name);
}

QLabel* Label(const QString& caption, const char* name = "lbl") {
  return Named(new QLabel(caption), name);
}

DropDown* List(const char* name, const QString& accessibleName, const QString& toolTip) {
  constexpr int kLetters = 24;
  auto* list = Named(new DropDown, name, accessibleName, toolTip);
  // Names may be of any length and there may be thousands: the form is not made for the longest.
  list->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  list->setMinimumContentsLength(kLetters);
  return list;
}

PictureBox* Picture(const char* name, const QString& text) {
  constexpr int kLines = 18;
  auto* picture = Named(new PictureBox, name, text, text);
  const int side = picture->fontMetrics().height() * kLines;
  picture->setMinimumSize(side, side);
  return picture;
}

}  // namespace

void frmSkins::Build() {
  BuildButtons();
  BuildSkins();
  BuildImages();
  BuildInfo();
  PlaceControls();
}

void frmSkins::BuildButtons() {
  cmd = {Button("cmd(0)", tr("Link"), tr("Click here to link the image to the skin ")),
         Button("cmd(1)", tr("Locate"), tr("Locate an image to link to the skin")),
         Button("cmd(2)", tr("Exit"), tr("Exit the skin manager")),
         Button("cmd(3)", tr("Clear"), tr("Click here to clear the link ")),
         Button("cmd(4)", tr("Update"), tr("Click here to save the information")),
         // The words of another, on purpose.
         Button("cmd(5)", tr("Help"), tr("Exit the skin manager"))};
  for (auto* button : cmd) button->setAutoDefault(false);
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
  options->addWidget(cmd[kLocate], 0, 1);
  options->addWidget(lbl[0], 1, 0);
  options->addWidget(cmd[kLink], 1, 1);
  options->setColumnStretch(0, 1);
  fraClear = Frame(tr("Clear Link"), "fraClear");
  auto* clear = new QHBoxLayout(fraClear);
  clear->addWidget(Label(tr("Clear the link")), 1);
  clear->addWidget(cmd[kClear]);
  auto* rows = new QVBoxLayout(fraImage);
  rows->addWidget(imgPic, 1);
  rows->addWidget(fraImgOpt);
  rows->addWidget(fraClear);
}

void frmSkins::AddNote(QGridLayout& rows, Note note, const QString& caption, const QString& name,
                       const QString& toolTip) {
  auto* box = Named(new QLineEdit, "txt", name, toolTip);
  box->setMaxLength(static_cast<int>(kLongestNote));
  box->setValidator(new NoteValidator(services_.Page, box));
  connect(box, &QLineEdit::inputRejected, box, [box] {
    QToolTip::showText(
        box->mapToGlobal(box->rect().bottomLeft()),
        tr("A note has at most %1 characters, all of them of the code page.").arg(kLongestNote),
        box);
  });
  const int row = static_cast<int>(note);
  rows.addWidget(Label(caption), row, 0);
  rows.addWidget(box, row, 1);
  txt[note] = box;
}

void frmSkins::BuildInfo() {
  fraInfo = Frame(tr("Skin Information"), "fraInfo");
  auto* rows = new QGridLayout(fraInfo);
  AddNote(*rows, kSkinner, tr("Skinner:"), tr("Skinner"), tr("Enter the skinners name"));
  AddNote(*rows, kCountry, tr("Country:"), tr("Country"), tr("Enter the country of the markings"));
  AddNote(*rows, kComments, tr("Comments:"), tr("Comments"),
          tr("Enter any other comments about the skin"));
  NameEach(txt, "txt");
  rows->addWidget(cmd[kUpdate], 2, 2);
  rows->setColumnStretch(1, 1);
}

void frmSkins::PlaceControls() {
  auto* pictures = new QHBoxLayout;
  pictures->addWidget(fraSkins, 1);
  pictures->addWidget(fraImage, 1);
  auto* whole = new QVBoxLayout(this);
  whole->addLayout(pictures, 1);
  whole->addWidget(fraInfo);
  whole->addLayout(ButtonRow({cmd[kExit]}, {cmd[kHelp]}));
  TabOrder({cboPlanes, cboSkins, cmd[kLocate], cmd[kLink], cmd[kClear], txt[kSkinner],
            txt[kCountry], txt[kComments], cmd[kUpdate], cmd[kHelp], cmd[kExit]});
  // A place is only good for the size that the form will have.
  adjustSize();
}

}  // namespace rws
