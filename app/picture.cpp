// Saves a picture for the documentation and for a look at the layout: of the main window with a
// mission shown, or of a dialog over it.
//
//   rws-picture [--dark] [--form NAME] OUT.png [directory or mission]

#include <QApplication>
#include <QCommandLineParser>
#include <iostream>

#include "app/all_forms.h"
#include "app/program.h"
#include "platform/qt_text.h"
#include "platform/start.h"
#include "services/faults.h"

namespace {

bool Save(QWidget& form, const QString& file) {
  QCoreApplication::processEvents();
  return form.grab().save(file);
}

/** False, told, when there is no such form or it has nothing to show in this mission. */
bool SaveForm(rws::Program& program, const QString& name, const QString& file) {
  bool saved = false;
  const auto save = [&] {
    for (const auto& form : rws::AllForms(program.Session, &program.Window)) {
      if (name != QLatin1String(form.Name)) continue;
      const auto dialog = form.Make();
      dialog->show();
      saved = Save(*dialog, file);
    }
  };
  rws::Trap(save, [](const rws::Fault& fault) { std::cerr << fault.Text << '\n'; });
  return saved;
}

}  // namespace

int main(int argc, char** argv) {
  rws::PrepareStart();
  QApplication application(argc, argv);
  rws::ChooseLook();
  QCommandLineParser parser;
  const QCommandLineOption dark(QStringLiteral("dark"), QStringLiteral("Dark colours"));
  const QCommandLineOption form(QStringLiteral("form"), QStringLiteral("A dialog by its name"),
                                QStringLiteral("name"));
  parser.addOptions({dark, form});
  parser.addHelpOption();
  parser.addPositionalArgument(QStringLiteral("OUT.png"), QStringLiteral("Picture to write"));
  parser.addPositionalArgument(QStringLiteral("missions"), QStringLiteral("What to show"));
  parser.process(application);
  const QStringList arguments = parser.positionalArguments();
  if (arguments.isEmpty()) parser.showHelp(2);
  if (parser.isSet(dark)) QApplication::setPalette(rws::DarkPalette());

  rws::Program program;
  program.Window.LoadForm(rws::ToPath(arguments.value(1)));
  if (program.Session.Doc.Closing) return 1;
  const bool saved = parser.isSet(form) ? SaveForm(program, parser.value(form), arguments[0])
                                        : Save(program.Window, arguments[0]);
  return saved ? 0 : 1;
}
