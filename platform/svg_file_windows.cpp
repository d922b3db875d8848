#include "platform/svg_file.h"

namespace rws {

bool CanWriteSvg() { return false; }

QByteArray SvgOf(QSize, const QString&, const std::function<void(QPainter&)>&) { return {}; }

}  // namespace rws
