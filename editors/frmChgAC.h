#pragma once

#include <QPushButton>
#include <QStandardItemModel>
#include <QTreeView>
#include <array>
#include <string>

#include "controls/dialog.h"
#include "controls/elided_frame.h"
#include "controls/list_box.h"
#include "editors/logic/change_lists.h"
#include "session/session.h"

namespace rws {

/** Asks for another aircraft and, for a flight, another squadron; for a parked aircraft another
    country. The caller sets the fields, loads and shows the form and reads the fields. Texts are in
    the encoding of mission text. */
class frmChgAC : public Dialog {
  Q_OBJECT

 public:
  frmChgAC(Session& session, QWidget* parent);

  void LoadForm();
  /** Ends every way of closing. */
  void done(int result) override;

  /** In: the class. Out: the display name chosen; blank after Cancel, "Cancel" when the form was
      closed without an answer. */
  std::string ACName;
  /** "static" in any letter case for a parked aircraft; anything else for a flight. */
  std::string Mode;
  /** The flight's name; the country's code of a parked aircraft. */
  std::string Group;
  /** Out, for a flight: the regiment of a new name, or "". */
  std::string Squad;
  /** Out: the army colour word of a flight, the country code of a parked aircraft. */
  std::string CodeOut;
  /** Out: the user has touched the list of aircraft. */
  bool Changed = false;

  ListBox* lstPlanes;
  QTreeView* tview;
  ElidedFrame *fraPlane, *fraSq;
  enum Command : std::size_t { kApply, kCancel };
  std::array<QPushButton*, 2> cmd;

 private:
  void Build();
  void Connect();
  void FillPlanes();
  void FillTree();
  void Apply();
  void PlaneChosen();
  void NodeChosen();
  /** The node that is selected. */
  NodePlace Chosen() const;
  std::string SelectedPlane() const;

  Session& session_;
  GroupTree tree_;
  QStandardItemModel nodes_;
  bool filling_ = false;
  bool unanswered_ = false;
};

}  // namespace rws
