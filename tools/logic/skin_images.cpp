#include "tools/logic/skin_images.h"

#include "services/faults.h"
#include "services/paths.h"

namespace rws {

namespace {
constexpr const char* kExtension = ".jpg";
}

std::string LinkTarget(std::string_view imagesPath, std::string_view scheme) {
  return BuildPath(imagesPath, std::string(scheme) + kExtension);
}

void LinkImage(const Services& services, const std::string& picture, const std::string& target) {
  if (!services.Files.FileExists(picture)) throw FileNotFoundFault(picture);
  services.Files.CopyFile(picture, target);
}

void ClearLink(const Services& services, const std::string& target, const std::string& shown) {
  const FileSystem& files = services.Files;
  const std::string backup = LinkTarget(StripFileName(target), GetBaseName(target) + "-bak");
  if (files.IsSameFile(backup, shown)) return;
  if (!files.FileExists(backup)) return files.MoveFile(target, backup);
  // Not deleted first: should the image then not be renamed, the old backup would be lost.
  files.CopyFile(target, backup);
  files.DeleteFile(target);
}

}  // namespace rws
