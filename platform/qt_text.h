#pragma once

#include <QString>
#include <string>
#include <string_view>

#include "services/code_page.h"

/** Where text meets the widgets: mission text is decoded and encoded here and nowhere else. */
namespace rws {

/** Mission text, in the single-byte encoding. */
QString FromBytes(const CodePage& page, std::string_view bytes);
/** What a widget holds, as mission text. A character that the code page lacks is left out; text
   boxes refuse such a character as it is typed. */
std::string ToBytes(const CodePage& page, const QString& text);

/** Paths and message texts. */
QString FromPath(std::string_view path);
std::string ToPath(const QString& path);

}  // namespace rws
