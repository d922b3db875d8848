#include <QApplication>
#include <QIcon>
#include <cstdio>

#include "app/program.h"

int main(int argc, char** argv) {
  if (const std::string answer = rws::AnswerTo(argc, argv); !answer.empty())
    return std::fputs(answer.c_str(), stdout) < 0 ? 1 : 0;
  QApplication application(argc, argv);
  // Wayland takes the icon from the desktop entry, other systems from the window.
  QGuiApplication::setDesktopFileName(QStringLiteral("rws-edit"));
  QApplication::setWindowIcon(QIcon(QStringLiteral(":/icons/rws-edit.svg")));
  rws::Program program;
  program.Window.LoadForm(rws::CommandLine(argc, argv));
  return program.Session.Doc.Closing ? 0 : application.exec();
}
