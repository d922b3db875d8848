#include "mainwindow/plane_panels.h"

#include <QGridLayout>
#include <algorithm>

#include "platform/qt_text.h"
#include "services/error_log.h"
#include "services/paths.h"
#include "session/doors.h"
#include "session/loading.h"

namespace rws {

std::optional<std::string> SpelledBaseName(const CodePage& page, const std::string& file) {
  const std::string name = GetBaseName(file);
  auto bytes = page.FromUtf8(name);
  // A name that is no UTF-8 would come back as another file's.
  if (bytes && page.ToUtf8(*bytes) != name) bytes.reset();
  return bytes;
}

QStringList SkinCaptions(const CodePage& page, const std::vector<std::string>& files) {
  QStringList captions;
  for (const auto& file : files)
    if (const auto name = SpelledBaseName(page, file)) captions << FromBytes(page, *name);
  return captions;
}

PlanePanels::PlanePanels(Session& session, QWidget* parent) : QWidget(parent), session_(session) {
  auto* grid = new QGridLayout(this);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->setSpacing(6);
  for (int i = 0; i < 4; ++i) {
    fraPlane[static_cast<std::size_t>(i)] = new PlanePanel(session, *this, i);
    grid->addWidget(fraPlane[static_cast<std::size_t>(i)], i / 2, i % 2);
  }
  grid->setColumnStretch(0, 1);
  grid->setColumnStretch(1, 1);
  ClearFrames(true);
}

void PlanePanels::ClearFrames(bool noHighlight) {
  const Showing showing(session_);
  LogAndLeave(session_.Services, "ClearFrames", [&] {
    const Loading loading(session_.Doc);
    for (auto* panel : fraPlane) panel->Clear(noHighlight);
  });
}

void PlanePanels::SetPlaneFrame(bool enabled, int panel, bool noHighlight) {
  ResumeNext([&] { At(fraPlane, panel)->SetFrame(enabled, noHighlight); });
}

void PlanePanels::ChkLabels(int panel, bool active) {
  LogAndLeave(session_.Services, "ChkLabels", [&] { At(fraPlane, panel)->ChkLabels(active); });
}

void PlanePanels::FillPanel(int panel) { At(fraPlane, panel)->Fill(); }

void PlanePanels::FillFixedLists() {
  for (auto* panel : fraPlane) panel->FillFixedLists();
}

void PlanePanels::DisableAll() {
  for (auto* panel : fraPlane) panel->DisableAll();
}

bool PlanePanels::IsAnyPlayerChecked() const {
  return std::any_of(fraPlane.begin(), fraPlane.end(),
                     [](const PlanePanel* panel) { return panel->chkPlayer->isChecked(); });
}

std::ptrdiff_t PlanePanels::SkinRow(const std::string& folder) const {
  const auto& skins = session_.Tables.Skins;
  const std::string wanted = FoldName(session_.Services.Page.ToUtf8(folder));
  const auto found = std::find_if(skins.begin(), skins.end(), [&](const SkinFolder& row) {
    return FoldName(row.Folder) == wanted;
  });
  return found == skins.end() ? -1 : found - skins.begin();
}

void PlanePanels::LoadSkinList(const std::string& folder, int panel) {
  const Showing showing(session_);
  const Loading loading(session_.Doc);
  const std::ptrdiff_t row = SkinRow(folder);
  const SkinFolder* skins = row < 0 ? nullptr : &At(session_.Tables.Skins, row);
  ResumeNext([&] {
    if (panel == -1) return;
    const auto rows = skins ? CaptionsOf(*skins) : QStringList{QStringLiteral("default")};
    // Without a folder of its own, nothing is copied into another aircraft's.
    At(fraPlane, panel)->FillSkins(rows, skins ? skins->Path : "");
  });
  // Panels 1 to 3 leave the menu as panel 0 has built it, unless there is no folder.
  if (!skins || panel == 0 || panel == -1) FillMenu(skins);
  ResumeNext([&] {
    if (panel != -1) At(fraPlane, panel)->cboAPSkin->SelectRow(0);
  });
}

void PlanePanels::OfferNewSkin(const std::string& folder, int panel) {
  LoadSkinList(folder, panel);
  if (panel != 0) LoadSkinList(folder, -1);
  const std::ptrdiff_t row = SkinRow(folder);
  if (row < 0) return;
  const SkinFolder& skins = At(session_.Tables.Skins, row);
  for (int other = 0; other < std::ssize(fraPlane); ++other)
    if (other != panel) At(fraPlane, other)->OfferSkins(CaptionsOf(skins), skins.Path);
}

const QStringList& PlanePanels::CaptionsOf(const SkinFolder& skins) {
  // Four panels in a row ask for the same, and a flight is mostly followed by one like it.
  if (captionFiles_ != skins.Files) {
    captions_ = SkinCaptions(session_.Services.Page, skins.Files);
    captionFiles_ = skins.Files;
  }
  return captions_;
}

void PlanePanels::FillMenu(const SkinFolder* skins) {
  if (!mnuSkin) return;
  auto entries = mnuSkin->actions();
  qsizetype used = 0;
  // Entries are used again: the aircraft is mostly the one before, and its skins are many.
  const auto next = [&]() -> QAction* {
    if (used == entries.size()) entries << mnuSkin->addAction(QString());
    entries[used]->setObjectName(QStringLiteral("mnuSkin(%1)").arg(used));
    return entries[used++];
  };
  if (!skins) next()->setText(QStringLiteral("default"));
  for (const auto& file : skins ? skins->Files : std::vector<std::string>()) {
    const auto name = SpelledBaseName(session_.Services.Page, file);
    if (!name) continue;
    QAction* entry = next();
    entry->setText(FromBytes(session_.Services.Page, *name).replace(u'&', QStringLiteral("&&")));
    entry->setData(FromPath(BuildPath(skins->Path, file)));
  }
  for (; used < entries.size(); ++used) {
    mnuSkin->removeAction(entries[used]);
    // This may run in the entry's own handler.
    entries[used]->deleteLater();
  }
}

}  // namespace rws
