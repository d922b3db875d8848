#include "tests/app/form_record.h"

#include <QtWidgets>
#include <map>
#include <memory>
#include <string_view>

namespace rws::test {

namespace {

using PlainControls = std::map<std::string, std::shared_ptr<QObject>>;

/** Controls as Qt makes them, by their classes. */
template <class... Controls>
PlainControls MakePlain() {
  return {{Controls::staticMetaObject.className(), std::make_shared<Controls>()}...};
}

/** The plain one of the nearest class of Qt's own. */
const QObject* PlainOf(const QObject& object) {
  static const PlainControls plain = [] {
    auto made =
        MakePlain<QWidget, QDialog, QLabel, QPushButton, QToolButton, QCheckBox, QRadioButton,
                  QGroupBox, QLineEdit, QComboBox, QSpinBox, QDoubleSpinBox, QListWidget,
                  QTableWidget, QTreeWidget, QTabBar, QStackedWidget, QTimeEdit, QSlider, QListView,
                  QTreeView, QTableView, QTextEdit, QTextBrowser, QPlainTextEdit, QFrame,
                  QScrollArea, QSplitter, QTabWidget, QMenu, QAction, QGridLayout, QHBoxLayout,
                  QVBoxLayout, QMainWindow, QToolBar, QStatusBar, QProgressBar>();
    made["QHeaderView"] = std::make_shared<QHeaderView>(Qt::Horizontal);
    return made;
  }();
  for (const auto* kind = object.metaObject(); kind; kind = kind->superClass())
    if (const auto found = plain.find(kind->className()); found != plain.end())
      return found->second.get();
  return nullptr;
}

/** What differs from run to run, or from font to font. */
bool IsOfTheMoment(const std::string& name) {
  static constexpr std::string_view kNames =
      " x y width height visible focus objectName count isActiveWindow active underMouse"
      " cursorPosition styleSheet locale displayText pageStep sizes handleWidth default modal"
      " currentSection windowFlags windowModality updatesEnabled defaultSectionSize"
      " minimumSectionSize sectionCount maximumBlockCount html windowFilePath mask iconText indent"
      " blockCount tabStopDistance menuRole ";
  return kNames.find(" " + name + " ") != kNames.npos;
}

QString Shown(const QMetaProperty& property, const QVariant& value) {
  if (property.isFlagType())
    return QString::fromLatin1(property.enumerator().valueToKeys(value.toInt()));
  if (property.isEnumType())
    return QString::fromLatin1(property.enumerator().valueToKey(value.toInt()));
  return value.toString().replace('\n', '|');
}

bool IsSimple(const QMetaProperty& property) {
  switch (property.typeId()) {
    case QMetaType::Bool:
    case QMetaType::Int:
    case QMetaType::Double:
    case QMetaType::QString:
    case QMetaType::QKeySequence:
      return true;
    default:
      return property.isEnumType();
  }
}

class Recorder {
 public:
  void Widget(const QWidget& widget, int depth) {
    QString more = widget.isVisibleTo(widget.parentWidget()) ? "" : " hidden";
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::Base})
      if (const QColor color = widget.palette().color(QPalette::Active, role);
          color != QPalette().color(QPalette::Active, role))
        more += " " + color.name();
    Object(widget, depth, more);
    for (const auto* action : widget.actions())
      if (action->menu() == nullptr || action->menu()->parent() != &widget)
        Action(*action, depth + 1);
    if (widget.layout()) Layout(*widget.layout(), depth + 1);
    Items(widget, depth + 1);
    if (HasParts(widget)) return;
    for (const auto* child : widget.findChildren<QWidget*>(Qt::FindDirectChildrenOnly))
      if (Counts(*child)) Widget(*child, depth + 1);
  }
  std::string Text;

 private:
  static bool Counts(const QWidget& child) {
    if (child.inherits("QRubberBand") || child.inherits("QSplitterHandle")) return false;
    // Bars and buttons that come and go with the size of letters.
    const QString name = child.objectName();
    if (name.endsWith("container") || name.endsWith("ext_button")) return false;
    return !child.isWindow() || qobject_cast<const QMenu*>(&child);
  }
  /** Its children are Qt's own. */
  static bool HasParts(const QWidget& widget) {
    return qobject_cast<const QComboBox*>(&widget) ||
           qobject_cast<const QAbstractSpinBox*>(&widget) ||
           qobject_cast<const QLineEdit*>(&widget) || qobject_cast<const QTextEdit*>(&widget) ||
           qobject_cast<const QHeaderView*>(&widget);
  }
  void Line(int depth, const QString& text) {
    Text +=
        std::string(static_cast<std::size_t>(2 * depth), ' ') + text.trimmed().toStdString() + '\n';
  }

  void Object(const QObject& object, int depth, const QString& more = {}) {
    const QObject* const plain = PlainOf(object);
    QString line =
        QString::fromLatin1(object.metaObject()->className()) + " " + object.objectName() + more;
    for (int i = 0; i < object.metaObject()->propertyCount(); ++i) {
      const QMetaProperty property = object.metaObject()->property(i);
      const std::string name = property.name();
      if (!IsSimple(property) || IsOfTheMoment(name)) continue;
      const QVariant value = property.read(&object);
      if (plain && plain->property(property.name()) == value) continue;
      if (value.toString().isEmpty()) continue;
      const bool isLength = name.starts_with("minimum") || name.starts_with("maximum");
      line += " " + QString::fromStdString(name);
      if (!isLength || !object.isWidgetType() || name == "minimum" || name == "maximum")
        line += "=" + Shown(property, value);
    }
    Line(depth, line);
  }
  void Action(const QAction& action, int depth) {
    if (action.isSeparator()) return Line(depth, "----");
    Object(action, depth, action.icon().isNull() ? "" : " icon");
  }

  void Layout(const QLayout& layout, int depth) {
    const QMargins m = layout.contentsMargins();
    QString line = QString::asprintf("%s margins=%d,%d,%d,%d spacing=%d constraint=%d",
                                     layout.metaObject()->className(), m.left(), m.top(), m.right(),
                                     m.bottom(), layout.spacing(), int(layout.sizeConstraint()));
    const auto* grid = qobject_cast<const QGridLayout*>(&layout);
    if (grid) {
      line +=
          QString(" gap=%1,%2 stretch").arg(grid->horizontalSpacing()).arg(grid->verticalSpacing());
      for (int i = 0; i < grid->columnCount(); ++i)
        line += QString(" %1").arg(grid->columnStretch(i));
      line += " /";
      for (int i = 0; i < grid->rowCount(); ++i) line += QString(" %1").arg(grid->rowStretch(i));
    }
    Line(depth, line);
    const auto* box = qobject_cast<const QBoxLayout*>(&layout);
    for (int i = 0; i < layout.count(); ++i) {
      QString place;
      if (grid) {
        int row = 0, column = 0, rows = 0, columns = 0;
        grid->getItemPosition(i, &row, &column, &rows, &columns);
        place = QString(" at %1,%2 %3x%4").arg(row).arg(column).arg(rows).arg(columns);
      }
      if (box && box->stretch(i)) place += QString(" stretch=%1").arg(box->stretch(i));
      auto* item = layout.itemAt(i);
      if (item->alignment()) place += QString(" align=%1").arg(item->alignment().toInt());
      if (item->widget())
        Line(depth + 1, item->widget()->objectName() + " " +
                            item->widget()->metaObject()->className() + place);
      else if (item->layout()) {
        Line(depth + 1, "in it" + place);
        Layout(*item->layout(), depth + 2);
      } else
        Line(depth + 1, QString("gap %1").arg(item->expandingDirections().toInt()) + place);
    }
  }

  void Items(const QWidget& widget, int depth) {
    if (const auto* header = qobject_cast<const QHeaderView*>(&widget)) {
      for (int i = 0; i < header->count(); ++i)
        Line(depth, QString("section %1%2")
                        .arg(header->sectionResizeMode(i))
                        .arg(header->isSectionHidden(i) ? " hidden" : ""));
    } else if (const auto* view = qobject_cast<const QAbstractItemView*>(&widget);
               view && view->model()) {
      Rows(*view->model(), view->rootIndex(), 6, depth);
    } else if (const auto* combo = qobject_cast<const QComboBox*>(&widget)) {
      Rows(*combo->model(), combo->rootModelIndex(), 12, depth);
    }
  }
  void Rows(const QAbstractItemModel& model, const QModelIndex& parent, int most, int depth) {
    QString head;
    for (int column = 0; column < model.columnCount(parent); ++column)
      head += Cell([&](int role) { return model.headerData(column, Qt::Horizontal, role); }) + "; ";
    Line(depth, QString("%1 rows: ").arg(model.rowCount(parent)) + head);
    for (int row = 0; row < std::min(most, model.rowCount(parent)); ++row) {
      const auto at = [&](int column) { return model.index(row, column, parent); };
      QString line;
      for (int column = 0; column < model.columnCount(parent); ++column)
        line += Cell([&](int role) { return at(column).data(role); }) +
                QString(" %1; ").arg(at(column).flags().toInt());
      Line(depth + 1, line);
      if (model.hasChildren(model.index(row, 0, parent)))
        Rows(model, model.index(row, 0, parent), 3, depth + 1);
    }
  }
  static QString Cell(const std::function<QVariant(int)>& data) {
    QString text = data(Qt::DisplayRole).toString();
    const auto add = [&](int role, const QString& name) {
      if (const QVariant value = data(role); value.isValid()) text += name + value.toString();
    };
    add(Qt::CheckStateRole, " checked=");
    add(Qt::ToolTipRole, " tip=");
    add(Qt::AccessibleTextRole, " spoken=");
    if (const QVariant font = data(Qt::FontRole); font.isValid())
      text += font.value<QFont>().bold() ? " bold" : " font";
    add(Qt::TextAlignmentRole, " align=");
    add(Qt::SizeHintRole, " size ");
    for (const auto role : {Qt::ForegroundRole, Qt::BackgroundRole})
      if (const QVariant color = data(role); color.isValid())
        text += " " + color.value<QBrush>().color().name();
    return text.replace('\n', '|');
  }
};

}  // namespace

std::string RecordOf(const QWidget& form) {
  Recorder recorder;
  recorder.Widget(form, 0);
  recorder.Text += "tab order:";
  for (const auto* next = form.nextInFocusChain(); next != &form; next = next->nextInFocusChain())
    if (next->focusPolicy() & Qt::TabFocus && next->window() == &form && !next->focusProxy())
      recorder.Text += " " + next->objectName().toStdString();
  recorder.Text += '\n';
  return recorder.Text;
}

}  // namespace rws::test
