#include "services/paths.h"

namespace rws {

const char kSeparator = '/';
const char kFirstDrive[] = "";

bool IsDrive(std::string_view path) { return path == "/"; }

std::string NameRefusal(std::string_view) { return ""; }

}  // namespace rws
