#include "catalogues/aircraft.h"
#include "catalogues/paint_schemes.h"
#include "mainwindow/plane_panel.h"
#include "mainwindow/plane_panels.h"
#include "platform/qt_text.h"
#include "services/error_log.h"
#include "services/paths.h"
#include "services/pickers.h"
#include "services/text.h"
#include "session/current.h"
#include "session/doors.h"

namespace rws {

void PlanePanel::SkinLabelClicked(Qt::MouseButton button) {
  if (button == Qt::RightButton) return ChooseSkin();
  if (lbl2->Color() == LabelColor::Blue)
    ViewOrRemove(SkinImage(), &PlaneSlot::Skin);
  else if (lbl2->Color() == LabelColor::Red)
    TellMissing("Plane skin ", Slot().Skin);
}

std::string PlanePanel::SkinImage() {
  const Document& doc = session_.Doc;
  const std::string image =
      BuildPath(doc.ImagesPath, ToPath(cboAPSkin->Value() + QStringLiteral(".jpg")));
  if (!doc.ImagesPath.empty() && session_.Services.Files.FileExists(image)) return image;
  if (SkinDirectory.empty()) return "";
  return BuildPath(SkinDirectory, session_.Services.Page.ToUtf8(Slot().Skin));
}

void PlanePanel::FileLabelClicked(LabelButton* label, Field field, const char* folder,
                                  const char* what) {
  if (label->Color() == LabelColor::Red) return TellMissing(what, Slot().*field);
  if (label->Color() != LabelColor::Blue) return;
  ViewOrRemove(BuildPath(BuildPath(session_.Doc.GamePath, folder),
                         session_.Services.Page.ToUtf8(Slot().*field)),
               field);
}

void PlanePanel::ViewOrRemove(const std::string& path, Field field) {
  const Services& services = session_.Services;
  if (!path.empty() && services.Files.FileExists(path)) {
    const std::string file = services.Files.Resolve(path);
    const std::string caption = kProgramTitle + std::string(" - ") + GetBaseName(file);
    Q_EMIT all_.ImageWanted(file, FromPath(caption));
    return;
  }
  services.Ask.MsgBox("The file is not valid and it's reference will be removed.", Buttons::Ok,
                      Icon::Exclamation, kProgramTitle);
  (Slot().*field).clear();
  Refill();
  SetModify(session_);
}

void PlanePanel::TellMissing(const char* what, const std::string& file) {
  session_.Services.Ask.MsgBox(what + session_.Services.Page.ToUtf8(file) + " doesn't exist.",
                               Buttons::Ok, Icon::None, kProgramTitle);
}

void PlanePanel::ChooseSkin() {
  const Services& services = session_.Services;
  const auto tell = [&](const std::string& text) {
    services.Ask.MsgBox(text, Buttons::Ok, Icon::Information, kProgramTitle);
  };
  if (SkinDirectory.empty()) return tell("The game has no skin directory for this aircraft.");
  WriteSetting(services.Settings, setting::SkinDirTemp, SkinDirectory);
  const std::string path =
      GetFile(services, "Plane Skins", "Skins (*.bmp)|*.bmp", &setting::SkinDirTemp);
  if (path.empty()) return;
  const std::string file = GetFileName(path);
  const auto name = SpelledBaseName(services.Page, file);
  if (!name || !EqualNoCase(file.substr(GetBaseName(file).size()), ".bmp"))
    return tell("\"" + file + "\" cannot be a skin: its name must end in \".bmp\" and have only " +
                "characters that a mission file can hold.");
  if (!CopySkin(path)) return;
  if (!cboAPSkin->SelectText(FromBytes(services.Page, *name))) return Refill();
  // A file of this name stands for the default; its row may have been selected already.
  if (cboAPSkin->currentIndex() == 0) SkinChosen(cboAPSkin, &PlaneSlot::Skin, lbl2);
}

bool PlanePanel::CopySkin(const std::string& path) {
  const Services& services = session_.Services;
  const std::string target = BuildPath(SkinDirectory, GetFileName(path));
  const bool isThere = services.Files.IsSameFile(GetParentFolderName(path), SkinDirectory) ||
                       services.Files.IsSameFile(path, target);
  if (isThere && cboAPSkin->HasText(FromPath(GetBaseName(path)))) return true;
  const bool copied =
      isThere || Trap([&] { services.Files.CopyFile(path, target); },
                      [&](const Fault& fault) {
                        LogError(services, fault.Text, "lbl2_MouseUp");
                        services.Ask.MsgBox(fault.Text, Buttons::Ok, Icon::Critical, kProgramTitle);
                      });
  if (!copied) return false;
  const std::string folder = GetPlaneFolder(session_.Tables, CurrentFlight(session_).Class);
  ReLoadSinglePlaneSkin(session_.Tables, services, all_.SkinRow(folder));
  all_.LoadSkinList(folder, plane_);
  return true;
}

}  // namespace rws
