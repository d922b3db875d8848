#include "services/paths.h"

#include <algorithm>

namespace rws {

namespace {
std::size_t NameStart(std::string_view path) {
  const std::size_t last = path.find_last_of("\\/");
  return last == path.npos ? 0 : last + 1;
}

std::string_view WithoutTrailing(std::string_view path) {
  while (path.size() > 1 && IsSeparator(path.back())) path.remove_suffix(1);
  return path;
}
}  // namespace

bool IsSeparator(char c) { return c == '\\' || c == '/'; }

bool IsRefusedInName(char c) {
  return static_cast<unsigned char>(c) < ' ' ||
         std::string_view("\\/:*?\"<>|").find(c) != std::string_view::npos;
}

std::string BuildPath(std::string_view folder, std::string_view name) {
  std::string result(folder);
  if (!result.empty() && !IsSeparator(result.back())) result += kSeparator;
  while (!result.empty() && !name.empty() && IsSeparator(name[0])) name.remove_prefix(1);
  return result.append(name);
}

std::string GetFileName(std::string_view path) {
  path = WithoutTrailing(path);
  return std::string(path.substr(NameStart(path)));
}

std::string GetBaseName(std::string_view path) {
  const std::string name = GetFileName(path);
  return name.substr(0, name.rfind('.'));
}

std::string GetParentFolderName(std::string_view path) {
  path = WithoutTrailing(path);
  const std::size_t start = NameStart(path);
  if (start == 0) return "";
  const std::string_view parent = path.substr(0, start);
  // "/" and "C:\" are folders of their own; what lies in them has them as parent.
  const bool isRoot = start == 1 || (start == 3 && path[1] == ':');
  if (isRoot) return path.size() == start ? "" : std::string(parent);
  return std::string(WithoutTrailing(parent));
}

std::string StripFileName(std::string_view path) {
  return std::string(path.substr(0, NameStart(path)));
}

bool ClimbsOut(std::string_view name) {
  int depth = 0;
  while (!name.empty() && depth >= 0) {
    const std::size_t end = std::min(name.find_first_of("\\/"), name.size());
    const std::string_view part = name.substr(0, end);
    if (part == "..")
      --depth;
    else if (!part.empty() && part != ".")
      ++depth;
    name.remove_prefix(std::min(end + 1, name.size()));
  }
  return depth < 0;
}

}  // namespace rws
