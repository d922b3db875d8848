#include "app/all_forms.h"

#include "catalogues/dogfight.h"
#include "editors/frmBrief.h"
#include "editors/frmChgAC.h"
#include "editors/frmDogFight.h"
#include "editors/frmStatic.h"
#include "editors/frmWP.h"
#include "editors/frmWPEdit.h"
#include "services/faults.h"
#include "services/forms/frmCam.h"
#include "services/forms/frmPrefs.h"
#include "tools/frmSkins.h"
#include "tools/frmView.h"
#include "tools/logic/mission_files.h"
#include "tools/logic/mission_menu.h"

namespace rws {

namespace {

/** Makes a form, sets what its caller sets, and loads it. */
template <class Form, class Prepare>
NamedForm Named(const char* name, WindowContext context, QWidget* parent, Prepare prepare) {
  return {name, [=]() -> std::unique_ptr<QWidget> {
            auto form = std::make_unique<Form>(context, parent);
            prepare(*form);
            form->LoadForm();
            return form;
          }};
}

const Flight& CurrentFlight(const WindowContext& context) {
  const Mission& mission = At(context.Doc.Missions, context.Doc.CurMission);
  return At(mission.Flights, context.Doc.CurFlight);
}

NamedForm View(WindowContext context, QWidget* parent) {
  return {"frmView", [=]() -> std::unique_ptr<QWidget> {
            auto form = std::make_unique<frmView>(context.Services, parent);
            const SkinFolder& skins = At(context.Tables.Skins, 0);
            form->FileName = skins.Path + "/" + At(skins.Files, 1);
            form->LoadForm();
            return form;
          }};
}

}  // namespace

std::vector<NamedForm> AllForms(WindowContext context, QWidget* parent) {
  return {
      Named<frmBrief>("frmBrief", context, parent,
                      [=](frmBrief& form) {
                        form.BriefName = PropertiesPath(CurrentMissionPath(context.Doc));
                      }),
      Named<frmChgAC>("frmChgAC", context, parent,
                      [=](frmChgAC& form) {
                        form.ACName = CurrentFlight(context).Class;
                        form.Group = CurrentFlight(context).Name;
                      }),
      Named<frmDogFight>("frmDogFight", context, parent,
                         [=](frmDogFight& form) {
                           ReadDogFight(context.Tables, context.Services);
                           form.Idx = context.Doc.CurMission;
                         }),
      Named<frmCam>("frmCam", context, parent, [](frmCam&) {}),
      Named<frmPrefs>("frmPrefs", context, parent,
                      [=](frmPrefs& form) {
                        form.GamePath = context.Doc.GamePath;
                        form.Backup = context.Doc.bBackup;
                        form.ForeColor = context.Run.ForeColor;
                        form.BackColor = context.Run.BackColor;
                      }),
      Named<frmSkins>("frmSkins", context, parent,
                      [=](frmSkins& form) { form.Plane = CurrentFlight(context).Class; }),
      Named<frmStatic>("frmStatic", context, parent, [](frmStatic&) {}),
      Named<frmWP>("frmWP", context, parent, [](frmWP&) {}),
      Named<frmWPEdit>("frmWPEdit", context, parent,
                       [=](frmWPEdit& form) { form.AirCraftType = CurrentFlight(context).Class; }),
      View(context, parent),
  };
}

}  // namespace rws
