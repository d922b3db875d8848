#pragma once

#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <array>
#include <string>

#include "controls/dialog.h"
#include "controls/drop_down.h"
#include "controls/picture_box.h"
#include "session/session.h"
#include "tools/logic/skin_notes.h"

namespace rws {

/** Browses the paint schemes of the game, links an image to a scheme and keeps notes on it. Changes
    no mission. The caller sets the aircraft, loads and shows the form. A button that fails tells it
    in the status bar. */
class frmSkins : public Dialog {
  Q_OBJECT

 public:
  frmSkins(Session& session, QWidget* parent);

  void LoadForm();
  /** Stores the place, however the form is closed. */
  void done(int result) override;

  /** The class of the aircraft shown first; an unknown one shows none. */
  std::string Plane;
  /** The scheme whose notes are on show, in the system's own spelling. */
  std::string SkinSection;
  /** Full path of the file with the notes. */
  std::string SkinIniFile;

  QGroupBox *fraSkins, *fraImage, *fraImgOpt, *fraClear, *fraInfo;
  DropDown *cboPlanes, *cboSkins;
  /** The scheme's bitmap, and the image that is linked or to be linked. */
  PictureBox *imgSkin, *imgPic;
  /** The label of the Link button; other labels have no index. */
  std::array<QLabel*, 1> lbl;
  enum Note : std::size_t { kSkinner, kCountry, kComments };
  std::array<QLineEdit*, 3> txt;
  enum Command : std::size_t { kLink, kLocate, kExit, kClear, kUpdate, kHelp };
  std::array<QPushButton*, 6> cmd;

 protected:
  /** Notes were typed and not stored. */
  bool HoldsUnstored() const override;

 private:
  void Build();
  void BuildSkins();
  void BuildImages();
  void BuildInfo();
  void BuildButtons();
  void AddNote(QGridLayout& rows, Note note, const QString& caption, const QString& name,
               const QString& toolTip);
  void PlaceControls();
  void Connect();

  void FillPlanes();
  void PlaneChosen();
  /** Asks before another aircraft or the row of another scheme drops notes. False when they are to
      be kept; both lists then go back to their rows. */
  bool MayLeaveNotesFor(int scheme);
  void LoadPlaneSkinList();
  void FillSkins(const SchemeList& schemes);
  void ShowScheme();
  void ShowPicture(PictureBox& box, const std::string& path);
  void RefreshPanels();
  void ShowNotes(const std::string& scheme, const std::string& file);
  void ShowNote(std::size_t box, const QString& text);
  void Press(std::size_t button);
  void Act(std::size_t button);
  void Locate();
  void Link();
  void Clear();
  void Update();
  /** The scheme chosen, "None" among them; "" without one. */
  std::string Scheme() const;
  /** Where the image that is linked to the scheme lies. */
  std::string Target() const;
  /** Path of the file with the aircraft's notes; "" without an aircraft. */
  std::string NotesFile() const;

  Session& session_;
  /** `cboSkins` in the system's own spelling, and the folder of the bitmaps. */
  SchemeList schemes_;
  /** The rows that are on show, of which another was chosen meanwhile. */
  int planeRow_ = -1, schemeRow_ = -1;
  /** The notes as they were shown. */
  std::array<QString, 3> shown_;
};

}  // namespace rws
