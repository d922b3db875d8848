#include "platform/qt_text.h"

namespace rws {

QString FromBytes(const CodePage& page, std::string_view bytes) {
  QString text;
  text.reserve(static_cast<qsizetype>(bytes.size()));
  for (const char byte : bytes) text += QChar(static_cast<char16_t>(page.ToUnicode(byte)));
  return text;
}

std::string ToBytes(const CodePage& page, const QString& text) {
  std::string bytes;
  for (const QChar c : text)
    if (const auto byte = page.FromUnicode(c.unicode())) bytes += *byte;
  return bytes;
}

QString FromPath(std::string_view path) {
  return QString::fromUtf8(path.data(), static_cast<qsizetype>(path.size()));
}

std::string ToPath(const QString& path) { return path.toStdString(); }

}  // namespace rws
