#pragma once

#include <QIcon>
#include <QString>

namespace rws {

/** One of the program's own icons, by its path below `icons/` without an ending, such as
    "toolbar/open"; sharp at every size of the screen. Null if there is none of this name. */
QIcon ProgramIcon(const QString& name);

/** The icon of a group of regiments, by its name. */
QIcon GroupIcon(const QString& group);

}  // namespace rws
