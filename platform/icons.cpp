#include "platform/icons.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace rws {

namespace {

/** Name of a group's picture: its own in small letters, all else turned into "_". */
QString PictureName(const QString& group) {
  QString name;
  for (const QChar c : group.toLower()) name += c.isLetterOrNumber() ? c : QChar(QLatin1Char('_'));
  return QStringLiteral("groups/") + name;
}

}  // namespace

QIcon ProgramIcon(const QString& name) {
  const QFileInfo place(QStringLiteral(":/icons/") + name);
  const QString drawing = place.filePath() + QStringLiteral(".svg");
  if (QFile::exists(drawing)) return QIcon(drawing);
  // A build without the module that draws them has a picture of each size instead.
  QIcon icon;
  const QDir folder = place.dir();
  for (const auto& file : folder.entryList({place.fileName() + QStringLiteral("@*.png")}))
    icon.addFile(folder.filePath(file));
  return icon;
}

QIcon GroupIcon(const QString& group) {
  const QIcon icon = ProgramIcon(PictureName(group));
  // A group without a picture of its own takes that of "None".
  return icon.isNull() ? ProgramIcon(PictureName(QStringLiteral("None"))) : icon;
}

}  // namespace rws
