#include "tools/frmSkins.h"

#include <algorithm>

#include "controls/list_colors.h"
#include "platform/form_placement.h"
#include "platform/images.h"
#include "platform/qt_text.h"
#include "services/notice.h"
#include "services/paths.h"
#include "services/pickers.h"
#include "services/setting_values.h"
#include "tools/logic/skin_images.h"

namespace rws {

namespace {

/** The only row of an aircraft without schemes. */
constexpr const char* kNone = "None";

}  // namespace

frmSkins::frmSkins(Session& session, QWidget* parent)
    : Dialog(session.Services, "frmSkins", parent), session_(session) {
  Build();
  Connect();
}

void frmSkins::Connect() {
  // Choosing the row that is shown counts as well: it brings the linked image back.
  On(cboPlanes, &QComboBox::activated, "cboPlanes_Click", [this] {
    if (MayLeaveNotesFor(0)) PlaneChosen();
  });
  On(cboSkins, &QComboBox::activated, "cboSkins_Click", [this] {
    if (MayLeaveNotesFor(cboSkins->currentIndex())) ShowScheme();
  });
  for (std::size_t i = 0; i < cmd.size(); ++i)
    On(cmd[i], &QPushButton::clicked, "cmd_Click", [this, i] { Press(i); });
}

void frmSkins::LoadForm() {
  Load(
      "Form_Load", [&] { LoadFormPos(services_, *this); },
      [&] { ApplyListColors(*this, session_.Prefs); }, [&] { FillPlanes(); });
  cboPlanes->setFocus();
}

void frmSkins::done(int result) {
  LogAndLeave(services_, "Form_Unload", [&] { SaveFormPos(services_, *this); });
  Dialog::done(result);
}

void frmSkins::FillPlanes() {
  const auto& planes = session_.Tables.Aircraft;
  QStringList names;
  for (const auto& plane : planes) names << FromBytes(services_.Page, plane.Name);
  cboPlanes->Fill(names);
  const auto row = std::find_if(planes.begin(), planes.end(),
                                [this](const Aircraft& plane) { return plane.Class == Plane; });
  if (row == planes.end()) return RefreshPanels();
  cboPlanes->SelectRow(static_cast<int>(row - planes.begin()));
  PlaneChosen();
}

bool frmSkins::HoldsUnstored() const {
  for (std::size_t i = 0; i < txt.size(); ++i)
    if (txt[i]->text() != shown_[i]) return true;
  return false;
}

bool frmSkins::MayLeaveNotesFor(int scheme) {
  const bool same = cboPlanes->currentIndex() == planeRow_ && scheme == schemeRow_;
  if (same || MayDrop()) return true;
  cboPlanes->setCurrentIndex(planeRow_);
  cboSkins->setCurrentIndex(schemeRow_);
  return false;
}

void frmSkins::PlaneChosen() {
  imgSkin->Clear();
  LogAndLeave(services_, "LoadPlaneSkinList", [&] { LoadPlaneSkinList(); });
}

void frmSkins::LoadPlaneSkinList() {
  const Aircraft& plane = At(session_.Tables.Aircraft, cboPlanes->currentIndex());
  FillSkins(ListSchemes(session_.Tables, plane.Class));
}

void frmSkins::FillSkins(const SchemeList& schemes) {
  schemes_ = schemes;
  const bool none = schemes.Names.empty();
  if (none) schemes_.Names = {kNone};
  QStringList names;
  for (const auto& name : schemes_.Names) names << FromPath(name);
  cboSkins->Fill(names);
  cboSkins->SelectRow(0);
  if (!none) return ShowScheme();
  imgPic->Clear();
  RefreshPanels();
}

std::string frmSkins::Scheme() const {
  const int row = cboSkins->currentIndex();
  return row < 0 ? "" : At(schemes_.Names, row);
}

std::string frmSkins::Target() const {
  const std::string& images = session_.Doc.ImagesPath;
  return images.empty() ? "" : LinkTarget(images, Scheme());
}

void frmSkins::ShowScheme() {
  const FileSystem& files = services_.Files;
  const std::string skin = BuildPath(schemes_.Folder, Scheme() + ".bmp");
  // Without a bitmap of its own the one on show stays, on purpose.
  if (!schemes_.Folder.empty() && files.FileExists(skin)) ShowPicture(*imgSkin, skin);
  imgPic->Clear();
  if (files.FileExists(Target())) ShowPicture(*imgPic, Target());
  RefreshPanels();
}

void frmSkins::ShowPicture(PictureBox& box, const std::string& path) {
  box.Clear();
  NoticeAndLeave(services_, [&] { box.Show(ReadPicture(services_.Files, path), path); });
}

void frmSkins::RefreshPanels() {
  planeRow_ = cboPlanes->currentIndex();
  schemeRow_ = cboSkins->currentIndex();
  const std::string scheme = Scheme(), file = NotesFile();
  const bool picture = !imgPic->IsEmpty() && !scheme.empty() && !file.empty();
  const bool linkable = picture && !services_.Files.FileExists(Target());
  lbl[0]->setEnabled(linkable);
  cmd[kLink]->setEnabled(linkable);
  fraClear->setEnabled(picture);
  fraInfo->setEnabled(picture);
  if (scheme != SkinSection || file != SkinIniFile)
    for (std::size_t i = 0; i < txt.size(); ++i) ShowNote(i, QString());
  if (picture) ShowNotes(scheme, file);
}

std::string frmSkins::NotesFile() const {
  const int plane = cboPlanes->currentIndex();
  const std::string& images = session_.Doc.ImagesPath;
  if (plane < 0 || images.empty()) return "";
  return SideFile(services_, images, At(session_.Tables.Aircraft, plane).Name);
}

void frmSkins::ShowNotes(const std::string& scheme, const std::string& file) {
  SkinSection = scheme;
  SkinIniFile = file;
  SkinNotes notes;
  // Notes that could not be read must not be written over.
  fraInfo->setEnabled(
      NoticeAndLeave(services_, [&] { notes = ReadSkinNotes(services_, file, scheme); }));
  for (std::size_t i = 0; i < txt.size(); ++i) {
    // What is typed and not stored yet outlives the other buttons.
    if (txt[i]->text() == shown_[i]) ShowNote(i, FromBytes(services_.Page, notes[i]));
  }
}

void frmSkins::ShowNote(std::size_t box, const QString& text) {
  txt[box]->setText(text);
  txt[box]->setCursorPosition(0);
  shown_[box] = txt[box]->text();
}

void frmSkins::Press(std::size_t button) {
  if (button == kExit) return reject();
  NoticeAndLeave(services_, [&] { Act(button); });
  NoticeAndLeave(services_, [&] { RefreshPanels(); });
}

void frmSkins::Act(std::size_t button) {
  switch (button) {
    case kLink:
      return Link();
    case kLocate:
      return Locate();
    case kClear:
      return Clear();
    case kUpdate:
      return Update();
    default:
      return ShowHelp();
  }
}

void frmSkins::Locate() {
  const std::string path =
      GetFile(services_, "Locate aircarft image", "Image jpg|*.jpg", &setting::LastImagePath);
  imgPic->Clear();
  if (!path.empty()) ShowPicture(*imgPic, path);
}

void frmSkins::Link() {
  LinkImage(services_, imgPic->Path(), Target());
  // From here on the image on show is the linked one, which Clear takes away.
  imgPic->SetPath(Target());
}

void frmSkins::Clear() {
  // The linked image, also when another was located meanwhile: that one is the user's own.
  if (services_.Files.FileExists(Target())) ClearLink(services_, Target(), imgPic->Path());
  imgPic->Clear();
}

void frmSkins::Update() {
  SkinNotes notes;
  for (std::size_t i = 0; i < txt.size(); ++i) notes[i] = ToBytes(services_.Page, txt[i]->text());
  SaveSkinNotes(services_, SkinIniFile, SkinSection, notes);
  for (std::size_t i = 0; i < txt.size(); ++i) shown_[i] = txt[i]->text();
}

}  // namespace rws
