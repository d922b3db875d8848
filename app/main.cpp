#include <QApplication>
#include <QIcon>

#include "app/program.h"

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  // Wayland takes the icon from the desktop entry, other systems from the window.
  QGuiApplication::setDesktopFileName(QStringLiteral("rws-edit"));
  QApplication::setWindowIcon(QIcon(QStringLiteral(":/icons/rws-edit.svg")));
  rws::Program program;
  program.Window.LoadForm(rws::CommandLine());
  return program.Session.Doc.Closing ? 0 : application.exec();
}
