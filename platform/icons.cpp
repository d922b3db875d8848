#include "platform/icons.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace rws {

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

}  // namespace rws
