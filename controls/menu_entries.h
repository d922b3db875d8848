#pragma once

#include <QMenu>
#include <array>

namespace rws {

/** Adds an entry under its given name; an empty caption is a separator. */
inline QAction* AddEntry(QMenu* menu, const QString& caption, const QString& objectName,
                         bool checkable = false) {
  QAction* entry = caption.isEmpty() ? menu->addSeparator() : menu->addAction(caption);
  entry->setObjectName(objectName);
  entry->setCheckable(checkable);
  return entry;
}

/** The same for an array of entries, named "name(0)" and so on. */
template <std::size_t N>
void AddEntries(QMenu* menu, std::array<QAction*, N>& entries, const char* name,
                const std::array<QString, N>& captions) {
  for (std::size_t i = 0; i < N; ++i)
    entries[i] =
        AddEntry(menu, captions[i], QStringLiteral("%1(%2)").arg(QLatin1String(name)).arg(i));
}

}  // namespace rws
