#include <QIcon>

#include "mainwindow/flight_list.h"
#include "platform/icons.h"

namespace rws {

namespace {

/** Name of a group's picture: its own in small letters, all else turned into "_". */
QString PictureName(const QString& group) {
  QString name;
  for (const QChar c : group.toLower()) name += c.isLetterOrNumber() ? c : QChar(QLatin1Char('_'));
  return QStringLiteral("groups/") + name;
}

}  // namespace

QIcon GroupIcon(const QString& group) {
  const QIcon icon = ProgramIcon(PictureName(group));
  // A group without a picture of its own takes that of "None".
  return icon.isNull() ? ProgramIcon(PictureName(QStringLiteral("None"))) : icon;
}

}  // namespace rws
