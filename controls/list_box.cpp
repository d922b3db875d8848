#include "controls/list_box.h"

#include <QHeaderView>
#include <QMouseEvent>

namespace rws {

ListBox::ListBox(QWidget* parent) : ReportList(parent) {
  setModel(&rows_);
  setSelectionMode(SingleSelection);
  header()->hide();
}

void ListBox::SetRows(const QStringList& rows) { rows_.setStringList(rows); }

void ListBox::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::RightButton) return ReportList::mousePressEvent(event);
  RememberPress(event);
  setFocus(Qt::MouseFocusReason);
}

void ListBox::mouseMoveEvent(QMouseEvent* event) {
  if (!(event->buttons() & Qt::RightButton)) ReportList::mouseMoveEvent(event);
}

}  // namespace rws
