#include "catalogues/aircraft.h"
#include "catalogues/paint_schemes.h"
#include "mainwindow/logic/replaced_skin.h"
#include "mainwindow/plane_panel.h"
#include "mainwindow/plane_panels.h"
#include "platform/qt_text.h"
#include "services/error_log.h"
#include "services/paths.h"
#include "services/pickers.h"
#include "services/text.h"
#include "session/current.h"
#include "session/doors.h"
#include "session/journal.h"

namespace rws {

namespace {

constexpr EditKind kRemovals[] = {
    {"lbl2_MouseUp", "Plane skin"}, {"lbl3_Click", "Pilot skin"}, {"lbl4_Click", "Nose art"}};

}  // namespace

void PlanePanel::LabelClicked(Paint paint, Qt::MouseButton button) {
  if (paint == kSkin && button == Qt::RightButton) return ChooseSkin();
  if (paint != kSkin && button != Qt::LeftButton) return;
  const LabelColor color = Labels()[paint]->Color();
  if (color == LabelColor::Red) {
    constexpr const char* kWhat[] = {"Plane skin ", "Pilot skin ", "Nose Art "};
    const std::string file = session_.Services.Page.ToUtf8(File(paint));
    session_.Services.Ask.MsgBox(kWhat[paint] + file + " doesn't exist.", Buttons::Ok, Icon::None,
                                 kProgramTitle);
  }
  if (color != LabelColor::Blue) return;
  if (paint == kSkin) return ViewOrRemove(SkinImage(), paint);
  const char* folder = paint == kPilot ? "PaintSchemes\\Pilots" : "PaintSchemes\\Noseart";
  ViewOrRemove(BuildPath(BuildPath(session_.Doc.GamePath, folder),
                         session_.Services.Page.ToUtf8(File(paint))),
               paint);
}

std::string PlanePanel::SkinImage() {
  const Document& doc = session_.Doc;
  const std::string image =
      BuildPath(doc.ImagesPath, ToPath(cboAPSkin->Value() + QStringLiteral(".jpg")));
  if (!doc.ImagesPath.empty() && session_.Services.Files.FileExists(image)) return image;
  if (SkinDirectory.empty()) return "";
  return BuildPath(SkinDirectory, session_.Services.Page.ToUtf8(Slot().Skin));
}

void PlanePanel::ViewOrRemove(const std::string& path, Paint paint) {
  const Services& services = session_.Services;
  if (!path.empty() && services.Files.FileExists(path)) {
    const std::string file = services.Files.Resolve(path);
    const std::string caption = kProgramTitle + std::string(" - ") + GetBaseName(file);
    Q_EMIT all_.ImageWanted(file, FromPath(caption));
    return;
  }
  services.Ask.MsgBox("The file is not valid and it's reference will be removed.", Buttons::Ok,
                      Icon::Exclamation, kProgramTitle);
  Edit(session_, kRemovals[paint], [&] {
    File(paint).clear();
    Refill();
  });
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
  if (cboAPSkin->currentIndex() == 0) PaintChosen(kSkin);
}

bool PlanePanel::CopySkin(const std::string& path) {
  const Services& services = session_.Services;
  const std::string target = BuildPath(SkinDirectory, GetFileName(path));
  const bool isThere = services.Files.IsSameFile(GetParentFolderName(path), SkinDirectory) ||
                       services.Files.IsSameFile(path, target);
  if (isThere && cboAPSkin->HasText(FromPath(GetBaseName(path)))) return true;
  std::string kept;
  const auto copy = [&] {
    kept = KeepReplacedSkin(services, target);
    RecordFiles(session_, "Copy of skin " + GetBaseName(target),
                [&] { services.Files.CopyFile(path, target); });
  };
  const bool copied = isThere || Trap(copy, [&](const Fault& fault) {
                        LogError(services, fault.Text, "lbl2_MouseUp");
                        services.Ask.MsgBox(fault.Text, Buttons::Ok, Icon::Critical, kProgramTitle);
                      });
  if (!copied) return false;
  if (!kept.empty())
    services.Ask.Notice("\"" + GetFileName(target) +
                        "\" was replaced. The skin as it was before is kept as \"" + kept + "\".");
  const std::string folder = GetPlaneFolder(session_.Tables, CurrentFlight(session_).Class);
  ReLoadSinglePlaneSkin(session_.Tables, services, all_.SkinRow(folder));
  all_.OfferNewSkin(folder, plane_);
  return true;
}

}  // namespace rws
