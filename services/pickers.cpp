#include "services/pickers.h"

#include "services/error_log.h"
#include "services/paths.h"

namespace rws {

namespace {

std::string TitleOr(std::string_view title, std::string_view fallback) {
  return std::string(title.empty() ? fallback : title);
}

std::string StartFolder(const Services& services, const SettingValue* setting) {
  return ExistingFolder(services, setting ? ReadSetting(services.Settings, *setting) : "");
}

std::string StoreFolderOf(const Services& services, const std::string& path,
                          const SettingValue* setting) {
  const std::string folder = GetParentFolderName(path);
  if (setting) WriteSetting(services.Settings, *setting, folder);
  return folder;
}

}  // namespace

std::string ExistingFolder(const Services& services, std::string folder) {
  while (!folder.empty() && !services.Files.FolderExists(folder))
    folder = GetParentFolderName(folder);
  if (!folder.empty()) return folder;
  if (*kFirstDrive) return kFirstDrive;
  return services.System.HomeFolder ? services.System.HomeFolder() : "/";
}

std::string GetFiles(const Services& services, std::vector<std::string>& result,
                     std::string_view title, std::string_view filter, const SettingValue* setting) {
  result.clear();
  std::string folder;
  const bool done = LogAndLeave(services, "GetFiles", [&] {
    const FileQuestion question{TitleOr(title, "Please select a file"), std::string(filter),
                                StartFolder(services, setting), ""};
    result = services.Ask.OpenFiles(question, true);
    if (!result.empty()) folder = StoreFolderOf(services, result.front(), setting);
  });
  if (!done) result.clear();
  return folder;
}

std::string GetFile(const Services& services, std::string_view title, std::string_view filter,
                    const SettingValue* setting) {
  std::string path;
  LogAndLeave(services, "GetFile", [&] {
    const FileQuestion question{TitleOr(title, "Please select a file"), std::string(filter),
                                StartFolder(services, setting), ""};
    const auto chosen = services.Ask.OpenFiles(question, false);
    if (chosen.empty()) return;
    StoreFolderOf(services, chosen.front(), setting);
    path = chosen.front();
  });
  return path;
}

std::string GetSaveFile(const Services& services, std::string_view title,
                        std::string_view defaultName, std::string_view filter,
                        std::string_view initialFolder, SaveFor use) {
  std::string path;
  LogAndLeave(services, "GetSaveFile", [&] {
    path = services.Ask.SaveFile({TitleOr(title, "Please select a file"), std::string(filter),
                                  ExistingFolder(services, std::string(initialFolder)),
                                  std::string(defaultName), use == SaveFor::Writing});
  });
  return path;
}

std::string GetFolder(const Services& services, std::string_view title, bool allowNewFolder,
                      std::string_view initialFolder) {
  std::string path;
  LogAndLeave(services, "GetFolder", [&] {
    path = services.Ask.Folder(TitleOr(title, "Please select a folder"), allowNewFolder,
                               ExistingFolder(services, std::string(initialFolder)));
  });
  return path;
}

std::int32_t GetColor(const Services& services, std::int32_t initial) {
  std::int32_t color = initial;
  LogAndLeave(services, "GetColor", [&] { color = services.Ask.Color(initial).value_or(initial); });
  return color;
}

}  // namespace rws
