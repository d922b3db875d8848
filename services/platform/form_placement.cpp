#include "services/platform/form_placement.h"

#include <QGuiApplication>
#include <QScreen>

#include "services/numbers.h"
#include "services/platform/qt_text.h"

namespace rws {

namespace {

constexpr int kTwipsPerPixel = 15;

std::string Name(const QWidget& form, const char* what) { return ToPath(form.objectName()) + what; }

void Store(const Services& services, const std::string& name, int pixels) {
  SetRegValue(services.Settings, SettingsRoot::CurrentUser, kSetPath, name,
              std::to_string(pixels * kTwipsPerPixel));
}

int Stored(const Services& services, const std::string& name, int pixels) {
  const std::string text = GetRegValue(services.Settings, SettingsRoot::CurrentUser, kSetPath, name,
                                       std::to_string(pixels * kTwipsPerPixel));
  return static_cast<int>(Val(text) / kTwipsPerPixel);
}

}  // namespace

void SaveFormPos(const Services& services, const QWidget& form) {
  Store(services, Name(form, "Top"), form.y());
  Store(services, Name(form, "Left"), form.x());
}

void LoadFormPos(const Services& services, QWidget& form) {
  const QPoint place(Stored(services, Name(form, "Left"), form.x()),
                     Stored(services, Name(form, "Top"), form.y()));
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

}  // namespace rws
