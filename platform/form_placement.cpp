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

}  // namespace

void SaveFormPos(const Services& services, const QWidget& form) {
  Store(services, Name(form, "Top"), form.y());
  Store(services, Name(form, "Left"), form.x());
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
  Store(services, Name(form, "Width"), form.frameGeometry().width());
  Store(services, Name(form, "Height"), form.frameGeometry().height());
}

void LoadFormSize(const Services& services, QWidget& form) {
  const QSize frame = FrameExtent(form);
  const QSize outer = form.size() + frame;
  const QSize stored(Stored(services, Name(form, "Width")).value_or(outer.width()),
                     Stored(services, Name(form, "Height")).value_or(outer.height()));
  form.resize(stored.boundedTo(form.screen()->availableSize()) - frame);
}

}  // namespace rws
