#include "platform/start.h"

namespace rws {

QString BehindProgram(const QString& commandLine, const QString& program) {
  const QChar quote = QLatin1Char('"'), blank = QLatin1Char(' ');
  qsizetype end = 0;
  if (commandLine.startsWith(quote)) {
    end = commandLine.indexOf(quote, 1) + 1;
    if (end == 0) return {};
  } else if (!program.isEmpty() &&
             (commandLine + blank).startsWith(program + blank, Qt::CaseInsensitive)) {
    end = program.size();
  } else {
    end = commandLine.indexOf(blank);
    if (end < 0) return {};
  }
  return commandLine.mid(end).trimmed();
}

}  // namespace rws
