#include "tests/robot/hand.h"

#include <QAbstractItemView>
#include <QAbstractScrollArea>
#include <QApplication>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QDialog>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>
#include <QSplitter>
#include <QTabBar>
#include <QTest>
#include <QWheelEvent>
#include <algorithm>

#include "map/forms/frmMap.h"

namespace rws::robot {

namespace {

std::string lastDeed;

void Tell(const QWidget* widget, const std::string& what) {
  lastDeed = what + " " + (widget ? widget->metaObject()->className() : "nothing") + " \"" +
             (widget ? widget->objectName().toStdString() : "") + "\" of " +
             (widget ? widget->window()->objectName().toStdString() : "");
}

template <class List>
auto* AnyOf(const List& list, std::uint32_t pick) {
  return list.isEmpty() ? nullptr : list[static_cast<qsizetype>(pick) % list.size()];
}

/** Where the user's events go: an open menu or list, a dialog, or one of the windows. */
QWidget* Target(Stage& stage) {
  if (auto* popup = QApplication::activePopupWidget()) return popup;
  auto* modal = QApplication::activeModalWidget();
  auto* map = stage.Window->Map.get();
  // A dialog of the main window alone leaves the map usable.
  if (modal && modal->windowModality() == Qt::WindowModal && map && map->isVisible() &&
      stage.Once(4))
    return map;
  if (modal) return modal;
  QWidgetList windows;
  for (auto* window : QApplication::topLevelWidgets())
    if (window->isVisible() && (qobject_cast<QMainWindow*>(window) || window->inherits("QDialog")))
      windows << window;
  // The set of all windows has no order of its own.
  std::sort(windows.begin(), windows.end(),
            [](const QWidget* a, const QWidget* b) { return a->objectName() < b->objectName(); });
  if (windows.contains(stage.Window.get()) && !stage.Once(3)) return stage.Window.get();
  return AnyOf(windows, static_cast<std::uint32_t>(stage.Random(100)));
}

bool IsWorthIt(const QWidget* widget) {
  const bool speaks = widget->focusPolicy() != Qt::NoFocus || widget->inherits("QSplitterHandle") ||
                      qobject_cast<const QHeaderView*>(widget) ||
                      qobject_cast<const QMenuBar*>(widget) || widget->inherits("QToolButton");
  return speaks && !widget->inherits("QScrollBar");
}

QWidget* AnyControl(Stage& stage, QWidget* window, std::uint32_t pick) {
  QWidgetList good, all;
  for (auto* widget : window->findChildren<QWidget*>()) {
    if (!widget->isVisible() || !widget->isEnabled() || widget->window() != window) continue;
    all << widget;
    if (IsWorthIt(widget)) good << widget;
  }
  auto* found = AnyOf(good.isEmpty() || stage.Once(8) ? all : good, pick);
  return found ? found : window;
}

struct Pointer {
  QPointer<QWidget> On;
  QPoint At;
};

void Send(QEvent& event, QWidget* widget) {
  QSpontaneKeyEvent::setSpontaneous(&event);
  qApp->notify(widget, &event);
}

void Mouse(const Pointer& pointer, QEvent::Type type, Qt::MouseButton button, Qt::MouseButtons held,
           Qt::KeyboardModifiers keys = {}) {
  // What was opened by the press may have closed the window.
  if (!pointer.On || !pointer.On->isVisible()) return;
  const QPoint global = pointer.On->mapToGlobal(pointer.At);
  QMouseEvent event(type, pointer.At, global, button, held, keys);
  Send(event, pointer.On);
}

/** The innermost control at this place of a control. */
Pointer Point(QWidget* widget, std::uint32_t x, std::uint32_t y) {
  if (auto* area = qobject_cast<QAbstractScrollArea*>(widget)) widget = area->viewport();
  const QPoint at(static_cast<int>(x % static_cast<unsigned>(std::max(widget->width(), 1))),
                  static_cast<int>(y % static_cast<unsigned>(std::max(widget->height(), 1))));
  QWidget* inner = widget->childAt(at);
  return inner ? Pointer{inner, inner->mapFrom(widget, at)} : Pointer{widget, at};
}

void ClickAt(const Pointer& pointer, std::uint32_t how) {
  auto* window = pointer.On->window();
  if (!QApplication::activePopupWidget() && !window->isActiveWindow()) window->activateWindow();
  const auto button = how % 5 == 0 ? Qt::RightButton : Qt::LeftButton;
  constexpr Qt::KeyboardModifier kKeys[] = {Qt::NoModifier,      Qt::NoModifier, Qt::NoModifier,
                                            Qt::ControlModifier, Qt::NoModifier, Qt::ShiftModifier};
  const auto keys = kKeys[how / 8 % std::size(kKeys)];
  Mouse(pointer, QEvent::MouseButtonPress, button, button, keys);
  if (button == Qt::RightButton && pointer.On) {
    QContextMenuEvent event(QContextMenuEvent::Mouse, pointer.At,
                            pointer.On->mapToGlobal(pointer.At), keys);
    Send(event, pointer.On);
  }
  Mouse(pointer, QEvent::MouseButtonRelease, button, Qt::NoButton, keys);
  if (how % 7 != 0) return;
  Mouse(pointer, QEvent::MouseButtonDblClick, button, button, keys);
  Mouse(pointer, QEvent::MouseButtonRelease, button, Qt::NoButton, keys);
}

/** An entry of an open menu. */
void ClickEntry(QMenu* menu, std::uint32_t pick) {
  QList<QAction*> entries;
  for (auto* entry : menu->actions())
    if (entry->isVisible() && !entry->isSeparator()) entries << entry;
  auto* entry = AnyOf(entries, pick);
  if (!entry) return void(menu->close());
  Tell(menu, "entry " + entry->text().toStdString() + " of");
  const Pointer pointer{menu, menu->actionGeometry(entry).center()};
  Mouse(pointer, QEvent::MouseMove, Qt::NoButton, Qt::NoButton);
  Mouse(pointer, QEvent::MouseButtonPress, Qt::LeftButton, Qt::LeftButton);
  Mouse(pointer, QEvent::MouseButtonRelease, Qt::LeftButton, Qt::NoButton);
}

void Click(Stage& stage, QWidget* window, const Action& action) {
  if (auto* menu = qobject_cast<QMenu*>(window)) return ClickEntry(menu, action.N[0]);
  auto* control = AnyControl(stage, window, action.N[0]);
  Tell(control, "click on");
  ClickAt(Point(control, action.N[1], action.N[2]), action.N[3]);
}

void ClickRow(Stage& stage, QWidget* window, const Action& action) {
  QList<QAbstractItemView*> views;
  for (auto* view : window->findChildren<QAbstractItemView*>())
    if (view->isVisible() && view->isEnabled() && view->model() && view->window() == window &&
        view->model()->rowCount() > 0)
      views << view;
  auto* view = AnyOf(views, action.N[0]);
  if (!view) return Click(stage, window, action);
  Tell(view, "row of");
  const auto* model = view->model();
  const auto index = model->index(
      static_cast<int>(action.N[1] % static_cast<unsigned>(model->rowCount())),
      static_cast<int>(action.N[2] % static_cast<unsigned>(std::max(model->columnCount(), 1))));
  view->scrollTo(index);
  const QRect place = view->visualRect(index);
  if (place.isValid()) ClickAt({view->viewport(), place.center()}, action.N[3]);
}

void Drag(Stage& stage, QWidget* window, const Action& action) {
  auto* control = AnyControl(stage, window, action.N[0]);
  if (auto* map = qobject_cast<frmMap*>(window); map && stage.Once(2)) control = map->view;
  Tell(control, "drag on");
  Pointer pointer = Point(control, action.N[1], action.N[2]);
  const QPoint step(static_cast<int>(action.N[3] % 61) - 30,
                    static_cast<int>(action.N[3] / 61 % 61) - 30);
  const Qt::KeyboardModifiers keys = action.N[3] % 6 == 0 ? Qt::ControlModifier : Qt::NoModifier;
  Mouse(pointer, QEvent::MouseMove, Qt::NoButton, Qt::NoButton);
  Mouse(pointer, QEvent::MouseButtonPress, Qt::LeftButton, Qt::LeftButton, keys);
  for (int i = 0; i < 3; ++i) {
    pointer.At += step;
    Mouse(pointer, QEvent::MouseMove, Qt::NoButton, Qt::LeftButton, keys);
  }
  Mouse(pointer, QEvent::MouseButtonRelease, Qt::LeftButton, Qt::NoButton, keys);
}

void Wheel(Stage& stage, QWidget* window, const Action& action) {
  auto* control = AnyControl(stage, window, action.N[0]);
  Tell(control, "wheel on");
  const Pointer pointer = Point(control, action.N[1], action.N[2]);
  const QPoint turn(0, action.N[3] % 2 ? 120 : -120);
  QWheelEvent event(pointer.At, pointer.On->mapToGlobal(pointer.At), {}, turn, Qt::NoButton,
                    action.N[3] % 6 == 0 ? Qt::ControlModifier : Qt::NoModifier, Qt::NoScrollPhase,
                    false);
  Send(event, pointer.On);
}

/** What has the focus in the window, or the window itself. */
QWidget* Focus(QWidget* window) {
  if (QApplication::activePopupWidget()) return window;
  if (!window->isActiveWindow()) window->activateWindow();
  auto* focus = window->focusWidget();
  return focus ? focus : window;
}

void Press(QWidget* window, int key, Qt::KeyboardModifiers keys, const QString& text = {}) {
  auto* focus = Focus(window);
  Tell(focus, "key " + QKeySequence(key | static_cast<int>(keys.toInt())).toString().toStdString() +
                  " in");
  QTest::sendKeyEvent(QTest::Click, focus, static_cast<Qt::Key>(key), text, keys, -1);
}

void Key(Stage&, QWidget* window, const Action& action) {
  constexpr int kKeys[] = {
      Qt::Key_Tab,  Qt::Key_Tab,  Qt::Key_Backtab, Qt::Key_Up,       Qt::Key_Up,     Qt::Key_Down,
      Qt::Key_Down, Qt::Key_Left, Qt::Key_Right,   Qt::Key_Return,   Qt::Key_Escape, Qt::Key_Delete,
      Qt::Key_Home, Qt::Key_End,  Qt::Key_Space,   Qt::Key_PageDown, Qt::Key_F1,     Qt::Key_F2,
      Qt::Key_F3,   Qt::Key_F5,   Qt::Key_F6,      Qt::Key_F10,      Qt::Key_Menu,   Qt::Key_Insert,
      Qt::Key_A,    Qt::Key_Plus, Qt::Key_Minus,   Qt::Key_Backspace};
  constexpr Qt::KeyboardModifier kHeld[] = {Qt::NoModifier,      Qt::NoModifier,    Qt::NoModifier,
                                            Qt::ControlModifier, Qt::ShiftModifier, Qt::AltModifier,
                                            Qt::NoModifier};
  const int key = kKeys[action.N[0] % std::size(kKeys)];
  const auto held = kHeld[action.N[1] % std::size(kHeld)];
  if (key == Qt::Key_Menu) {
    QContextMenuEvent event(QContextMenuEvent::Keyboard, {}, {});
    return Send(event, Focus(window));
  }
  const bool writes = key == Qt::Key_A || key == Qt::Key_Plus || key == Qt::Key_Minus;
  Press(window, key, held, writes ? QString(QChar(key)) : key == Qt::Key_Space ? " " : QString());
}

void Type(Stage& stage, QWidget* window, const Action& action) {
  std::mt19937 dice(action.N[0]);
  const QString text = QString::fromUtf8(Junk(dice).c_str());
  if (action.N[1] % 3 == 0) Press(window, Qt::Key_A, Qt::ControlModifier);
  const QPointer<QWidget> still = window;
  for (const QChar letter : text) {
    // What is typed may open or close a window.
    if (!still || !window->isVisible() || stage.World.Doc.Closing) return;
    const int key = letter.unicode() < 128 ? letter.toUpper().unicode() : int(Qt::Key_unknown);
    Press(window, key, {}, QString(letter));
  }
}

void Shortcut(Stage& stage, QWidget* window, const Action& action) {
  QList<QAction*> actions;
  for (auto* entry : window->findChildren<QAction*>())
    if (entry->isEnabled() && !entry->shortcut().isEmpty()) actions << entry;
  auto* entry = AnyOf(actions, action.N[0]);
  if (!entry) return Key(stage, window, action);
  const QKeyCombination keys = entry->shortcut()[0];
  Press(window, keys.key(), keys.keyboardModifiers());
  lastDeed += " for " + entry->text().toStdString();
}

void OpenMenu(Stage& stage, QWidget* window, const Action& action) {
  if (auto* menu = qobject_cast<QMenu*>(window)) return ClickEntry(menu, action.N[0]);
  auto* bar = window->findChild<QMenuBar*>();
  if (!bar || !bar->isVisible()) return Click(stage, window, action);
  auto* entry = AnyOf(bar->actions(), action.N[0]);
  if (!entry) return;
  const QString text = entry->text();
  const auto letter = text.indexOf('&') + 1;
  const QPointer<QWidget> still = window;
  if (action.N[1] % 3 == 0 && letter > 0) {
    Press(window, text[letter].toUpper().unicode(), Qt::AltModifier);
  } else {
    const Pointer pointer{bar, bar->actionGeometry(entry).center()};
    Mouse(pointer, QEvent::MouseButtonPress, Qt::LeftButton, Qt::LeftButton);
    Mouse(pointer, QEvent::MouseButtonRelease, Qt::LeftButton, Qt::NoButton);
  }
  auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
  if (!still || !menu || action.N[2] % 8 == 0) return;
  if (action.N[2] % 3 != 0) return ClickEntry(menu, action.N[3]);
  for (auto i = action.N[3] % 12; i > 0; --i) Press(menu, Qt::Key_Down, {});
  Press(menu, Qt::Key_Return, {});
}

void Resize(Stage&, QWidget* window, const Action& action) {
  // No user can resize a popup; the arrows of a list in one do not come to rest at some sizes.
  if (window->windowType() == Qt::Popup || !window->isWindow()) return;
  constexpr int kSizes[] = {1, 60, 400, 800, 1100, 3000};
  Tell(window, "resize");
  window->resize(kSizes[action.N[0] % std::size(kSizes)], kSizes[action.N[1] % std::size(kSizes)]);
}

/** Closes the dialog or menu that is open, in one of the ways. */
void Close(Stage& stage, QWidget*, const Action&) {
  if (auto* popup = QApplication::activePopupWidget()) {
    Tell(popup, "close");
    if (stage.Once(2)) return Press(popup, Qt::Key_Escape, {});
    return void(popup->close());
  }
  QPointer<QWidget> modal = QApplication::activeModalWidget();
  // The main window is closed now and then: that ends the run.
  if (!modal) modal = Target(stage);
  if (!modal || (modal == stage.Window.get() && !stage.Once(30))) return;
  const std::size_t way = stage.Random(4);
  QList<QAbstractButton*> buttons;
  for (auto* button : modal->findChildren<QAbstractButton*>())
    if (button->isVisible() && button->isEnabled() && button->inherits("QPushButton"))
      buttons << button;
  auto* button = AnyOf(buttons, static_cast<std::uint32_t>(stage.Random(100)));
  Tell(modal, "close " + std::to_string(way) + (button ? button->text().toStdString() : ""));
  if (way == 0) return Press(modal, Qt::Key_Escape, {});
  if (way == 1 && button && modal != stage.Window.get())
    return ClickAt({button, button->rect().center()}, 1);
  modal->close();
}

struct Deed {
  /** In a hundred actions. */
  unsigned Times;
  void (*Do)(Stage&, QWidget* window, const Action&);
  bool IsInWindow = true;
};

constexpr Deed kDeeds[] = {
    {20, Click},
    {12, ClickRow},
    {10, Drag},
    {3, Wheel},
    {14, Key},
    {8, Type},
    {7, Shortcut},
    {12, OpenMenu},
    {4, Close, false},
    {2, Resize},
    {3, [](Stage& stage, QWidget*, const Action&) { stage.ActOutside(); }, false},
    {5, [](Stage& stage, QWidget*, const Action&) { stage.RunTimers(); }, false}};
static_assert(kDeeds[kClose].Do == Close);

}  // namespace

const std::string& LastDeed() { return lastDeed; }

// The engine's numbers are the same everywhere; those of the distributions are not.
std::uint32_t SetupOf(std::uint32_t seed) {
  return static_cast<std::uint32_t>(std::mt19937(seed)());
}

Action ActionOf(std::uint32_t seed, std::uint32_t number) {
  std::mt19937 engine(seed);
  engine.discard(1 + 5ULL * number);
  auto dice = static_cast<unsigned>(engine() % 100);
  Action action{0, {}};
  while (dice >= kDeeds[action.What].Times) dice -= kDeeds[action.What++].Times;
  for (auto& each : action.N) each = static_cast<std::uint32_t>(engine() >> 8);
  return action;
}

void Perform(Stage& stage, const Action& action) {
  lastDeed.clear();
  const Deed& deed = kDeeds[action.What];
  if (!deed.IsInWindow) return deed.Do(stage, nullptr, action);
  QWidget* window = Target(stage);
  if (!window) return;
  // Else most of a run would pass in the first dialog.
  const bool isShort = window->isModal() || qobject_cast<QMenu*>(window);
  if (isShort && stage.Once(10)) return Close(stage, nullptr, action);
  deed.Do(stage, window, action);
}

}  // namespace rws::robot
