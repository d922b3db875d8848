#pragma once

#include <QImage>
#include <QSize>
#include <QString>
#include <functional>
#include <string>

#include "services/services.h"

/** The pictures that lie under maps, on disk. */
namespace rws {

/** The text of the file that remembers them; "" while there is none. One that cannot be read is a
    fault. */
std::string ReadMapPictures(const Services& services);

/** Changes that text; what it was stays when that fails, which is a fault. */
void StoreMapPictures(const Services& services,
                      const std::function<std::string(const std::string& text)>& change);

/** A picture for under a map, scaled down where it is very large; none, and why, when it cannot be
    read. `full` becomes its own size. */
QImage ReadMapPicture(const Services& services, const std::string& path, QString& fault,
                      QSize* full = nullptr);

}  // namespace rws
