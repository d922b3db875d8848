#include "library/check_files.h"

#include <algorithm>
#include <utility>

#include "services/code_page.h"
#include "services/faults.h"
#include "services/paths.h"
#include "services/text.h"

namespace rws {

namespace {

bool IsGameFile(const std::string& name) {
  const std::string folded = FoldName(name);
  return folded.starts_with("il2") && Contains(folded, ".");
}

std::string SkinKey(const std::string& name) {
  std::string key = FoldName(name);
  std::erase_if(key, [](char c) { return c == '_' || c == '-'; });
  return key;
}

}  // namespace

std::string GameAbove(const FileSystem& files, const std::string& missionPath) {
  return GameFiles(files, "").GameOf(missionPath);
}

GameFiles::GameFiles(const FileSystem& files, std::string game)
    : files_(files.ForThreads()), game_(std::move(game)) {}

std::string GameFiles::GameOf(const std::string& missionPath) {
  if (!game_.empty()) return game_;
  const std::string folder = GetParentFolderName(files_.GetAbsolutePathName(missionPath));
  const std::lock_guard lock(mutex_);
  return GameFrom(folder);
}

const std::string& GameFiles::GameFrom(const std::string& folder) {
  const auto [found, isNew] = games_.try_emplace(folder);
  if (!isNew || folder.empty()) return found->second;
  std::vector<std::string> own;
  ResumeNext([&] { own = files_.ListFileNames(folder, IsGameFile); });
  found->second = own.empty() ? GameFrom(GetParentFolderName(folder)) : folder;
  return found->second;
}

const GameFiles::Folder& GameFiles::List(const std::string& path) {
  const auto [found, isNew] = listed_.try_emplace(path);
  Folder& folder = found->second;
  if (isNew)
    folder.IsThere = ResumeNext([&] {
      for (const auto& entry : files_.ListFolder(files_.Resolve(path)))
        if (entry.IsFolder)
          folder.Folders.emplace(SkinKey(entry.Name), entry.Name);
        else
          folder.Files.insert(FoldName(entry.Name));
    });
  return folder;
}

GameFiles::Has GameFiles::HasSkin(const std::string& game, const std::string& folder,
                                  const std::string& file) {
  if (game.empty()) return Has::Unknown;
  const std::string skins = BuildPath(BuildPath(game, "PaintSchemes"), "Skins");
  const std::lock_guard lock(mutex_);
  const Folder& all = List(skins);
  if (!all.IsThere) return Has::Unknown;
  const auto own = all.Folders.find(SkinKey(folder));
  if (own == all.Folders.end()) return Has::No;
  const Folder& listed = List(BuildPath(skins, own->second));
  return listed.Files.contains(FoldName(file)) ? Has::Yes : Has::No;
}

GameFiles::Has GameFiles::HasPicture(const std::string& game, const std::string& folder,
                                     const std::string& file) {
  if (game.empty()) return Has::Unknown;
  const std::lock_guard lock(mutex_);
  const Folder& listed = List(BuildPath(BuildPath(game, "PaintSchemes"), folder));
  if (!listed.IsThere) return Has::Unknown;
  return listed.Files.contains(FoldName(file)) ? Has::Yes : Has::No;
}

bool GameFiles::HasFile(const std::string& game, const std::string& path) {
  const std::string full = BuildPath(game, path);
  const std::lock_guard lock(mutex_);
  const auto [found, isNew] = known_.try_emplace(full);
  if (isNew) found->second = files_.FileExists(full);
  return found->second;
}

}  // namespace rws
