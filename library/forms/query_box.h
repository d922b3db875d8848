#pragma once

#include <QCompleter>
#include <QLabel>
#include <QLineEdit>
#include <QStandardItemModel>
#include <functional>
#include <string_view>
#include <vector>

#include "library/completion.h"

namespace rws {

/** The line by which missions are looked for: completes keys and values as one types, says beside
    it how many there are and under it what cannot be understood. Escape empties the line, and
    leaves it when it is empty. */
class QueryBox : public QWidget {
  Q_OBJECT

 public:
  explicit QueryBox(QWidget* parent = nullptr);

  /** The line as UTF-8. */
  std::string Line() const { return txtQuery->text().toStdString(); }
  /** "37 of 500", or "". */
  void SetCount(const QString& text);
  /** A line under the box, "" for none; a fault is marked as one. */
  void SetMessage(const QString& text, bool isFault);

  /** How the line could go on where the cursor is; both in bytes of UTF-8. */
  std::function<std::vector<Completion>(std::string_view line, std::size_t cursor)> Completions;

  QLineEdit* txtQuery;
  QLabel *lblCount, *lblMessage;

 Q_SIGNALS:
  void LineChanged(const std::string& line);
  /** Escape, which has emptied the line if it was not empty already. */
  void Left(bool wasEmpty);
  /** The Down key, to what is found. */
  void WentDown();
  /** The Enter key. */
  void Entered();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Build();
  bool KeyPressed(QKeyEvent& key);
  void OfferCompletions(bool asked);
  void TakeCompletion(const QModelIndex& chosen);

  QCompleter* completer_;
  bool isFault_ = false;
  QStandardItemModel offered_;
};

}  // namespace rws
