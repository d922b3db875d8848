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

/** A form with its frame, as it stands when it is not maximised. */
QRect NormalFrame(const QWidget& form) {
  if (!form.isMaximized()) return form.frameGeometry();
  // The frame of a maximised window may be thinner; that of another window tells.
  const QWidget* like = &form;
  if (form.parentWidget() && !form.parentWidget()->window()->isMaximized())
    like = form.parentWidget()->window();
  const QRect frame = like->frameGeometry(), inside = like->geometry();
  const QMargins margins(inside.left() - frame.left(), inside.top() - frame.top(),
                         frame.right() - inside.right(), frame.bottom() - inside.bottom());
  return form.normalGeometry().marginsAdded(margins);
}

}  // namespace

void SaveFormPos(const Services& services, const QWidget& form) {
  const QPoint place = NormalFrame(form).topLeft();
  Store(services, Name(form, "Top"), place.y());
  Store(services, Name(form, "Left"), place.x());
}

void LoadFormPos(const Services& services, QWidget& form) {
  const auto left = Stored(services, Name(form, "Left"));
  const auto top = Stored(services, Name(form, "Top"));
  if (!left && !top) return;
  const QPoint place(left.value_or(form.x()), top.value_or(form.y()));
  // A corner that can be gripped must be on a screen.
  const QPoint grip = place + QPoint(40, 10);
  if (place.x() + place.y() < 0 || !QGuiApplication::screenAt(grip)) return CenterForm(form);
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

void SaveFormSize(const Services& services, const QWidget& form) {
  const QSize size = NormalFrame(form).size();
  Store(services, Name(form, "Width"), size.width());
  Store(services, Name(form, "Height"), size.height());
}

void LoadFormSize(const Services& services, QWidget& form) {
  const QSize frame = FrameExtent(form);
  const QSize outer = form.size() + frame;
  const QSize stored(Stored(services, Name(form, "Width")).value_or(outer.width()),
                     Stored(services, Name(form, "Height")).value_or(outer.height()));
  form.resize(stored.boundedTo(form.screen()->availableSize()) - frame);
}

}  // namespace rws
