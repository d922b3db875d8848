#include "platform/qt_prompts.h"

#include <QApplication>
#include <QColorDialog>
#include <QFileDialog>
#include <QInputDialog>
#include <QMessageBox>

#include "platform/qt_text.h"
#include "services/text.h"

namespace rws {

namespace {

QMessageBox::StandardButtons ToQt(Buttons buttons) {
  switch (buttons) {
    case Buttons::OkCancel:
      return QMessageBox::Ok | QMessageBox::Cancel;
    case Buttons::YesNo:
      return QMessageBox::Yes | QMessageBox::No;
    case Buttons::YesNoCancel:
      return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    case Buttons::Ok:
      break;
  }
  return QMessageBox::Ok;
}

QMessageBox::Icon ToQt(Icon icon) {
  switch (icon) {
    case Icon::Information:
      return QMessageBox::Information;
    case Icon::Question:
      return QMessageBox::Question;
    case Icon::Exclamation:
      return QMessageBox::Warning;
    case Icon::Critical:
      return QMessageBox::Critical;
    case Icon::None:
      break;
  }
  return QMessageBox::NoIcon;
}

Answer FromQt(int button, Buttons asked) {
  switch (button) {
    case QMessageBox::Yes:
      return Answer::Yes;
    case QMessageBox::No:
      return Answer::No;
    case QMessageBox::Ok:
      return Answer::Ok;
    default:
      // Closing a box by its title bar chooses what does least.
      return asked == Buttons::Ok      ? Answer::Ok
             : asked == Buttons::YesNo ? Answer::No
                                       : Answer::Cancel;
  }
}

Answer ShowBox(const std::string& text, Buttons buttons, Icon icon, const std::string& title) {
  QMessageBox box(ToQt(icon), FromPath(title), FromPath(text), ToQt(buttons),
                  QApplication::activeWindow());
  box.setTextFormat(Qt::PlainText);
  return FromQt(box.exec(), buttons);
}

/** "Sound file (*.wav)|*.wav" in the toolkit's spelling: "Sound file (*.wav)". */
QString ToQtFilter(const std::string& filter) {
  const auto parts = SplitAt(filter, '|');
  QStringList filters;
  for (std::size_t i = 0; i + 1 < parts.size(); i += 2) {
    const auto name = parts[i].substr(0, parts[i].find('('));
    filters << FromPath(Trim(name)) + QStringLiteral(" (") +
                   FromPath(Replace(parts[i + 1], ";", " ")) + QLatin1Char(')');
  }
  return filters.join(QStringLiteral(";;"));
}

std::vector<std::string> PickFiles(const FileQuestion& question, bool several) {
  QFileDialog dialog(QApplication::activeWindow(), FromPath(question.Title),
                     FromPath(question.InitialFolder), ToQtFilter(question.Filter));
  dialog.setFileMode(several ? QFileDialog::ExistingFiles : QFileDialog::ExistingFile);
  std::vector<std::string> paths;
  if (dialog.exec() == QDialog::Accepted)
    for (const auto& path : dialog.selectedFiles())
      paths.push_back(ToPath(QDir::toNativeSeparators(path)));
  return paths;
}

std::string PickSaveFile(const FileQuestion& question) {
  QFileDialog dialog(QApplication::activeWindow(), FromPath(question.Title),
                     FromPath(question.InitialFolder), ToQtFilter(question.Filter));
  dialog.setAcceptMode(QFileDialog::AcceptSave);
#ifndef _WIN32
  // Some desktops' own dialogs ask about the name as typed, before the ending is added to it.
  dialog.setOption(QFileDialog::DontUseNativeDialog);
#endif
  if (!question.AsksToReplace) dialog.setOption(QFileDialog::DontConfirmOverwrite);
  dialog.selectFile(FromPath(question.DefaultName));
  const auto parts = SplitAt(question.Filter, '|');
  if (parts.size() > 1) dialog.setDefaultSuffix(FromPath(Replace(parts[1], "*.", "")));
  if (dialog.exec() != QDialog::Accepted) return "";
  return ToPath(QDir::toNativeSeparators(dialog.selectedFiles().value(0)));
}

std::string PickFolder(const std::string& title, bool allowNewFolder,
                       const std::string& initialFolder) {
  QFileDialog::Options options = QFileDialog::ShowDirsOnly;
  // The toolkit's own dialog is the only one that can keep new folders from being made.
  if (!allowNewFolder) options |= QFileDialog::ReadOnly | QFileDialog::DontUseNativeDialog;
  const QString folder = QFileDialog::getExistingDirectory(
      QApplication::activeWindow(), FromPath(title), FromPath(initialFolder), options);
  return ToPath(QDir::toNativeSeparators(folder));
}

std::optional<std::int32_t> PickColor(std::int32_t initial) {
  const QColor start(initial & 0xFF, (initial >> 8) & 0xFF, (initial >> 16) & 0xFF);
  const QColor chosen = QColorDialog::getColor(start, QApplication::activeWindow());
  if (!chosen.isValid()) return {};
  return chosen.red() | (chosen.green() << 8) | (chosen.blue() << 16);
}

std::optional<std::string> AskText(const std::string& prompt, const std::string& title,
                                   const std::string& initial) {
  bool accepted = false;
  const QString text =
      QInputDialog::getText(QApplication::activeWindow(), FromPath(title), FromPath(prompt),
                            QLineEdit::Normal, FromPath(initial), &accepted);
  if (!accepted) return {};
  // A name that is no UTF-8 stays as it is where it was not changed.
  return text == FromPath(initial) ? initial : ToPath(text);
}

}  // namespace

Prompts MakeQtPrompts() {
  Prompts prompts;
  prompts.MsgBox = ShowBox;
  prompts.InputBox = AskText;
  prompts.OpenFiles = PickFiles;
  prompts.SaveFile = PickSaveFile;
  prompts.Folder = PickFolder;
  prompts.Color = PickColor;
  return prompts;
}

}  // namespace rws
