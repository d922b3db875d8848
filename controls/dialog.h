#pragma once

#include <QDialog>
#include <type_traits>

#include "services/error_log.h"

namespace rws {

/** What the forms have in common: the traps of their handlers, their title and keys. F1 opens the
    help at the section of the form's name, Shift+F10 the menu of the control that has the focus.
    Escape closes, and asks first where that drops what the user typed; buttons and the title bar do
    as they say, without a question. */
class Dialog : public QDialog {
  Q_OBJECT

 public:
  Dialog(const Services& services, const char* name, QWidget* parent)
      : QDialog(parent), services_(services) {
    setObjectName(QLatin1String(name));
  }

 protected:
  void keyPressEvent(QKeyEvent* event) override;

  /** True while the form holds what the user typed and closing would drop. */
  virtual bool HoldsUnstored() const { return false; }
  /** Asks whether that may be dropped, where there is any. */
  bool MayDrop() const;
  void ShowHelp() const;

  /** Handles an event of a control. A fault is logged under the handler's name and ends it; none
      reaches the event loop. A handler takes all of the event's arguments or none. */
  template <class Sender, class Event, class Handler>
  void On(const Sender* sender, Event happens, const char* name, Handler handler) {
    connect(sender, happens, this, [this, name, handler](auto... arguments) {
      LogAndLeave(services_, name, [&] {
        if constexpr (std::is_invocable_v<const Handler&>)
          handler();
        else
          handler(arguments...);
      });
    });
  }

  /** Loads a form that has the program's title. Each part ends with its own fault, which is logged
      under the handler's name; the next one runs nevertheless. */
  template <class... Parts>
  void Load(const char* name, Parts&&... parts) {
    setWindowTitle(QLatin1String(kProgramTitle));
    (LogAndLeave(services_, name, parts), ...);
  }

  const Services& services_;
};

}  // namespace rws
