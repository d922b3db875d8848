#include <QApplication>

#include "app/program.h"
#include "services/platform/qt_text.h"

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  rws::Program program;
  program.Window.show();
  program.Open(rws::ToPath(application.arguments().mid(1).join(QLatin1Char(' '))));
  return program.Doc.Closing ? 0 : application.exec();
}
