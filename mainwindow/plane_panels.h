#pragma once

#include <QMenu>
#include <QWidget>
#include <array>
#include <cstddef>
#include <optional>

#include "mainwindow/plane_panel.h"
#include "session/session.h"

namespace rws {

/** The four frames of the planes of the current flight. Panels are counted from 0. */
class PlanePanels : public QWidget {
  Q_OBJECT

 public:
  PlanePanels(Session& session, QWidget* parent);

  /** Empties and disables all frames; the player's keeps its mark unless `noHighlight` is set. */
  void ClearFrames(bool noHighlight);
  void SetPlaneFrame(bool enabled, int panel, bool noHighlight);
  /** Colours the labels of a panel by what its lists show; all black when not `active`. */
  void ChkLabels(int panel, bool active);
  /** Offers the skins of an aircraft's folder in a panel and, for panel 0 and -1, in the skin menu;
    -1 fills the menu alone. */
  void LoadSkinList(const std::string& folder, int panel);
  /** Offers a skin that is new in an aircraft's folder: in a panel, whose list then stands on its
      first row, in the other panels, which show what they showed, and in the skin menu. */
  void OfferNewSkin(const std::string& folder, int panel);
  /** Shows one plane of the current flight; a panel above 3 is a fault. */
  void FillPanel(int panel);
  /** Fills the lists that are the same for all flights; leaves nothing selected. */
  void FillFixedLists();
  /** Disables every control, for a selection of several flights. */
  void DisableAll();

  /** Row of `Skins` with an aircraft's folder, in any letter case; -1 when there is none. */
  std::ptrdiff_t SkinRow(const std::string& folder) const;
  bool IsAnyPlayerChecked() const;

  std::array<PlanePanel*, 4> fraPlane;

  /** The menu that offers the skins of the aircraft: caption base name, data the full path. */
  QMenu* mnuSkin = nullptr;

 Q_SIGNALS:
  /** All that shows the planes of the current flight is to be filled again. */
  void PlanesChanged();
  /** Markings of the first plane. */
  void MarkingsShown(bool on);
  /** A picture is to be shown, modally. */
  void ImageWanted(const std::string& path, const QString& caption);

 private:
  void FillMenu(const SkinFolder* skins);
  const QStringList& CaptionsOf(const SkinFolder& skins);

  Session& session_;
  std::vector<std::string> captionFiles_;
  QStringList captions_;
};

/** What lists show of image files: their base names, without those that a mission cannot spell. */
QStringList SkinCaptions(const CodePage& page, const std::vector<std::string>& files);

/** The base name of an image in the encoding of missions, or nothing when it cannot be spelled. */
std::optional<std::string> SpelledBaseName(const CodePage& page, const std::string& file);

}  // namespace rws
