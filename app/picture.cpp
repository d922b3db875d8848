// Saves a picture of the main window with the first mission shown, for the documentation and for a
// look at the layout: rws-picture OUT.png [--dark] [directory]

#include <QApplication>
#include <QCommandLineParser>

#include "app/program.h"
#include "services/platform/qt_text.h"

namespace {

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

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QCommandLineParser parser;
  const QCommandLineOption dark(QStringLiteral("dark"), QStringLiteral("Dark colours"));
  parser.addOption(dark);
  parser.addHelpOption();
  parser.addPositionalArgument(QStringLiteral("OUT.png"), QStringLiteral("Picture to write"));
  parser.addPositionalArgument(QStringLiteral("directory"), QStringLiteral("Missions to show"));
  parser.process(application);
  const QStringList arguments = parser.positionalArguments();
  if (arguments.isEmpty()) parser.showHelp(2);
  if (parser.isSet(dark)) QApplication::setPalette(DarkPalette());

  rws::Program program;
  program.Window.LoadForm(rws::ToPath(arguments.value(1)));
  if (program.Doc.Closing) return 1;
  QCoreApplication::processEvents();
  return program.Window.grab().save(arguments[0]) ? 0 : 1;
}
