#include "tools/frmView.h"

#include <QMouseEvent>

#include "controls/layouts.h"
#include "platform/form_placement.h"
#include "platform/images.h"
#include "platform/qt_text.h"
#include "services/paths.h"

namespace rws {

namespace {
constexpr int kLeastTwips = 2000;
/** Rounded up, so that a window of this size is not below the twips. */
constexpr int kLeastPixels = (kLeastTwips + kTwipsPerPixel - 1) / kTwipsPerPixel;
constexpr QSize kFirstSize(640, 640);
}  // namespace

frmView::frmView(const Services& services, QWidget* parent)
    : Dialog(services, "frmView", parent), img(Named(new QLabel(this), "img")) {
  img->setScaledContents(true);
  setWindowFlag(Qt::WindowMaximizeButtonHint);
  resize(kFirstSize);
}

void frmView::LoadForm() {
  LoadFormPlace(services_, *this);
  const QImage picture = ReadPicture(services_.Files, FileName);
  img->setPixmap(QPixmap::fromImage(picture));
  img->setAccessibleName(FromPath(GetBaseName(FileName)));
}

void frmView::done(int result) {
  LogAndLeave(services_, "Form_Unload", [&] { SaveFormPlace(services_, *this); });
  Dialog::done(result);
}

void frmView::showEvent(QShowEvent* event) {
  Dialog::showEvent(event);
  SizeToForm();
}

void frmView::moveEvent(QMoveEvent*) { SizeToForm(); }
void frmView::resizeEvent(QResizeEvent*) { SizeToForm(); }

void frmView::mousePressEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) SizeToForm();
}

void frmView::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) SizeToForm();
}

void frmView::SizeToForm() {
  // A minimum snaps a smaller window at once, and tells the window system, which else would draw a
  // window that is being dragged below it.
  setMinimumSize(QSize(kLeastPixels, kLeastPixels) - FrameExtent(*this));
  // The outer size on purpose, though it takes the picture's last rows out of sight.
  img->setGeometry(QRect(QPoint(), frameGeometry().size()));
}

bool ViewImage(const Services& services, QWidget* parent, const std::string& path,
               const QString& caption) {
  frmView view(services, parent);
  view.FileName = path;
  view.setWindowTitle(caption);
  const bool loaded =
      Trap([&] { view.LoadForm(); },
           [&](const Fault& caught) {
             LogError(services, caught.Text, "ViewImage");
             services.Ask.MsgBox(caught.Text, Buttons::Ok, Icon::Critical, kProgramTitle);
           });
  if (loaded) view.exec();
  return loaded;
}

}  // namespace rws
