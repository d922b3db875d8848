#pragma once

#include <QLabel>
#include <array>

#include "controls/check_box.h"
#include "controls/drop_down.h"
#include "controls/edit_drop_down.h"
#include "controls/group_frame.h"
#include "controls/label_button.h"
#include "session/session.h"

namespace rws {

class PlanePanels;

/** The frame of one plane of the current flight, counted from 0: what this plane carries and
    whether the player flies it. A label that is blue has a file to view, a red one names a file
    that is not there. */
class PlanePanel : public GroupFrame {
  Q_OBJECT

 public:
  PlanePanel(Session& session, PlanePanels& all, int plane);

  /** Enables the frame as far as the flight allows and marks the player's plane, also in a disabled
    frame, unless `noHighlight` is set. */
  void SetFrame(bool enabled, bool noHighlight);
  /** Empties the frame. */
  void Clear(bool noHighlight);
  /** Shows the plane of the current flight. */
  void Fill();
  /** Colours the labels by what the lists show; all black when not `active`. */
  void ChkLabels(bool active);
  /** Fills the lists that are the same for all planes. */
  void FillFixedLists();
  /** Fills the list of skins, which lie in `folder`; "" when the aircraft has none. */
  void FillSkins(const QStringList& rows, const std::string& folder);
  /** Fills that list again; the panel goes on showing what it showed, but finds a file that was
      missing until now. */
  void OfferSkins(const QStringList& rows, const std::string& folder);
  /** Disables every control, for a selection of several flights. */
  void DisableAll();

  bool IsHighlighted() const { return highlighted_; }
  bool IsMarkRed() const { return markRed_; }

  QLabel* lbl1;
  LabelButton *lbl2, *lbl3, *lbl4;
  DropDown* cboSL;
  EditDropDown *cboAPSkin, *cboPSkin, *cboPNoseArt;
  CheckBox *chkMark = nullptr, *chkPlayer;
  QLabel* img;
  /** The directory of the skins: the tag of `cboAPSkin`. */
  std::string SkinDirectory;

 protected:
  void changeEvent(QEvent* event) override;
  bool event(QEvent* event) override;

 private:
  /** What a plane wears, as its list, its label and its field have it. */
  enum Paint : std::size_t { kSkin, kPilot, kNoseArt };

  void Build();
  void BuildControls();
  void PlaceControls();
  void NameControls();
  void Connect();
  void ConnectPaint(Paint paint);

  PlaneSlot& Slot();
  PlaneSlot& ShadowSlot();
  bool CountryIsUsa();
  std::array<LabelButton*, 3> Labels() const { return {lbl2, lbl3, lbl4}; }
  std::array<EditDropDown*, 3> Lists() const { return {cboAPSkin, cboPSkin, cboPNoseArt}; }

  void ShowSkill();
  bool SelectFile(EditDropDown* list, const std::string& file);
  void TurnRed(LabelButton* label, EditDropDown* list);
  void FillNoseArt(bool found);
  void ColorLabel(LabelButton* label, LabelColor color);
  void ColorMark(bool red);
  void Highlight(bool on);

  std::string& File(Paint paint);
  std::string ChosenFile(Paint paint) const;
  void ClearRed(Paint paint);
  void PaintChosen(Paint paint);
  void NoseArtTyped();
  void SkillChosen(int row);
  void MarkClicked();
  void PlayerClicked();
  /** Refills all panels; the control that has the focus keeps it. */
  void Refill();

  void LabelClicked(Paint paint, Qt::MouseButton button);
  std::string SkinImage();
  void ViewOrRemove(const std::string& path, Paint paint);
  void ChooseSkin();
  bool CopySkin(const std::string& path);

  Session& session_;
  PlanePanels& all_;
  int plane_;
  bool highlighted_ = false, markRed_ = false;
};

}  // namespace rws
