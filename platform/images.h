#pragma once

#include <QImage>
#include <QSize>
#include <string>

#include "services/file_system.h"

namespace rws {

/** A picture file for showing: BMP (palette, compressed or plain), JPEG, PNG or GIF, told apart by
    what the file holds and not by its name. A file that is none of these, is missing, empty or cut
    short, or claims more than 16384 pixels a side or 64 million in all is a fault that names the
    file and the reason. */
QImage ReadPicture(const FileSystem& files, const std::string& path);

/** The same for one that may be larger, up to 32768 pixels a side and 256 million in all: with more
    than so many pixels it comes scaled down to them. `full` becomes its own size. */
QImage ReadLargePicture(const FileSystem& files, const std::string& path, qint64 mostPixels,
                        QSize& full);

}  // namespace rws
