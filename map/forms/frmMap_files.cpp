#include "library/briefings.h"
#include "map/forms/briefing_pdf.h"
#include "map/forms/frmMap.h"
#include "map/forms/frmMapPicture.h"
#include "map/forms/map_export.h"
#include "map/forms/map_picture_files.h"
#include "platform/qt_text.h"
#include "services/faults.h"
#include "services/paths.h"
#include "services/setting_values.h"
#include "services/trapped.h"
#include "session/current.h"

namespace rws {

void frmMap::ConnectFiles() {
  const auto paint = [this](QPainter& painter, QSize size) {
    PaintInto(painter, size, view->Shown().Dark);
  };
  const auto png = [this, paint](PictureSize size) {
    SaveAs("Save the map as PNG", "PNG|*.png", [=, this](const std::string& path) {
      SavePng(session_.Services, path, paint, view->size(), size);
    });
  };
  OnClick(mnuPng, [png] { png(PictureSize::AsShown); });
  OnClick(mnuPngLarge, [png] { png(PictureSize::Wide); });
  OnClick(mnuSvg, [this, paint] {
    SaveAs("Save the map as SVG", "SVG|*.svg", [=, this](const std::string& path) {
      SaveSvg(session_.Services, path, paint, view->size(), windowTitle());
    });
  });
  OnClick(mnuPdf, [this] {
    SaveAs("Save a briefing as PDF", "PDF|*.pdf",
           [this](const std::string& path) { SaveBriefing(path); });
  });
  OnClick(mnuCopy, [this, paint] {
    const auto copy = [&] { CopyPicture(paint, view->size()); };
    if (TellFault(copy)) Say(tr("The picture is on the clipboard."));
  });
  OnClick(mnuPicture, [this] { ClickPicture(); });
  OnClick(mnuNoPicture, [this] {
    KeepPictures(
        [this](const std::string& text) { return WithoutMapPicture(text, model_.MapPath); });
  });
}

/** The map as it is seen, at any size: as much of it as fits. */
void frmMap::PaintInto(QPainter& painter, QSize size, bool dark) const {
  MapShown shown = view->Shown();
  shown.Dark = dark;
  const double scale =
      std::min(size.width() / shown.Projection.Width, size.height() / shown.Projection.Height);
  shown.Projection.MetresPerPixel /= scale;
  shown.Projection.Width = size.width();
  shown.Projection.Height = size.height();
  PaintMap(painter, shown);
  if (mnuLegend->isChecked())
    PaintLegend(painter, LegendOf(model_, shown.Layers), QRectF(QPointF(), QSizeF(size)),
                shown.Dark);
}

std::string frmMap::BaseName() const { return GetBaseName(path_); }

void frmMap::SaveAs(const char* what, const std::string& filter,
                    const std::function<void(const std::string&)>& save) {
  const Services& services = session_.Services;
  const std::string folder = ReadSetting(services.Settings, setting::MapExportPath);
  const std::string path = AskAndSave(services, what, BaseName(), filter, folder, save);
  if (path.empty()) return;
  WriteSetting(services.Settings, setting::MapExportPath, GetParentFolderName(path));
  Say(tr("Written: %1").arg(FromPath(path)));
}

/** The map, the waypoints of the selected flight, or of all without one, and the briefing. */
void frmMap::SaveBriefing(const std::string& path) {
  const Services& services = session_.Services;
  BriefingPages pages;
  const auto briefing = BriefingOf(services.Files, path_);
  const auto decoded = [&](const std::string& bytes) { return FromBytes(services.Page, bytes); };
  pages.Title = briefing ? decoded(briefing->Name).trimmed() : QString();
  if (pages.Title.isEmpty()) pages.Title = FromPath(BaseName());
  pages.Subtitle = decoded(model_.MapName.empty() ? model_.MapPath : model_.MapName) +
                   QStringLiteral(", ") + QString::fromStdString(TimeOfDay(model_.Time, 0)).left(5);
  // Paper is light, whatever the screen is.
  pages.Map = [this](QPainter& painter, QSize size) { PaintInto(painter, size, false); };
  const MapTextSources sources = Sources();
  for (std::size_t i = 0; i < model_.Scene.Routes.size(); ++i)
    if (!Route() || i == *view->Shown().Selection.Route)
      pages.Tables.push_back(WaypointTable(sources, i));
  if (briefing)
    pages.Text = decoded(briefing->Short).trimmed() + QStringLiteral("\n\n") +
                 decoded(briefing->Description).trimmed();
  SaveBriefingPdf(services, path, pages);
}

bool frmMap::TellFault(const std::function<void()>& step) {
  return Trap(step, [&](const Fault& caught) {
    session_.Services.Ask.MsgBox(caught.Text, Buttons::Ok, Icon::Exclamation, kProgramTitle);
  });
}

/** Changes the list of pictures, and shows what it has for this map. A list that cannot be written
    stays as it is, and the user is told. */
void frmMap::KeepPictures(const std::function<std::string(const std::string& text)>& change) {
  TellFault([&] { StoreMapPictures(session_.Services, change); });
  pictureOf_.clear();
  TakePicture();
}

/** Puts the user's picture of the map on show under it. One that cannot be read is told of once. */
void frmMap::TakePicture() {
  const std::string map = model_.MapPath;
  if (map == pictureOf_) return;
  pictureOf_ = map;
  underlay_ = {};
  std::optional<MapPicture> stored;
  Trap([&] { stored = PictureOfMap(ReadMapPictures(session_.Services), map); },
       [&](const Fault& caught) { Say(FromPath(caught.Text)); });
  mnuNoPicture->setEnabled(stored.has_value());
  if (stored) {
    QString fault;
    underlay_.Picture = ReadMapPicture(session_.Services, stored->File, fault);
    underlay_.Place = stored->Place;
    underlay_.Opacity = stored->Opacity;
    if (underlay_.Picture.isNull()) Say(fault);
  }
  view->SetUnderlay(underlay_.Picture.isNull() ? nullptr : &underlay_);
}

void frmMap::ClickPicture() {
  const Services& services = session_.Services;
  const std::string map = model_.MapPath;
  frmMapPicture form(services, this);
  form.Map = FromBytes(services.Page, model_.MapName.empty() ? map : model_.MapName);
  if (!TellFault([&] { form.Picture = PictureOfMap(ReadMapPictures(services), map); })) return;
  form.LoadForm();
  ShowDialog(form);
  if (form.result() != QDialog::Accepted || !form.Picture) return;
  form.Picture->Map = map;
  KeepPictures([&](const std::string& text) { return WithMapPicture(text, *form.Picture); });
}

}  // namespace rws
