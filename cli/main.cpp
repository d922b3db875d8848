#include <CLI/CLI.hpp>
#include <iostream>
#include <string>
#include <vector>

#include "cli/check.h"
#include "cli/cli_services.h"
#include "cli/edit.h"
#include "cli/find.h"
#include "cli/lists.h"
#include "cli/records_json.h"
#include "library/edited_mission.h"
#include "mission/line_array.h"
#include "services/arguments.h"
#include "services/faults.h"

namespace {

using namespace rws;

struct Options {
  CliOptions All;
  std::vector<std::string> Files;
  std::string File, Output;
  EditOptions Edit;
  DiffOptions Diff;
  FindOptions Find;
  CheckOptions Check;
  ListsOptions Lists;
};

Document ReadAnew(const Services& services, const Options& options, const std::string& path) {
  return ReadMission(services, options.All, path,
                     services.Files.ReadFile(path, LineArray::kLargest), ReadAs::Anew);
}

int Show(const Services& services, const Options& options) {
  int result = 0;
  for (const auto& path : options.Files) {
    Trap([&] { std::cout << MissionJson(ReadAnew(services, options, path).Missions[0]) << "\n"; },
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
        Document doc = ReadAnew(services, options, options.File);
        services.Files.ReplaceFile(options.Output, BuildOneMission(doc, services).FileText());
        result = 0;
      },
      [](const Fault& caught) { Complain(caught.Text); });
  return result;
}

void AddLines(CLI::App* command, ReadAs& lines) {
  const auto take = [&lines](const std::string& word) {
    lines = word == "anew" ? ReadAs::Anew : ReadAs::Kept;
  };
  command
      ->add_option_function<std::string>(
          "--lines", take,
          "What becomes of lines that are not edited: \"keep\" leaves them as they are, \"anew\" "
          "makes the whole file anew, as the window can (default: keep)")
      ->check(CLI::IsMember({"keep", "anew"}));
}

void AddEdit(CLI::App& app, EditOptions& edit) {
  auto* command = app.add_subcommand(
      "edit",
      "Change values of missions. Where one of the files cannot be changed, none is touched; with "
      "--where it is left out and named, and the others are changed");
  command->add_option("FILE", edit.Files, "Mission files; with --where folders")->required();
  auto* where = command
                    ->add_option("--where", edit.Where,
                                 "Change the missions of folders for which this holds; the words "
                                 "are those of \"find\", \"\" takes all")
                    ->allow_extra_args(false);
  command->add_flag("--recursive", edit.Recursive, "Also the folders below")->needs(where);
  command
      ->add_option("--set", edit.Sets,
                   "PATH=VALUE, several times if need be. Paths: Time CloudType CloudHeight Army "
                   "Player PlayerNum TimeConstant WeaponsConstant; flight[F] with .Fuel .Skill "
                   ".Weapons .Planes .StartTime .OnlyAI .Parachute .Class, .plane[N] with .Skin "
                   ".Pilot .NoseArt .Skill .NumberOn, .waypoint[N] with .Alt .Speed .Type .Marker; "
                   "base[N] with .Army .Radius. F is a flight's name, class=CLASS, "
                   "army=red|blue|white, aircraft=NAME or squadron=CODE, N counts from 0; * stands "
                   "for anything")
      ->allow_extra_args(false);
  command->add_option("--remove", edit.Removals, "flight[F], several times if need be")
      ->allow_extra_args(false);
  AddLines(command, edit.Lines);
  auto* backup =
      command->add_option("--backup", edit.BackupFolder,
                          "Folder for a backup of each mission before it is changed (default: "
                          "\"RWS Backup\" where the program keeps its own)");
  auto* none = command->add_flag("--no-backup", edit.NoBackup, "Make no backups");
  command->add_flag("--dry-run", edit.DryRun,
                    "Print what would change as a unified diff, and touch nothing");
  auto* output = command->add_option("--output", edit.Output,
                                     "Write there instead, and leave the one FILE as it is");
  command->add_flag("--force", edit.Force, "Take classes and loadouts that the tables lack");
  none->excludes(backup);
  output->excludes(backup)->excludes(none)->excludes(where);
}

void AddDiff(CLI::App& app, DiffOptions& diff) {
  auto* command = app.add_subcommand(
      "diff",
      "Print what an update without any edit would change, as a unified diff; exits with 0 "
      "for nothing, 1 for something, 2 for trouble");
  command->add_option("FILE", diff.File, "Mission file")->required();
  AddLines(command, diff.Lines);
}

void AddListing(CLI::App* command, bool& recursive, std::string& format) {
  command->add_flag("--recursive", recursive, "Also the folders below");
  command->add_option("--format", format, "table, csv or json (default: table)")
      ->check(CLI::IsMember({"table", "csv", "json"}));
}

void AddFind(CLI::App& app, FindOptions& find) {
  auto* command = app.add_subcommand(
      "find", "List the missions of folders, or those of them for which a query holds");
  command->add_option("DIR", find.Folders, "Folders, or single missions")->required();
  command
      ->add_option("--where", find.Where,
                   "Words of the names of file and briefing, and map: aircraft: squadron: "
                   "player: army: kind: time: weather: flights: text: is:broken, all of which "
                   "must hold; \"-\" ahead negates, quotes hold blanks together")
      ->allow_extra_args(false);
  AddListing(command, find.Recursive, find.Format);
}

void AddCheck(CLI::App& app, CheckOptions& check) {
  auto* command = app.add_subcommand(
      "check",
      "List what the game refuses, drops or stumbles over in missions; exits with 1 where a "
      "finding is an error, warnings and notes alone give 0");
  command->add_option("PATH", check.Paths, "Mission files and folders")->required();
  AddListing(command, check.Recursive, check.Format);
}

void AddLists(CLI::App& app, ListsOptions& lists) {
  auto* command = app.add_subcommand(
      "lists",
      "Print which lists of aircraft, loadouts, maps and squadrons the game of --game has "
      "as open files, and each of their lines that is not understood");
  command->add_option("--pack", lists.Pack,
                      "Folders of the pack of mods, where the game does not tell which is on");
  command->add_option("--language", lists.Language,
                      "Language of the texts, as \"de\" (default: the one of the game)");
  command->add_option("--format", lists.Format, "table or json (default: table)")
      ->check(CLI::IsMember({"table", "json"}));
}

void AddCommon(CLI::App& app, CliOptions& options) {
  app.add_option("--tables", options.Tables,
                 "Folder of the data tables (default: the program's own)");
  app.add_option("--game", options.Game,
                 "Game directory (default: the nearest folder above the mission that is one)");
  app.add_flag("--no-lists", options.NoLists,
               "Names come from the data tables alone, not from the lists of the game's mods");
  app.add_option("--codepage", options.CodePage,
                 "Code page of the missions (default: the one of the system)")
      ->check(CLI::IsMember({1250, 1251, 1252, 1253, 1254, 1257}));
}

int Run(const std::vector<std::string>& arguments) {
  CLI::App app("Shows, changes and rewrites IL-2 mission files.", "rws-cli");
  app.set_version_flag("--version", "rws-cli " RWS_VERSION);
  app.require_subcommand(1);
  app.fallthrough();
  Options options;
  AddCommon(app, options.All);
  auto* show = app.add_subcommand("show", "Print each mission's records, a JSON object a line");
  show->add_option("FILE", options.Files, "Mission files")->required();
  auto* rewrite = app.add_subcommand(
      "rewrite", "Write what an update without any edit would write; the mission is not touched");
  rewrite->add_option("FILE", options.File, "Mission file")->required();
  rewrite->add_option("--output", options.Output, "File to write, not the mission itself")
      ->required();
  AddEdit(app, options.Edit);
  AddDiff(app, options.Diff);
  AddFind(app, options.Find);
  AddCheck(app, options.Check);
  AddLists(app, options.Lists);
  try {
    // It takes them from the end.
    app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend() - 1));
  } catch (const CLI::ParseError& stop) {
    return app.exit(stop) == 0 ? 0 : kBadUsage;
  }
  const Services services = NewServices(options.All, arguments[0]);
  for (auto* files :
       {&options.Files, &options.Edit.Files, &options.Find.Folders, &options.Check.Paths})
    *files = NamedFiles(services, *files);
  if (show->parsed()) return Show(services, options);
  if (rewrite->parsed()) return Rewrite(services, options);
  if (app.got_subcommand("edit"))
    return (options.Edit.Where ? EditFound : Edit)(services, options.All, options.Edit);
  if (app.got_subcommand("find")) return Find(services, options.All, options.Find);
  if (app.got_subcommand("lists")) return Lists(services, options.All, options.Lists);
  if (app.got_subcommand("check")) return Check(services, options.All, options.Check);
  return Diff(services, options.All, options.Diff);
}

}  // namespace

int main(int argc, char** argv) {
  WriteRawOutput();
  return Run(ProgramArguments(argc, argv));
}
