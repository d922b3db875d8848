#pragma once

#include <QHBoxLayout>
#include <QPushButton>
#include <QWidget>
#include <array>
#include <initializer_list>

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
template <class Control>
Control* Named(Control* control, const char* objectName, const QString& accessibleName = {},
               const QString& toolTip = {}) {
  control->setObjectName(QLatin1String(objectName));
  control->setAccessibleName(accessibleName);
  control->setToolTip(toolTip);
  return control;
}

inline void Describe(QWidget* control, const char* objectName, const QString& accessibleName,
                     const QString& toolTip) {
  Named(control, objectName, accessibleName, toolTip);
}

/** Finds the controls of an array under "name(0)" and so on. */
template <class Controls>
void NameEach(const Controls& controls, const char* name) {
  int index = 0;
  for (auto* control : controls)
    control->setObjectName(QStringLiteral("%1(%2)").arg(QLatin1String(name)).arg(index++));
}

/** What a screen reader says of a caption: "&" marks a letter, "&&" is an ampersand. */
inline QString Spoken(QString caption) {
  for (qsizetype i = 0; (i = caption.indexOf(QLatin1Char('&'), i)) >= 0; ++i) caption.remove(i, 1);
  return caption;
}

/** A push button that a screen reader calls by its caption. */
inline QPushButton* Button(const char* objectName, const QString& caption,
                           const QString& toolTip = {}) {
  return Named(new QPushButton(caption), objectName, Spoken(caption), toolTip);
}

/** The row at a form's bottom: buttons at the left, buttons at the right. */
inline QHBoxLayout* ButtonRow(std::initializer_list<QWidget*> right,
                              std::initializer_list<QWidget*> left = {}) {
  auto* row = new QHBoxLayout;
  for (auto* button : left) row->addWidget(button);
  row->addStretch();
  for (auto* button : right) row->addWidget(button);
  return row;
}

/** The tab key goes through the controls in this order. */
inline void TabOrder(std::initializer_list<QWidget*> order) {
  QWidget* before = nullptr;
  for (auto* control : order) {
    if (before) QWidget::setTabOrder(before, control);
    before = control;
  }
}

}  // namespace rws
