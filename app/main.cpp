#include <QApplication>

#include "app/program.h"

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  rws::Program program;
  program.Window.LoadForm(rws::CommandLine());
  return program.Doc.Closing ? 0 : application.exec();
}
