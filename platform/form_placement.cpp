#include "platform/form_placement.h"

#include <QGuiApplication>
#include <QScreen>
#include <algorithm>
#include <optional>

#include "platform/qt_text.h"
#include "services/numbers.h"

namespace rws {

namespace {

std::string Name(const QWidget& form, const char* what) { return ToPath(form.objectName()) + what; }

void Store(const Services& services, const std::string& name, int pixels) {
  SetRegValue(services.Settings, SettingsRoot::CurrentUser, kSetPath, name,
              std::to_string(pixels * kTwipsPerPixel));
}

std::optional<int> Stored(const Services& services, const std::string& name) {
  const std::string text =
      GetRegValue(services.Settings, SettingsRoot::CurrentUser, kSetPath, name, "");
  if (text.empty()) return {};
  return static_cast<int>(std::clamp(Val(text) / kTwipsPerPixel, -1e6, 1e6));
}

/** False for a form that does not stand where it goes back to. */
bool IsNormal(const QWidget& form) {
  return !form.isMaximized() && !form.isMinimized() && !form.isFullScreen();
}

/** A form with its frame, as it stands when it fills no screen and is no icon. The frame of a
    maximised one may be thinner; that of the window below a dialog tells the usual one. A main
    window has none below: what is stored of it stays, or each start would move it. */
std::optional<QRect> NormalFrame(const QWidget& form) {
  if (IsNormal(form)) return form.frameGeometry();
  if (!form.parentWidget()) return {};
  const QWidget* below = form.parentWidget()->window();
  const QWidget* like = IsNormal(*below) ? below : &form;
  const QRect frame = like->frameGeometry(), inside = like->geometry();
  const QMargins margins(inside.left() - frame.left(), inside.top() - frame.top(),
                         frame.right() - inside.right(), frame.bottom() - inside.bottom());
  return form.normalGeometry().marginsAdded(margins);
}

}  // namespace

void SaveFormPos(const Services& services, const QWidget& form) {
  const auto frame = NormalFrame(form);
  if (!frame) return;
  Store(services, Name(form, "Top"), frame->y());
  Store(services, Name(form, "Left"), frame->x());
}

void LoadFormPos(const Services& services, QWidget& form) {
  const auto left = Stored(services, Name(form, "Left"));
  const auto top = Stored(services, Name(form, "Top"));
  if (!left && !top) return;
  const QPoint place(left.value_or(form.x()), top.value_or(form.y()));
  // A corner that can be gripped must be on a screen.
  const QPoint grip = place + QPoint(40, 10);
  if (place.x() + place.y() < 0 || !QGuiApplication::screenAt(grip)) return CenterForm(form);
  // A form that has to grow as it is shown is placed anew by its inside, and would creep by the
  // height of its title bar at each start.
  form.ensurePolished();
  form.resize(form.size().expandedTo(form.minimumSizeHint()));
  form.move(place);
}

void CenterForm(QWidget& form) {
  const QRect screen = form.screen()->availableGeometry();
  form.move(screen.topLeft() +
            QPoint(screen.width() - form.width(), screen.height() - form.height()) / 2);
}

QSize FrameExtent(const QWidget& form) {
  const QWidget* like = &form;
  if (!form.isVisible() && form.parentWidget()) like = form.parentWidget()->window();
  return like->frameGeometry().size() - like->size();
}

void SaveFormPlace(const Services& services, const QWidget& form) {
  if (const auto frame = NormalFrame(form)) {
    Store(services, Name(form, "Width"), frame->width());
    Store(services, Name(form, "Height"), frame->height());
  }
  SaveFormPos(services, form);
}

void LoadFormPlace(const Services& services, QWidget& form) {
  const QSize frame = FrameExtent(form);
  const QSize outer = form.size() + frame;
  const QSize stored(Stored(services, Name(form, "Width")).value_or(outer.width()),
                     Stored(services, Name(form, "Height")).value_or(outer.height()));
  form.resize(stored.boundedTo(form.screen()->availableSize()) - frame);
  // Behind the size: it may put the form in the middle.
  LoadFormPos(services, form);
}

void SaveWindowSize(const Services& services, const QWidget& window) {
  if (IsNormal(window)) {
    Store(services, Name(window, "InnerWidth"), window.width());
    Store(services, Name(window, "InnerHeight"), window.height());
  }
  SetRegValue(services.Settings, SettingsRoot::CurrentUser, kSetPath, Name(window, "Maximized"),
              std::string(window.isMaximized() ? "True" : "False"));
}

void LoadWindowSize(const Services& services, QWidget& window) {
  const QSize stored(Stored(services, Name(window, "InnerWidth")).value_or(window.width()),
                     Stored(services, Name(window, "InnerHeight")).value_or(window.height()));
  window.resize(stored.boundedTo(window.screen()->availableSize()));
}

void LoadMaximized(const Services& services, QWidget& window) {
  const std::string text = GetRegValue(services.Settings, SettingsRoot::CurrentUser, kSetPath,
                                       Name(window, "Maximized"), "False");
  if (text == "True") window.setWindowState(window.windowState() | Qt::WindowMaximized);
}

void SaveSplitter(const Services& services, const QSplitter& splitter) {
  Store(services, Name(splitter, "Left"), splitter.sizes().value(0));
}

void LoadSplitter(const Services& services, QSplitter& splitter) {
  const auto left = Stored(services, Name(splitter, "Left"));
  if (!left || *left <= 0) return;
  // The form may be narrower by now; the splitter keeps both sides at their least width.
  splitter.setSizes({*left, std::max(splitter.window()->width() - *left, 1)});
}

}  // namespace rws
