#pragma once

#include <QCheckBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <array>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "controls/dialog.h"
#include "mission/document.h"

namespace rws {

/** Asks what an Update is to do with the lines of missions that were not edited, where writing them
    anew would change what they mean. Closed in any other way than by its choices it means that
    nothing is written. */
class frmLines : public Dialog {
  Q_OBJECT

 public:
  frmLines(const Services& services, QWidget* parent);

  void LoadForm();

  /** Full paths. */
  std::vector<std::string> Missions;
  /** Shows what would change. */
  std::function<void()> Show;
  /** Out; nothing for Cancel. */
  std::optional<UntouchedLines> Choice;

  QLabel* lbl;
  QListWidget* lst;
  QCheckBox* chkAlways;
  enum Command : std::size_t { kKeep, kAnew, kShow, kCancel };
  std::array<QPushButton*, 4> cmd;

 private:
  void Build();
};

}  // namespace rws
