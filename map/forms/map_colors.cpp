#include "map/forms/map_colors.h"

#include <cmath>

#include "mission/home_base_values.h"

namespace rws {

namespace {

/** How bright a colour looks, 0 to 255. */
double Brightness(const QColor& color) {
  return 0.299 * color.red() + 0.587 * color.green() + 0.114 * color.blue();
}

QColor Mixed(const QColor& a, const QColor& b, double part) {
  const auto mix = [&](int x, int y) { return static_cast<int>(std::lround(x + (y - x) * part)); };
  return {mix(a.red(), b.red()), mix(a.green(), b.green()), mix(a.blue(), b.blue())};
}

}  // namespace

QColor ArmyColor(std::uint8_t army, bool dark) {
  switch (army) {
    case 1:
      return dark ? QColor(0xff, 0x76, 0x6b) : QColor(0xc4, 0x22, 0x22);
    case 2:
      return dark ? QColor(0x74, 0xb3, 0xff) : QColor(0x1c, 0x55, 0xb8);
    default:
      return dark ? QColor(0xb4, 0xb4, 0xb0) : QColor(0x66, 0x66, 0x62);
  }
}

QColor BaseColor(std::uint8_t army, bool dark) {
  if (army == 0 || army >= kHomeBaseColors.size()) return ArmyColor(0, dark);
  constexpr double kLeastOnDark = 120, kMostOnLight = 150, kStep = 0.1;
  const HomeBaseColor& base = kHomeBaseColors[army];
  QColor color(base.Red, base.Green, base.Blue);
  while (dark && Brightness(color) < kLeastOnDark) color = Mixed(color, Qt::white, kStep);
  while (!dark && Brightness(color) > kMostOnLight) color = Mixed(color, Qt::black, kStep);
  return color;
}

QColor GroundColor(bool dark) { return dark ? QColor(0x1f, 0x25, 0x2a) : QColor(0xf6, 0xf5, 0xef); }

QColor GridColor(bool dark) { return dark ? QColor(0x38, 0x41, 0x48) : QColor(0xda, 0xd9, 0xd0); }

QColor InkColor(bool dark) { return dark ? QColor(0xe4, 0xe6, 0xe8) : QColor(0x24, 0x26, 0x28); }

QColor FrontColor(bool dark) { return dark ? QColor(0xe8, 0xc0, 0x60) : QColor(0x7a, 0x5a, 0x10); }

QColor TargetColor(bool dark) { return dark ? QColor(0xff, 0xa0, 0x40) : QColor(0xb8, 0x50, 0x00); }

QColor Faint(const QColor& color, bool dark, double part) {
  return Mixed(GroundColor(dark), color, part);
}

}  // namespace rws
