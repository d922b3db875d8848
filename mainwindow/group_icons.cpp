#include <QFile>
#include <QIcon>

#include "mainwindow/flight_list.h"

namespace rws {

namespace {

/** Path of a group's picture: its name in small letters, all else turned into "_". */
QString PicturePath(const QString& group) {
  QString name;
  for (const QChar c : group.toLower()) name += c.isLetterOrNumber() ? c : QChar(QLatin1Char('_'));
  return QStringLiteral(":/icons/groups/%1.svg").arg(name);
}

}  // namespace

QIcon GroupIcon(const QString& group) {
  const QString path = PicturePath(group);
  // A group without a picture of its own takes that of "None".
  return QIcon(QFile::exists(path) ? path : PicturePath(QStringLiteral("None")));
}

}  // namespace rws
