#pragma once

#include <QByteArray>
#include <QSize>
#include <QString>
#include <functional>

class QPainter;

namespace rws {

/** True where pictures can be written as SVG; the system's Qt may come without it. */
bool CanWriteSvg();

/** The bytes of an SVG file of some size in pixels; empty where none can be written. */
QByteArray SvgOf(QSize size, const QString& title, const std::function<void(QPainter&)>& paint);

}  // namespace rws
