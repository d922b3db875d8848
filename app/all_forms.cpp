#include "app/all_forms.h"

#include "catalogues/dogfight.h"
#include "editors/frmBrief.h"
#include "editors/frmChgAC.h"
#include "editors/frmDogFight.h"
#include "editors/frmStatic.h"
#include "editors/frmWP.h"
#include "editors/frmWPEdit.h"
#include "library/forms/frmFind.h"
#include "library/seen_aircraft.h"
#include "mainwindow/frmLines.h"
#include "mainwindow/frmUnsaved.h"
#include "map/forms/frmBaseLines.h"
#include "map/forms/frmMap.h"
#include "map/forms/frmMapPicture.h"
#include "services/faults.h"
#include "services/forms/frmCam.h"
#include "services/forms/frmPrefs.h"
#include "session/current.h"
#include "tools/frmAddAircraft.h"
#include "tools/frmAddMap.h"
#include "tools/frmBackups.h"
#include "tools/frmChanges.h"
#include "tools/frmCheck.h"
#include "tools/frmCompare.h"
#include "tools/frmEditMany.h"
#include "tools/frmLists.h"
#include "tools/frmSkins.h"
#include "tools/frmView.h"
#include "tools/logic/mission_files.h"
#include "tools/logic/mission_menu.h"

namespace rws {

namespace {

/** Makes a form, sets what its caller sets, and loads it. */
template <class Form, class Prepare>
NamedForm Named(const char* name, Session& session, QWidget* parent, Prepare prepare) {
  return {name, [=, &session]() -> std::unique_ptr<QWidget> {
            auto form = std::make_unique<Form>(session, parent);
            prepare(*form);
            form->LoadForm();
            return form;
          }};
}

NamedForm View(Session& session, QWidget* parent) {
  return {"frmView", [=, &session]() -> std::unique_ptr<QWidget> {
            auto form = std::make_unique<frmView>(session.Services, parent);
            const SkinFolder& skins = At(session.Tables.Skins, 0);
            form->FileName = skins.Path + "/" + At(skins.Files, 1);
            form->LoadForm();
            return form;
          }};
}

/** The check of the current mission. */
NamedForm Check(Session& session, QWidget* parent) {
  return {"frmCheck", [=, &session]() -> std::unique_ptr<QWidget> {
            auto form = std::make_unique<frmCheck>(session, parent);
            form->LoadForm();
            form->Check(frmCheck::kShown);
            return form;
          }};
}

/** The map of the current mission, at a minute. */
NamedForm Map(Session& session) {
  return {"frmMap", [&session]() -> std::unique_ptr<QWidget> {
            auto form = std::make_unique<frmMap>(session);
            form->LoadForm();
            form->show();
            form->Follow();
            return form;
          }};
}

/** One that takes the services alone, as those do that ask about missions. */
template <class Form>
NamedForm Asking(const char* name, Session& session, QWidget* parent) {
  return {name, [=, &session]() -> std::unique_ptr<QWidget> {
            auto form = std::make_unique<Form>(session.Services, parent);
            form->Missions = {CurrentMissionPath(session.Doc)};
            form->LoadForm();
            return form;
          }};
}

NamedForm MapPictureOf(Session& session, QWidget* parent) {
  return {"frmMapPicture", [=, &session]() -> std::unique_ptr<QWidget> {
            auto form = std::make_unique<frmMapPicture>(session.Services, parent);
            form->Map = QStringLiteral("Smolensk");
            form->LoadForm();
            return form;
          }};
}

NamedForm BaseLinesOf(Session& session, QWidget* parent) {
  return {"frmBaseLines", [=, &session]() -> std::unique_ptr<QWidget> {
            auto form = std::make_unique<frmBaseLines>(session, 0, parent);
            form->LoadForm();
            return form;
          }};
}

/** With a preview of what some rows would change. */
NamedForm EditMany(Session& session, QWidget* parent) {
  return {"frmEditMany", [=, &session]() -> std::unique_ptr<QWidget> {
            auto form = std::make_unique<frmEditMany>(session, parent);
            form->Scopes = {{"Missions of this folder", session.Doc.MissionFiles}};
            form->LoadForm();
            form->Rows()[0]->SetRow({0, "5", ManyFlights::All, ""});
            form->AddRow().SetRow({8, "60", ManyFlights::Class, "*"});
            form->AddRow().SetRow({7, "2", ManyFlights::Army, "blue"});
            form->AddRow().SetRow({2, "5.5", ManyFlights::All, ""});
            form->cmdPreview->click();
            return form;
          }};
}

/** As the lists of the game would be read now. */
NamedForm Lists(Session& session, QWidget* parent) {
  return {"frmLists", [=, &session]() -> std::unique_ptr<QWidget> {
            auto form = std::make_unique<frmLists>(session, parent);
            form->Choices = ReadNameChoices(session.Services.Settings);
            form->Names = FindGameNames(session.Services, session.Doc.GamePath, form->Choices, "");
            form->Use = [](const NameChoices&, ReadLists) { return GameNames(); };
            form->LoadForm();
            return form;
          }};
}

/** The current mission against itself with a few edits. */
void CompareWithShadow(const Session& session, frmCompare& form) {
  const LineArray& lines = CurrentMission(session).Lines;
  LineArray edited;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    constexpr std::size_t kEvery = 40;
    if (i % kEvery == 5) continue;
    edited.Add(lines[i]);
    if (i % kEvery == 8) edited.Add("  an added line");
    if (i % kEvery == 20) edited.Set(edited.size() - 1, "  a changed line");
  }
  form.Subject = CurrentMissionPath(session.Doc);
  form.BeforeCaption = "As it is on disk, 2026-11-20 18:03";
  form.AfterCaption = "As it is here";
  form.Before = lines.FileText();
  form.After = edited.FileText();
}

}  // namespace

std::vector<NamedForm> AllForms(Session& session, QWidget* parent) {
  return {
      Map(session),
      MapPictureOf(session, parent),
      BaseLinesOf(session, parent),
      Asking<frmLines>("frmLines", session, parent),
      Asking<frmUnsaved>("frmUnsaved", session, parent),
      Named<frmAddAircraft>("frmAddAircraft", session, parent,
                            [](frmAddAircraft& form) {
                              form.Class = "MYSTERY";
                              form.Seen = {{"2xB", "8xRS82"}, {"a.mis", "b.mis"}, 0, false};
                            }),
      Named<frmAddMap>("frmAddMap", session, parent,
                       [&session](frmAddMap& form) {
                         form.MapPath = "Mystery/load.ini";
                         form.From = CurrentMission(session).BaseName;
                       }),
      Named<frmBackups>(
          "frmBackups", session, parent,
          [&session](frmBackups& form) { form.MissionPath = CurrentMissionPath(session.Doc); }),
      Named<frmBrief>("frmBrief", session, parent,
                      [&session](frmBrief& form) {
                        form.BriefName = PropertiesPath(CurrentMissionPath(session.Doc));
                      }),
      Named<frmChanges>("frmChanges", session, parent,
                        [&session](frmChanges& form) {
                          form.MissionPath = CurrentMissionPath(session.Doc);
                          form.Choose = [](UntouchedLines) {};
                          form.Changed = [] {};
                        }),
      Named<frmChgAC>("frmChgAC", session, parent,
                      [&session](frmChgAC& form) {
                        form.ACName = CurrentFlight(session).Class;
                        form.Group = CurrentFlight(session).Name;
                      }),
      Named<frmCompare>("frmCompare", session, parent,
                        [&session](frmCompare& form) { CompareWithShadow(session, form); }),
      Named<frmDogFight>("frmDogFight", session, parent,
                         [&session](frmDogFight& form) {
                           ReadDogFight(session.Tables, session.Services);
                           form.Idx = session.Doc.CurMission;
                         }),
      Named<frmFind>("frmFind", session, parent, [](frmFind&) {}),
      Named<frmCam>("frmCam", session, parent,
                    [](frmCam& form) {
                      form.Report = {
                          {{"3 squadrons, all known to the game", ""},
                           {"Aircraft or loadouts that the game may not have", "The Ju 288"},
                           {"Kuban", ""}}};
                    }),
      Check(session, parent),
      EditMany(session, parent),
      Lists(session, parent),
      Named<frmPrefs>("frmPrefs", session, parent,
                      [&session](frmPrefs& form) {
                        form.NamesText = [] { return NamesText({}, {}); };
                        form.GamePath = session.Doc.GamePath;
                        form.Backup = session.Prefs.bBackup;
                        form.BackupsKept = session.Prefs.BackupsKept;
                        form.StoreDays = session.Prefs.StoreDays;
                        form.StoreMegabytes = session.Prefs.StoreMegabytes;
                        form.ForeColor = session.Prefs.ForeColor;
                        form.BackColor = session.Prefs.BackColor;
                        form.DesktopColors = session.Prefs.bDesktopColors;
                      }),
      Named<frmSkins>("frmSkins", session, parent,
                      [&session](frmSkins& form) { form.Plane = CurrentFlight(session).Class; }),
      Named<frmStatic>("frmStatic", session, parent, [](frmStatic&) {}),
      Named<frmWP>("frmWP", session, parent, [](frmWP&) {}),
      Named<frmWPEdit>(
          "frmWPEdit", session, parent,
          [&session](frmWPEdit& form) { form.AirCraftType = CurrentFlight(session).Class; }),
      View(session, parent),
  };
}

}  // namespace rws
