#pragma once

#include <QAction>
#include <QGroupBox>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <array>
#include <functional>
#include <optional>
#include <string>

#include "controls/dialog.h"
#include "controls/text_box.h"
#include "mission/briefing_file.h"
#include "session/session.h"

namespace rws {

/** Edits the briefing of a mission: name, short description and main text. The caller sets the
    fields, loads and shows the form. Texts are in the encoding of mission text. */
class frmBrief : public Dialog {
  Q_OBJECT

 public:
  frmBrief(Session& session, QWidget* parent);

  /** Reads the briefing. One that cannot be read is told to the user and is not written over. */
  void LoadForm();
  /** Stores whether inserts get labels, however the form is closed. */
  void done(int result) override;

  /** Full path of the `.properties` file. */
  std::string BriefName;
  /** Saving does not ask for it, on purpose. */
  bool Backups = false;
  std::string MissionPath, Weather, Map;
  /** A clock text, "7:30". */
  std::string MisTime;
  /** Cloud height in metres. */
  std::string Clouds;
  /** Makes the report of the mission's aircraft. */
  std::function<std::string()> AircraftCount;

  QGroupBox *fraName, *fraShort, *fraBrief;
  TextBox *txtName, *txtShort, *txtBrief;
  enum Command : std::size_t { kCancel, kApply, kHelp };
  std::array<QPushButton*, 3> cmd;
  /** `mnuMain` is also the menu of `txtBrief`. */
  QMenu *mnuFile, *mnuMain, *mnuModlbl, *mnuCoop;
  QAction *mnuExit, *mnuLabel, *mnuConvert, *mnuSep;
  /** Of `mnuInsert`; those before the last also of `mnuMod`, which changes their labels. */
  enum Insert : std::size_t { kMap, kWeather, kCloudHeight, kTime, kAircraftCount };
  std::array<QAction*, 4> mnuMod;
  std::array<QAction*, 5> mnuInsert;
  enum Tag : std::size_t { kArmyNone, kArmyRed, kArmyBlue };
  std::array<QAction*, 3> mnuTags;

 protected:
  /** A text was typed and not applied. */
  bool HoldsUnstored() const override;

 private:
  void Build();
  void BuildMenus();
  void BuildInsertMenu();
  void PlaceControls();
  void Connect();
  void ConnectMenus();
  void LoadSettings();
  void Read();
  void Apply();
  /** False, told to the user, when the briefing was not saved. */
  bool Save();
  /** Asks where another program has written the file meanwhile. One that holds what was never shown
      is left alone. */
  bool MayReplace() const;
  void InsertValue(std::size_t index);
  void ModifyLabel(std::size_t index);
  void WrapInTag(std::size_t index);
  void Tell(const std::string& text) const;
  std::array<TextBox*, 3> Boxes() const { return {txtName, txtShort, txtBrief}; }

  Session& session_;
  QMenuBar* bar_;
  std::array<std::string, 4> labels_;
  /** The bytes that the texts of `Boxes` were read from. */
  std::array<std::string, 3> before_;
  bool UseUS = false;
  /** What the file at `BriefName` held when it was read, and what was to be written there last. */
  std::optional<Briefing> read_, written_;
  /** Why the file could not be read. */
  std::string readFault_;
};

}  // namespace rws
