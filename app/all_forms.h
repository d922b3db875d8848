#pragma once

#include <QWidget>
#include <functional>
#include <memory>
#include <vector>

#include "session/session.h"

namespace rws {

/** A dialog of the program by its name. `Make` loads one for the current mission and flight; it is
    not shown yet. */
struct NamedForm {
  const char* Name;
  std::function<std::unique_ptr<QWidget>()> Make;
};

/** Every dialog, for pictures and for checks that walk through all of them. */
std::vector<NamedForm> AllForms(Session& session, QWidget* parent);

}  // namespace rws
