#include "mainwindow/logic/recent_folders.h"

#include "services/paths.h"
#include "services/setting_values.h"
#include "services/text.h"

namespace rws {

namespace {

constexpr std::size_t kMost = 10;

/** Without separators at its end, but for a root. */
std::string Trimmed(std::string folder) {
  while (folder.size() > 1 && IsSeparator(folder.back()) && folder[folder.size() - 2] != ':')
    folder.pop_back();
  return folder;
}

bool IsSame(const std::string& a, const std::string& b) {
  return FileSystem::MindsCase() ? a == b : FoldName(a) == FoldName(b);
}

void Store(const Services& services, const std::vector<std::string>& folders) {
  std::string text;
  for (const auto& folder : folders) text += (text.empty() ? "" : "\n") + folder;
  WriteSetting(services.Settings, setting::RecentFolders, text);
}

}  // namespace

std::vector<std::string> RecentFolders(const Services& services) {
  std::vector<std::string> folders;
  const std::string text = ReadSetting(services.Settings, setting::RecentFolders);
  for (const auto part : SplitAt(text, '\n'))
    if (!part.empty() && folders.size() < kMost) folders.emplace_back(part);
  return folders;
}

void AddRecentFolder(const Services& services, const std::string& folder) {
  const std::string added = Trimmed(folder);
  if (added.empty() || added.find_first_of("\r\n") != std::string::npos) return;
  auto folders = RecentFolders(services);
  std::erase_if(folders, [&](const auto& other) { return IsSame(other, added); });
  folders.insert(folders.begin(), added);
  if (folders.size() > kMost) folders.resize(kMost);
  Store(services, folders);
}

void ClearRecentFolders(const Services& services) { Store(services, {}); }

}  // namespace rws
