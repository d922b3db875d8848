#pragma once

#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <array>
#include <string>
#include <vector>

#include "controls/dialog.h"

namespace rws {

enum class UnsavedChoice { Cancel, SaveAll, Discard };

/** Asks what becomes of unsaved missions when the program is left. Closed in any other way than by
    its buttons it means to stay. */
class frmUnsaved : public Dialog {
  Q_OBJECT

 public:
  frmUnsaved(const Services& services, QWidget* parent);

  void LoadForm();

  /** Full paths. */
  std::vector<std::string> Missions;
  /** Out. */
  UnsavedChoice Choice = UnsavedChoice::Cancel;

  QLabel* lbl;
  QListWidget* lst;
  enum Command : std::size_t { kSaveAll, kDiscard, kCancel };
  std::array<QPushButton*, 3> cmd;

 private:
  void Build();
};

}  // namespace rws
