#pragma once

#include <string>
#include <string_view>

#include "services/services.h"

/** The images that users link to paint schemes: files named after the scheme. A failure is a fault
    and leaves every picture on disk. */
namespace rws {

/** Path of the image that is linked to a scheme; it need not exist. */
std::string LinkTarget(std::string_view imagesPath, std::string_view scheme);

/** Copies a picture to the link's path, over what stands there. */
void LinkImage(const Services& services, const std::string& picture, const std::string& target);

/** Gives a linked image the name of its backup, "-bak" behind the scheme's name, in place of an
    earlier backup. Nothing is renamed when that backup is the picture on show, `shown`, which may
    be any file of the user's. */
void ClearLink(const Services& services, const std::string& target, const std::string& shown);

}  // namespace rws
