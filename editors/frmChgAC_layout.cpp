#include <QFontDatabase>
#include <QFontInfo>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QVBoxLayout>

#include "controls/layouts.h"
#include "controls/list_colors.h"
#include "editors/frmChgAC.h"

namespace rws {

namespace {

/** The rows are columns of text: another font must have letters of one width as well. */
QFont ColumnFont(const QFont& like) {
  QFont font(QStringLiteral("Courier New"));
  if (!QFontInfo(font).fixedPitch()) font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  font.setPointSizeF(like.pointSizeF());
  return font;
}

ElidedFrame* FrameAround(QWidget* content, const char* name) {
  auto* frame = Named(new ElidedFrame, name);
  (new QVBoxLayout(frame))->addWidget(content);
  return frame;
}

}  // namespace

void frmChgAC::Build() {
  constexpr int kRowLetters = 40, kRows = 22, kTreeLetters = 48, kLeastTreeLetters = 28;
  lstPlanes = Named(new ListBox, "lstPlanes", tr("Aircraft"), tr("Choose the aircraft type"));
  lstPlanes->setFont(ColumnFont(font()));
  lstPlanes->setIndentation(0);
  tview = Named(new QTreeView, "tview", tr("Squadron or country"),
                tr("Choose the squadron or country"));
  tview->setModel(&nodes_);
  tview->setItemDelegate(new FixedColors(tview));
  tview->setHeaderHidden(true);
  tview->setUniformRowHeights(true);
  tview->setEditTriggers(QTreeView::NoEditTriggers);
  fraPlane = FrameAround(lstPlanes, "fraPlane");
  fraSq = FrameAround(tview, "fraSq");
  cmd = {Button("cmd(0)", tr("&Apply"), tr("Accept changes and exit")),
         Button("cmd(1)", tr("&Cancel"), tr("Disregard changes and exit"))};
  cmd[kApply]->setDefault(true);
  cmd[kCancel]->setAutoDefault(false);

  const QFontMetrics letters(lstPlanes->font());
  // Beside the letters stand the cell's margins and the bar.
  lstPlanes->setMinimumWidth(letters.horizontalAdvance(QLatin1Char('0')) * (kRowLetters + 5));
  const int digit = fontMetrics().horizontalAdvance(QLatin1Char('0'));
  tview->setMinimumWidth(digit * kLeastTreeLetters);
  auto* lists = new QHBoxLayout;
  lists->addWidget(fraPlane, 1);
  lists->addWidget(fraSq, 1);
  auto* whole = new QVBoxLayout(this);
  whole->addLayout(lists, 1);
  whole->addLayout(ButtonRow({cmd[kApply], cmd[kCancel]}));
  resize(lstPlanes->minimumWidth() + digit * (kTreeLetters + 5), letters.height() * (kRows + 6));
}

}  // namespace rws
