#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <array>
#include <string>

#include "controls/dialog.h"
#include "session/session.h"

namespace rws {

/** Gives the map of a mission a name, which is kept among the user's own entries. */
class frmAddMap : public Dialog {
  Q_OBJECT

 public:
  frmAddMap(Session& session, QWidget* parent);

  void LoadForm();

  /** Mission text; the caller sets it. */
  std::string MapPath;
  /** Where it was seen, UTF-8. */
  std::string From;
  /** The entry has been written. */
  bool IsAdded = false;

  QLabel *lblPath, *lblName;
  QLineEdit *txtPath, *txtName;
  /** Why the name cannot be taken; "" if it can. */
  QLabel* lblWhyNot;
  enum Command : std::size_t { kOk, kCancel };
  std::array<QPushButton*, 2> cmd;

 protected:
  bool HoldsUnstored() const override { return txtName->text() != proposed_; }

 private:
  void Build();
  void Judge();
  void ClickOk();

  Session& session_;
  QString proposed_;
};

}  // namespace rws
