#include "platform/start.h"

#include <QColor>

namespace rws {

QPalette DarkPalette() {
  const QColor window(0x3c, 0x3c, 0x40), base(0x28, 0x28, 0x2b), text(0xe6, 0xe6, 0xe6);
  QPalette palette(window);
  palette.setColor(QPalette::Window, window);
  palette.setColor(QPalette::Base, base);
  palette.setColor(QPalette::AlternateBase, window);
  palette.setColor(QPalette::Button, QColor(0x4a, 0x4a, 0x50));
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
    palette.setColor(role, text);
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
    palette.setColor(QPalette::Disabled, role, QColor(0x80, 0x80, 0x80));
  palette.setColor(QPalette::Highlight, QColor(0x2f, 0x7f, 0xd1));
  palette.setColor(QPalette::HighlightedText, Qt::white);
  return palette;
}

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
