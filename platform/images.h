#pragma once

#include <QImage>
#include <string>

#include "services/file_system.h"

namespace rws {

/** A picture file for showing: BMP (palette, compressed or plain), JPEG, PNG or GIF, told apart by
    what the file holds and not by its name. A file that is none of these, is missing, empty or cut
    short, or claims more than 16384 pixels a side or 64 million in all is a fault that names the
    file and the reason. */
QImage ReadPicture(const FileSystem& files, const std::string& path);

}  // namespace rws
