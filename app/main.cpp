#include <QApplication>

#include "app/program.h"
#include "platform/icons.h"
#include "platform/start.h"

int main(int argc, char** argv) {
  if (const std::string answer = rws::AnswerTo(argc, argv); !answer.empty())
    return rws::Print(answer) ? 0 : 1;
  rws::PrepareStart();
  QApplication application(argc, argv);
  rws::ChooseLook();
  // Wayland takes the icon from the desktop entry, other systems from the window.
  QGuiApplication::setDesktopFileName(QStringLiteral("rws-edit"));
  QApplication::setWindowIcon(rws::ProgramIcon(QStringLiteral("rws-edit")));
  rws::Program program;
  program.Window.LoadForm(rws::CommandLine(argc, argv));
  return program.Session.Doc.Closing ? 0 : application.exec();
}
