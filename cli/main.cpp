#include <CLI/CLI.hpp>
#include <iostream>
#include <string>
#include <vector>

#include "catalogues/maps.h"
#include "cli/records_json.h"
#include "mission/line_ends.h"
#include "mission/reader.h"
#include "mission/writer.h"
#include "services/arguments.h"
#include "services/faults.h"
#include "services/list_files.h"
#include "services/paths.h"
#include "services/system_code_page.h"

namespace {

using namespace rws;

constexpr int kFailed = 1, kBadUsage = 2;

struct Options {
  std::vector<std::string> Files;
  std::string File, Output, Tables, Game;
  int CodePage = SystemCodePage();
};

void Complain(const std::string& text) { std::cerr << "rws-cli: " << text << "\n"; }

Services NewServices(const Options& options, const std::string& called) {
  Services services;
  const std::string program = services.Files.ProgramFile();
  services.ProgramPath =
      GetParentFolderName(program.empty() ? services.Files.GetAbsolutePathName(called) : program);
  services.AppPath = options.Tables.empty() ? services.ProgramPath : options.Tables;
  services.Page = CodePage(options.CodePage);
  services.LogSink = [](const std::string& line) { Complain(line); };
  return services;
}

/** The game directory that a mission lies in: the nearest folder above it with an "il2*.*" file. */
std::string GameAbove(const Services& services, const std::string& missionPath) {
  std::string folder = services.Files.GetAbsolutePathName(missionPath);
  while (!(folder = GetParentFolderName(folder)).empty()) {
    std::vector<std::string> found;
    ResumeNext([&] { ListFiles(services, found, folder, "il2*.*", false, ""); });
    if (!found.empty()) return folder;
  }
  return "";
}

/** Reads one mission without touching the disk; a repair of its line ends stays in memory. */
Document ReadMission(const Services& services, const Options& options, const std::string& path) {
  Document doc;
  LoadMaps(doc, services);
  doc.GamePath = options.Game.empty() ? GameAbove(services, path) : options.Game;
  std::string bytes = services.Files.ReadFile(path);
  if (auto repaired = RepairedLineEnds(bytes)) bytes = std::move(*repaired);
  doc.MissionFiles = {path};
  LoadMissionArray(doc, services);
  ReadMissionText(doc, services, 0, std::move(bytes));
  return doc;
}

int Show(const Services& services, const Options& options) {
  int result = 0;
  for (const auto& path : options.Files) {
    Trap(
        [&] { std::cout << MissionJson(ReadMission(services, options, path).Missions[0]) << "\n"; },
        [&](const Fault& caught) {
          Complain(caught.Text);
          result = kFailed;
        });
  }
  return std::cout.flush() ? result : kFailed;
}

int Rewrite(const Services& services, const Options& options) {
  if (services.Files.IsSameFile(options.File, options.Output)) {
    Complain("the output would replace the mission itself");
    return kBadUsage;
  }
  int result = kFailed;
  Trap(
      [&] {
        Document doc = ReadMission(services, options, options.File);
        LineArray lines;
        if (!BuildMissionFile(doc, services, lines, 0, {}))
          return Complain("cannot build the new text of \"" + options.File + "\"");
        services.Files.ReplaceFile(options.Output, lines.FileText());
        result = 0;
      },
      [](const Fault& caught) { Complain(caught.Text); });
  return result;
}

int Run(const std::vector<std::string>& arguments) {
  CLI::App app("Shows and rewrites IL-2 mission files.", "rws-cli");
  app.set_version_flag("--version", "rws-cli " RWS_VERSION);
  app.require_subcommand(1);
  app.fallthrough();
  Options options;
  app.add_option("--tables", options.Tables,
                 "Folder of the data tables (default: the program's own)");
  app.add_option("--game", options.Game,
                 "Game directory (default: the nearest folder above the mission that is one)");
  app.add_option("--codepage", options.CodePage,
                 "Code page of the missions (default: the one of the system)")
      ->check(CLI::IsMember({1250, 1251, 1252, 1253, 1254, 1257}));
  auto* show = app.add_subcommand("show", "Print each mission's records, a JSON object a line");
  show->add_option("FILE", options.Files, "Mission files")->required();
  auto* rewrite = app.add_subcommand(
      "rewrite", "Write what an update without any edit would write; the mission is not touched");
  rewrite->add_option("FILE", options.File, "Mission file")->required();
  rewrite->add_option("--output", options.Output, "File to write, not the mission itself")
      ->required();
  try {
    // It takes them from the end.
    app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend() - 1));
  } catch (const CLI::ParseError& stop) {
    return app.exit(stop) == 0 ? 0 : kBadUsage;
  }
  const Services services = NewServices(options, arguments[0]);
  return show->parsed() ? Show(services, options) : Rewrite(services, options);
}

}  // namespace

int main(int argc, char** argv) { return Run(ProgramArguments(argc, argv)); }
