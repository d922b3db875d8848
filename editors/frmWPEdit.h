#pragma once

#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <array>
#include <cstdint>
#include <map>
#include <string>

#include "controls/dialog.h"
#include "controls/up_down.h"
#include "session/session.h"

namespace rws {

/** Asks how a flight is to be duplicated: how many copies, and by how much the waypoints of each
    are shifted. The caller sets `AirCraftType`, loads and shows the form and reads the numbers. */
class frmWPEdit : public Dialog {
  Q_OBJECT

 public:
  frmWPEdit(Session& session, QWidget* parent);

  void LoadForm();

  /** Display name of the aircraft, in the encoding of mission text. */
  std::string AirCraftType;
  /** Offsets of each copy, in metres; what is typed may lie outside the range of the arrows. */
  std::int16_t Altitude = 0, Distance = 0;
  /** Offset of the landing speed, in kilometres per hour. */
  std::int16_t Speed = 0;
  /** How many copies; 0 makes none. */
  std::int16_t ACNumber = 0;
  /** True after Cancel alone: a form closed by its title bar counts as applied. */
  bool frmCancel = false;

  QGroupBox *fra1, *Fra3, *fra2;
  std::map<int, QLabel*> lbl;
  enum Input : std::size_t { kHeight, kDistance, kSpeed, kNumber };
  std::array<QLineEdit*, 4> txtInput;
  std::array<UpDown*, 4> udWP;
  /** The last accepted texts. */
  std::array<QString, 4> Tag;
  enum Command : std::size_t { kCancel, kApply };
  std::array<QPushButton*, 2> cmd;

 protected:
  /** Escape presses Cancel. */
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void Build();
  void PlaceControls();
  void Connect();
  void TextChanged(std::size_t index);
  void TextLeft(std::size_t index);
  void Restore(std::size_t index);
  /** Stores the number of a text; false if it has more than 16 bits. */
  bool Store(std::size_t index, const std::string& text);
  void ShowToolTip(std::size_t index);

  Session& session_;
};

}  // namespace rws
