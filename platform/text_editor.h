#pragma once

#include <string>

namespace rws {

/** Shows a file, given from the root on, in Notepad or the desktop's own text editor and does not
    wait for it. A result from 0 to 32 means failure. */
int OpenInTextEditor(const std::string& path);

}  // namespace rws
