#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <array>

#include "controls/dialog.h"
#include "map/base_edits.h"
#include "session/session.h"

namespace rws {

/** The lines of one home base as text: its own, its aircraft with their limits and loadouts, and
   its countries. For a mission whose lines are kept. */
class frmBaseLines : public Dialog {
  Q_OBJECT

 public:
  frmBaseLines(Session& session, std::size_t base, QWidget* parent);

  void LoadForm();
  /** Takes the lines as one step; the form stays open, and says why, when they are refused. */
  void accept() override;

  QLineEdit* txtLine;
  QPlainTextEdit *txtAircraft, *txtCountries;
  QLabel* lblFault;
  /** OK, Cancel. */
  std::array<QPushButton*, 2> cmd;

 protected:
  bool HoldsUnstored() const override;

 private:
  void Build();
  BaseLines Typed(QString& fault) const;

  Session& session_;
  std::size_t base_;
  QString line_, aircraft_, countries_;
};

}  // namespace rws
