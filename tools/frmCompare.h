#pragma once

#include <QLabel>
#include <QPushButton>
#include <array>
#include <string>

#include "controls/dialog.h"
#include "session/session.h"
#include "tools/compare_view.h"

namespace rws {

/** Shows in what two texts of a mission differ. Changes nothing. The caller sets what is compared,
    loads and shows the form. */
class frmCompare : public Dialog {
  Q_OBJECT

 public:
  frmCompare(Session& session, QWidget* parent);

  void LoadForm();
  /** Stores size and place, however the form is closed. */
  void done(int result) override;

  /** What is compared, such as the path of the mission; UTF-8. */
  std::string Subject;
  /** What stands over either side, such as "As it is on disk, 2026-11-20 18:03"; UTF-8. */
  std::string BeforeCaption, AfterCaption;
  /** Both texts, in mission bytes. */
  std::string Before, After;

  QLabel* lblSubject;
  CompareView* cmpTexts;
  enum Command : std::size_t { kClose };
  std::array<QPushButton*, 1> cmd;

 private:
  void Build();

  Session& session_;
};

}  // namespace rws
