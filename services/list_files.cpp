#include "services/list_files.h"

#include "services/arrays.h"
#include "services/paths.h"
#include "services/text.h"

namespace rws {

std::ptrdiff_t ListFiles(const Services& services, std::vector<std::string>& result,
                         const std::string& directory, std::string_view pattern, bool fullPath,
                         std::string_view fragments) {
  const std::string foldedPattern = FoldName(pattern);
  const std::string foldedFragments = FoldName(fragments);
  const auto unwanted = SplitAt(foldedFragments, ',');
  const auto wanted = [&](const std::string& name) {
    const std::string folded = FoldName(name);
    if (!Like(folded, foldedPattern)) return false;
    for (const auto fragment : unwanted)
      if (!fragment.empty() && Contains(folded, fragment)) return false;
    return true;
  };
  for (auto& name : services.Files.ListFileNames(directory, wanted)) {
    AddToArray(result, fullPath ? BuildPath(directory, name) : std::move(name));
    if (services.System.PumpEvents) services.System.PumpEvents();
  }
  return SafeUBound(result);
}

}  // namespace rws
