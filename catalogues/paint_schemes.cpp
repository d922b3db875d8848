#include "catalogues/paint_schemes.h"

#include <string_view>
#include <utility>

#include "services/arrays.h"
#include "services/error_log.h"
#include "services/list_files.h"
#include "services/paths.h"
#include "services/setting_values.h"

namespace rws {

namespace {

std::string SchemeFolder(const Document& doc, const Services& services, std::string_view name) {
  return services.Files.Resolve(BuildPath(BuildPath(doc.GamePath, "PaintSchemes"), name));
}

/** Clears a list and fills it with the images of a folder. Events that run on the way never see a
    half filled one. */
void ListImages(const Services& services, std::string_view procedure, const std::string& folder,
                std::vector<std::string> first, std::vector<std::string>& list) {
  list = first;
  LogAndLeave(services, procedure, [&] {
    ListFiles(services, first, folder, "*.bmp", false, "");
    list = std::move(first);
  });
}

void CloseOverMissingSkins(Document& doc, const Services& services, const std::string& folder) {
  LogError(services, folder, "Path not found, RWS with not run!");
  services.Ask.MsgBox("Check the error log file for errors.", Buttons::Ok, Icon::Critical,
                      kProgramTitle);
  ResumeNext([&] { WriteSetting(services.Settings, setting::GamePath, ""); });
  doc.Closing = true;
  services.Window.Close();
}

/** Full stops stay, unlike in the folder that is made from a class: such a folder matches only what
    the aircraft table names. */
std::string FolderKey(std::string name) {
  std::erase_if(name, [](char c) { return c == '_' || c == '-'; });
  return name;
}

void EndScan(const Services& services) {
  services.Window.Progress({});
  if (services.Ask.Notice)
    services.Ask.Notice("The skins were not all read. Choose Preferences and OK to read them.");
}

std::vector<SkinFolder> ScanSkins(const Document& doc, const Services& services,
                                  const std::string& folder) {
  std::vector<SkinFolder> skins;
  auto entries = services.Files.ListFolder(folder);
  std::erase_if(entries, [](const auto& entry) { return !entry.IsFolder; });
  bool goesOn = true;
  for (const auto& entry : entries) {
    SkinFolder row{FolderKey(entry.Name), BuildPath(folder, entry.Name), {}};
    if (goesOn)
      ListImages(services, "LoadPlaneSkins", row.Path, {"default"}, row.Files);
    else
      row.Files = {"default"};
    // A close during the scan ends it; nothing is filled afterwards.
    if (doc.Closing) return {};
    skins.push_back(std::move(row));
    goesOn = goesOn &&
             services.Window.Progress({skins.size(), entries.size(), entry.Name, "Skin folder"});
  }
  if (!goesOn) EndScan(services);
  return skins;
}

}  // namespace

void LoadPlaneSkins(Document& doc, Catalogues& catalogues, const Services& services) {
  catalogues.Skins.clear();
  catalogues.HighestSkin = -1;
  LogAndLeave(services, "LoadPlaneSkins", [&] {
    const std::string folder = SchemeFolder(doc, services, "Skins");
    if (!services.Files.FolderExists(folder)) return CloseOverMissingSkins(doc, services, folder);
    catalogues.Skins = ScanSkins(doc, services, folder);
    catalogues.HighestSkin = SafeUBound(catalogues.Skins);
  });
}

void ReLoadSinglePlaneSkin(Catalogues& catalogues, const Services& services, std::ptrdiff_t row) {
  LogAndLeave(services, "ReLoadSinglePlaneSkin", [&] {
    const std::string folder = At(catalogues.Skins, row).Path;
    std::vector<std::string> files;
    ListImages(services, "ReLoadSinglePlaneSkin", folder, {"default"}, files);
    At(catalogues.Skins, row).Files = std::move(files);
  });
}

void LoadPilotSkins(const Document& doc, Catalogues& catalogues, const Services& services) {
  ListImages(services, "LoadPilotSkins", SchemeFolder(doc, services, "Pilots"), {},
             catalogues.PilotSkins);
}

void LoadNoseArt(const Document& doc, Catalogues& catalogues, const Services& services) {
  ListImages(services, "LoadNoseArt", SchemeFolder(doc, services, "Noseart"), {},
             catalogues.NoseArts);
}

}  // namespace rws
