#include "tests/faults/operations.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <iterator>

#include "catalogues/own_entries.h"
#include "gamelists/game_names.h"
#include "mainwindow/logic/replaced_skin.h"
#include "mission/backup_index.h"
#include "mission/briefing_file.h"
#include "mission/interrupted.h"
#include "mission/line_ends.h"
#include "mission/update.h"
#include "mission/update_note.h"
#include "services/checksum.h"
#include "services/ini_settings.h"
#include "services/setting_values.h"
#include "services/text.h"
#include "session/half_renamed.h"
#include "session/journal.h"
#include "session/lines_rule.h"
#include "session/recording.h"
#include "session/saving.h"
#include "tools/logic/backups.h"
#include "tools/logic/edit_many_step.h"
#include "tools/logic/folder_tools.h"
#include "tools/logic/mission_files.h"
#include "tools/logic/mission_menu.h"
#include "tools/logic/skin_images.h"
#include "tools/logic/skin_notes.h"

namespace rws::test {

namespace {

using Table = OperationDesk;

std::vector<std::string> Split(const char* joined) {
  std::vector<std::string> parts;
  for (const auto part : SplitAt(joined, ',')) parts.emplace_back(part);
  return parts;
}

/** What to do before: words of the session, and answers joined by "|". */
auto Prepared(const char* words, const std::string& answers = "") {
  return [=](Table& desk) {
    for (const auto answer : SplitAt(answers, '|'))
      if (!answer.empty()) desk.Answers.emplace_back(answer);
    desk.Run(words);
  };
}

/** A failure goes to the form that runs this, which tells it. */
template <class Body>
auto Form(Body body) {
  return [=](Table& desk) {
    Trap([&] { body(desk); }, [&](const Fault& caught) { desk.Told += caught.Text; });
  };
}

/** As one step of the history. */
template <class Command>
auto AsStep(Command command) {
  return [=](Table& desk) {
    Record(desk.World, nullptr);
    RecordFiles(desk.World, "Command",
                [&] { desk.Rereads = command(desk) == ToolOutcome::Reread; });
  };
}

auto Menu(ToolOutcome (*command)(const Document&, const Services&)) {
  return AsStep([=](Table& desk) { return command(desk.World.Doc, desk.World.Services); });
}

auto Renamed(int index) {
  return AsStep(
      [=](Table& desk) { return RenameCase(desk.World.Doc, desk.World.Services, index).Outcome; });
}

const auto kNumber =
    AsStep([](Table& desk) { return RenameAll(desk.World.Doc, desk.World.Services).Outcome; });
const auto kConvert = AsStep(
    [](Table& desk) { return ConvertMissionFolder(desk.World.Doc, desk.World.Services).Outcome; });
const auto kCopyFrom =
    AsStep([](Table& desk) { return CopyFrom(desk.World.Doc, desk.World.Services).Outcome; });

void Update(Table& desk) {
  Record(desk.World, nullptr);
  desk.Rereads =
      UpdateChanges(desk.World.Doc, desk.World.Services, desk.World.Prefs, {}, HooksOf(desk.World));
  CloseStep(desk.World);
}

void Save(Table& desk) { SaveOne(desk.World, desk.Path("a"), {}); }

void AttachSound(Table& desk) {
  desk.World.Doc.GamePath = desk.Box.Path("game");
  if (!AddSoundFile(desk.World.Doc, desk.World.Services)) return;
  Record(desk.World, nullptr);
  Save(desk);
}

const auto kBriefing = Form([](Table& desk) {
  RecordFiles(desk.World, "Briefing", [&] {
    SaveBriefing(desk.World.Services, desk.Box.Path("in/a.properties"), {"n", "s", "d"});
  });
});

void Back(Table& desk) {
  desk.Run("undo");
  desk.Told += desk.Last.Reason;
}

void Again(Table& desk) {
  desk.Run("redo");
  desk.Told += desk.Last.Reason;
}

/** Runs a command, then takes it back as often as is told. */
template <class Command>
auto Done(const std::string& answers, Command command, const char* then = "") {
  return [=](Table& desk) {
    Prepared("", answers)(desk);
    command(desk);
    desk.Run(then);
  };
}

auto Restore(const char* backup) {
  return [=](Table& desk) { RestoreAsStep(desk.World, desk.Path("a"), desk.Box.Path(backup)); };
}

void Keep(Table& desk) { desk.Told += KeepUnsaved(desk.World, desk.Recovery); }

void EditMany(Table& desk) {
  EditOrder order;
  order.Sets.push_back(ParseAssignment("flight[*1].Fuel=50"));
  const EditContext context = EditContextOf(desk.World);
  const EditPlan plan =
      PlanEdits(context, order, desk.World.Doc.MissionFiles, EditHooksOf(desk.World, nullptr));
  const EditReport report = ApplyAsStep(desk.World, context, plan, nullptr);
  desk.Told += ReportText(desk.World.Services.Page, report);
}

/** Of a mission that is not listed. */
void LeaveCopy(Table& desk) {
  const std::string copy = desk.Box.Write("program/$$$TEMP", "old");
  WriteNote(desk.World.Services, copy, {desk.Box.Path("out/z.mis"), Sha1("old"), Sha1("new")});
}

const auto kGiveBack = Form([](Table& desk) {
  for (const auto& one : desk.Copies) GiveBack(desk.World.Services, one);
});
const auto kDismiss = Form([](Table& desk) {
  for (const auto& one : desk.Copies) Dismiss(desk.World.Services, one);
});

const std::string kListFile = "game/#UP#/STD/com/maddox/il2/objects/air.ini";

const auto kLink = Form([](Table& desk) {
  LinkImage(desk.World.Services, desk.Box.Path("from/p.jpg"), desk.Box.Path("skins/S.jpg"));
});
const auto kClear = Form([](Table& desk) {
  ClearLink(desk.World.Services, desk.Box.Path("skins/S.jpg"), desk.Box.Path("skins/S.jpg"));
});
const auto kNotes = Form([](Table& desk) {
  SaveSkinNotes(desk.World.Services, desk.Box.Path("skins/P.ini"), "S", {"a", "b", "c"});
});
const auto kSkin = Form([](Table& desk) {
  const std::string target = desk.Box.Path("skins/S.bmp");
  KeepReplacedSkin(desk.World.Services, target);
  RecordFiles(desk.World, "Copy of skin",
              [&] { desk.World.Services.Files.CopyFile(desk.Box.Path("from/p.bmp"), target); });
});
const auto kOwn = Form([](Table& desk) { AddOwnMap(desk.World.Services, {"x/l.ini", "X", ""}); });

const auto kSettings = Form([](Table& desk) {
  const Settings settings{std::string(kSettingsBaseKey),
                          IniSettings(desk.World.Services.Files, desk.Box.Path("program/S.ini"))};
  WriteSetting(settings, setting::GamePath, "/il2");
});

/** Times are noted in the cache. */
void MakeListsOld(Table& desk) {
  namespace fs = std::filesystem;
  for (const auto& entry : fs::recursive_directory_iterator(ToFsPath(desk.Box.Path("game"))))
    fs::last_write_time(entry.path(), fs::file_time_type(std::chrono::hours(300'000)));
}

void ReadLists(Table& desk) {
  const auto& services = desk.World.Services;
  NameChoices choices;
  choices.Language = "ru";
  const GameNames names = FindGameNames(services, desk.Box.Path("game"), choices,
                                        KeptListsFile(services), {}, rws::ReadLists::Anew);
  desk.Told += Joined(names.Troubles);
}

void RepairLineEnds(Table& desk) {
  desk.Told += NormaliseLineEnds(desk.World.Services, desk.Box.Path("in/lf.mis"));
}

void FinishNames(Table& desk) { desk.Told += FinishRenames(desk.World.Services, desk.Renames); }

const std::string kFrom =
    "from/x.mis=  player\r\nX\r\n|from/x.properties=XP|from/y.mis=Y\r\n|"
    "from/y.properties=YP";
const std::string kBackup = "program/RWS Backup/a.mis.bak=" + TaggedMission("then");

std::vector<Operation> MissionOperations() {
  const auto edited = Prepared("fuel0=50 go=b fuel1=60");
  const auto keepsLines = [=](Table& desk) {
    desk.World.Doc.Untouched = UntouchedLines::Keep;
    desk.Reread("choice");
    edited(desk);
  };
  return {
      {"Update", "a+,b", "", edited, Update},
      {"Update, lines kept", "a+,b", "", keepsLines, Update},
      {"Update, second backup", "a", kBackup, Prepared("fuel0=50"), Update},
      {"Save", "a+,b", "", Prepared("base=IL-2 fuel0=50"), Save},
      {"Save, file gone", "a+,b", "", Prepared("fuel0=50 gone=a"), Save},
      {"Sound", "a+", "game/snd/gun.wav=W", Prepared("", "game/snd/gun.wav|game/snd/gun.wav"),
       AttachSound},
      {"Briefing, new", "a,b", "", Prepared(""), kBriefing},
      {"Briefing", "a+,b", "", Prepared(""), kBriefing},
      {"Briefing, backup taken", "a+", "program/RWS Backup/a.properties.bak=1", Prepared(""),
       kBriefing, "the move to the backup comes before the new briefing"},
      {"Bulk edit", "a,b", "", Prepared(""), EditMany},
      {"Restore", "a", kBackup, Prepared(""), Restore("program/RWS Backup/a.mis.bak")},
      {"Restore, file gone", "a", kBackup, Prepared("gone=a"),
       Restore("program/RWS Backup/a.mis.bak")},
      {"Recovery", "a,b,c", "",
       Prepared("fuel0=5 go=b base=x go=c fuel0=6 keep fuel0=7 go=a undo go=b base=y"), Keep},
      {"Give back", "a", "", LeaveCopy, kGiveBack},
      {"Give back over torn", "a", "out/z.mis=torn", LeaveCopy, kGiveBack},
      {"Dismiss", "a", "", LeaveCopy, kDismiss},
      {"Line ends", "a", "in/lf.mis=" + Replace(std::string(40'000, 'l'), "l", "l\n"), Prepared(""),
       RepairLineEnds},
  };
}

std::vector<Operation> FolderOperations() {
  return {
      {"Save As", "a+,b", "", Prepared("", "in/new.mis"), Menu(SaveMissionAs)},
      {"Save As over", "a+,b+", "", Prepared("", "in/b.mis"), Menu(SaveMissionAs)},
      {"Copy From", "a", kFrom, Prepared("", "from/x.mis;from/y.mis"), kCopyFrom},
      {"Move", "a+,b", "", Prepared("fuel0=50", "out"), Menu(MoveMission)},
      {"Delete", "a+,b", "", Prepared("fuel0=50"), Menu(DeleteMission)},
      {"Rename", "a+,b", "", Prepared("fuel0=50", "=z"), Renamed(0)},
      {"Rename, upper case", "a+,b", "", Prepared(""), Renamed(3)},
      {"Rename All", "a+,b,c+", "", Prepared("fuel0=50", "=n|=1"), kNumber},
      {"Rename All, chain", "n00+,n01", "", Prepared("", "=n|=1"), kNumber},
      {"Convert", "a", kFrom, Prepared("", "from|out|=c"), kConvert},
      {"Convert over", "a", kFrom + "|out/x.mis=O|out/x.properties=OP", Prepared("", "from|out|="),
       kConvert},
      {"Finish renames", "a", "in/z.mistmp=Z|in/z.propertiestmp=ZP", Prepared(""), FinishNames},
      {"Undo of Delete", "a+,b", "", Done("", Menu(DeleteMission)), Back},
      {"Redo of Delete", "a+,b", "", Done("", Menu(DeleteMission), "undo"), Again},
      {"Undo of Save As over", "a+,b+", "", Done("in/b.mis", Menu(SaveMissionAs)), Back},
      {"Redo of Save As over", "a+,b+", "", Done("in/b.mis", Menu(SaveMissionAs), "undo"), Again},
      {"Undo of Rename All", "n00,n01+", "", Done("=n|=1", kNumber), Back},
      {"Redo of Rename All", "n00,n01+", "", Done("=n|=1", kNumber, "undo"), Again},
      {"Undo of Move", "a+,b", "", Done("out", Menu(MoveMission)), Back},
  };
}

std::vector<Operation> OtherOperations() {
  return {
      {"Skin link", "a", "from/p.jpg=1|skins/S.jpg=2", Prepared(""), kLink},
      {"Skin link cleared", "a", "skins/S.jpg=1", Prepared(""), kClear},
      {"Skin link cleared again", "a", "skins/S.jpg=1|skins/S-bak.jpg=0", Prepared(""), kClear},
      {"Skin", "a", "from/p.bmp=1|skins/S.bmp=2", Prepared(""), kSkin},
      {"Skin notes", "a", "skins/P.ini=[S]\r\nSkinner=old\r\n", Prepared(""), kNotes},
      {"Own entries", "a", "program/RWS_Own.txt=# mine\n", Prepared(""), kOwn},
      {"Settings", "a", "program/S.ini=[HKEY_CURRENT_USER]\nother=1\n", Prepared(""), kSettings},
      {"List cache", "a", kListFile + "=[AIR]\nA air.A 2\n|program/RWS Lists.dat=old", MakeListsOld,
       ReadLists, "", "the names are there all the same"},
  };
}

}  // namespace

OperationDesk::OperationDesk(const Operation& operation, bool backups)
    : SessionDesk(Split(operation.Missions), operation.Others) {
  for (const char* folder : {"skins", "game"}) Box.MakeFolder(folder);
  const auto next = [this] {
    if (Answers.empty()) ADD_FAILURE() << "no answer is left";
    const std::string answer = Answers.empty() ? "=" : Answers.front();
    if (!Answers.empty()) Answers.pop_front();
    return answer.starts_with("=") ? answer.substr(1) : Box.Path(answer);
  };
  Prompts& ask = World.Services.Ask;
  ask.MsgBox = [this](const std::string& text, Buttons buttons, Icon, const std::string&) {
    Told += text + "\n";
    return buttons == Buttons::Ok || buttons == Buttons::OkCancel ? Answer::Ok : Answer::Yes;
  };
  ask.Notice = [this](const std::string& text) { Told += text + "\n"; };
  ask.InputBox = [next](auto&&...) { return next(); };
  ask.Folder = [next](auto&&...) { return next(); };
  ask.SaveFile = [next](auto&&...) { return next(); };
  ask.OpenFiles = [next, this](auto&&...) {
    std::vector<std::string> paths = {next()};
    if (const auto cut = paths[0].find(';'); cut != paths[0].npos) {
      paths.push_back(Box.Path(paths[0].substr(cut + 1)));
      paths[0].resize(cut);
    }
    return paths;
  };
  World.Prefs.bBackup = backups;
  World.Prefs.BackupsKept = 2;
  operation.Prepare(*this);
  Copies = FindInterrupted(World.Services);
  Renames = FindHalfRenamed(World.Services, Box.Path("in"));
  Told.clear();
  Rereads = false;
}

const std::vector<Operation>& Operations() {
  static const std::vector<Operation> kAll = [] {
    std::vector<Operation> all = MissionOperations();
    for (auto&& some : {FolderOperations(), OtherOperations()})
      all.insert(all.end(), some.begin(), some.end());
    return all;
  }();
  return kAll;
}

}  // namespace rws::test
