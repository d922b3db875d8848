#pragma once

#include <QHBoxLayout>
#include <QWidget>

namespace rws {

/** A row in which a text box and its arrows look like one control. */
inline QHBoxLayout* Joined(QWidget* box, QWidget* arrows) {
  auto* row = new QHBoxLayout;
  row->setSpacing(0);
  row->addWidget(box);
  row->addWidget(arrows);
  return row;
}

/** Gives a control the name by which it is found, what a screen reader says, and its tool tip. */
inline void Describe(QWidget* control, const char* objectName, const QString& accessibleName,
                     const QString& toolTip) {
  control->setObjectName(QLatin1String(objectName));
  control->setAccessibleName(accessibleName);
  control->setToolTip(toolTip);
}

}  // namespace rws
