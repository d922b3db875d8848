#include "library/briefings.h"

#include <algorithm>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

#include "services/code_page.h"
#include "services/paths.h"
#include "services/text.h"

namespace rws {

namespace {

constexpr std::string_view kMission = ".mis", kBriefing = ".properties";
/** No briefing comes near it. */
constexpr std::uint64_t kMostBriefing = 1024 * 1024;

/** The folder's briefings and missions by their names without endings, in lower case. */
class Names {
 public:
  explicit Names(const std::vector<FolderEntry>& entries) {
    for (const auto& entry : entries) {
      if (entry.IsFolder) continue;
      std::string folded = FoldName(entry.Name);
      if (folded.ends_with(kMission)) {
        folded.resize(folded.size() - kMission.size());
        missions_[folded].push_back(&entry.Name);
      } else if (folded.ends_with(kBriefing)) {
        folded.resize(folded.size() - kBriefing.size());
        AddBriefing(folded, entry.Name);
      }
    }
  }

  std::string BriefingOf(const std::string& mission) const {
    if (byBase_.empty()) return "";
    const std::string stem = mission.substr(0, mission.size() - kMission.size());
    const std::string folded = FoldName(stem);
    const auto found = byBase_.find(folded);
    if (found != byBase_.end()) {
      const std::string own = stem + std::string(kBriefing);
      for (const auto* name : found->second)
        if (*name == own) return own;
      const std::string& first =
          **std::min_element(found->second.begin(), found->second.end(), Less);
      if (!IsOfAnother(first, folded, mission)) return first;
    }
    const auto language = byLanguage_.find(folded);
    return language == byLanguage_.end() ? "" : *language->second;
  }

 private:
  using ByName = std::unordered_map<std::string, std::vector<const std::string*>>;

  static bool Less(const std::string* a, const std::string* b) { return *a < *b; }

  /** `folded` is its name without the ending; "a_ru" is also the Russian one of "a". */
  void AddBriefing(const std::string& folded, const std::string& name) {
    byBase_[folded].push_back(&name);
    if (folded.size() < 4 || folded[folded.size() - 3] != '_') return;
    const std::string* const candidate = &name;
    auto& kept =
        byLanguage_.try_emplace(folded.substr(0, folded.size() - 3), candidate).first->second;
    kept = std::min(kept, candidate, Less);
  }

  /** Where letter case counts, "A.properties" is not that of "a.mis" when there is an "A.mis". */
  bool IsOfAnother(const std::string& briefing, const std::string& folded,
                   const std::string& mission) const {
    const auto missions = missions_.find(folded);
    if (missions == missions_.end()) return false;
    const std::string_view stem(briefing.data(), briefing.size() - kBriefing.size());
    return std::any_of(missions->second.begin(), missions->second.end(), [&](const auto* name) {
      return *name != mission && std::string_view(*name).substr(0, stem.size()) == stem;
    });
  }

  ByName missions_, byBase_;
  std::unordered_map<std::string, const std::string*> byLanguage_;
};

}  // namespace

bool IsMissionName(const std::string& name) { return FoldName(name).ends_with(kMission); }

std::vector<ListedMission> ListedMissions(const std::vector<FolderEntry>& entries) {
  const Names names(entries);
  std::vector<ListedMission> missions;
  for (const auto& entry : entries)
    if (entry.IsFile && IsMissionName(entry.Name))
      missions.push_back({entry.Name, names.BriefingOf(entry.Name)});
  return missions;
}

std::string BriefingFileOf(const FileSystem& files, const std::string& mission) {
  const std::string folder = GetParentFolderName(mission), name = GetFileName(mission);
  const std::string own = name.substr(0, std::max(name.size(), kMission.size()) - kMission.size()) +
                          std::string(kBriefing);
  // Most have it under their own spelling; only for others all names are gone through.
  const std::string found = files.Resolve(BuildPath(folder, own));
  if (GetFileName(found) == own && files.Stamp(found).Exists) return own;
  for (const auto& listed : ListedMissions(files.ListFolder(folder)))
    if (listed.Name == name) return listed.Briefing;
  return "";
}

std::optional<Briefing> BriefingOf(const FileSystem& files, const std::string& mission) {
  const std::string file = BriefingFileOf(files, mission);
  if (file.empty()) return {};
  return ParseBriefing(
      files.ReadFile(BuildPath(GetParentFolderName(mission), file), kMostBriefing));
}

}  // namespace rws
