// The floor of the start benchmark: a Qt program that paints one empty window, saves the picture as
// rws-picture does, and ends.

#include <QApplication>
#include <QMainWindow>

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QMainWindow window;
  window.resize(900, 530);
  window.show();
  QCoreApplication::processEvents();
  return window.grab().save(application.arguments().value(1)) ? 0 : 1;
}
