#include "gamelists/properties.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace rws {

namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF", kBlanks = " \t\f";

std::string_view WithoutLeadingBlanks(std::string_view text) {
  return text.substr(std::min(text.find_first_not_of(kBlanks), text.size()));
}

bool IsContinued(std::string_view line) {
  const std::size_t end = line.find_last_not_of('\\');
  const std::size_t slashes = line.size() - (end == line.npos ? 0 : end + 1);
  return slashes % 2 == 1;
}

/** Cuts off the first line, with those that go on with it. */
std::string TakeLine(std::string_view& rest, std::size_t& number) {
  std::string whole;
  bool isFirst = true;
  while (isFirst || !rest.empty()) {
    const std::size_t end = std::min(rest.find_first_of("\r\n"), rest.size());
    auto line = WithoutLeadingBlanks(rest.substr(0, end));
    const std::size_t ends = rest.substr(end).starts_with("\r\n") ? 2 : 1;
    rest.remove_prefix(std::min(end + ends, rest.size()));
    ++number;
    const bool isComment = isFirst && (line.starts_with('#') || line.starts_with('!'));
    if (isComment) return "";
    isFirst = false;
    if (!IsContinued(line)) return whole.append(line);
    line.remove_suffix(1);
    whole.append(line);
  }
  return whole;
}

/** Where the key of a line ends. */
std::size_t KeyEnd(std::string_view line) {
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (line[i] == '\\') {
      ++i;
    } else if (line[i] == '=' || line[i] == ':' || kBlanks.find(line[i]) != kBlanks.npos) {
      return i;
    }
  }
  return line.size();
}

std::optional<char32_t> HexDigits(std::string_view text) {
  char32_t value = 0;
  if (text.size() != 4) return {};
  for (const char c : text) {
    const std::string_view digits = "0123456789abcdef";
    const auto digit = digits.find(static_cast<char>(c >= 'A' && c <= 'F' ? c + 32 : c));
    if (digit == digits.npos) return {};
    value = value * 16 + static_cast<char32_t>(digit);
  }
  return value;
}

/** Decodes escapes and bytes. */
class Decoder {
 public:
  explicit Decoder(bool isUtf8) : isUtf8_(isUtf8) {}

  std::string Decode(std::string_view raw) {
    std::string text;
    for (std::size_t i = 0; i < raw.size();) {
      if (raw[i] == '\\' && i + 1 < raw.size())
        TakeEscape(raw, i, text);
      else if (isUtf8_)
        text += raw[i++];
      else
        AppendUtf8(text, ListsPage().ToUnicode(raw[i++]));
    }
    return text;
  }

  bool IsMalformed = false;

 private:
  void TakeEscape(std::string_view raw, std::size_t& i, std::string& text) {
    const char kind = raw[i + 1];
    if (kind == 'u') return TakeCharacter(raw, i, text);
    i += 2;
    switch (kind) {
      case 't':
        text += '\t';
        break;
      case 'n':
        text += '\n';
        break;
      case 'r':
        text += '\r';
        break;
      default:
        // Not the byte alone: it may begin a character.
        --i;
        if (kind == '\\') {
          text += kind;
          ++i;
        }
    }
  }

  void TakeCharacter(std::string_view raw, std::size_t& i, std::string& text) {
    const auto unit = HexDigits(raw.substr(i + 2, 4));
    if (!unit) {
      IsMalformed = true;
      text += raw[i++];
      return;
    }
    i += 6;
    // Characters beyond the first 65,536 come as two halves.
    if (*unit >= 0xD800 && *unit < 0xDC00 && raw.substr(i).starts_with("\\u")) {
      const auto low = HexDigits(raw.substr(i + 2, 4));
      if (low && *low >= 0xDC00 && *low < 0xE000) {
        i += 6;
        return AppendUtf8(text, 0x10000 + ((*unit - 0xD800) << 10) + (*low - 0xDC00));
      }
    }
    const bool isHalf = *unit >= 0xD800 && *unit < 0xE000;
    AppendUtf8(text, isHalf ? U'\uFFFD' : *unit);
  }

  bool isUtf8_;
};

}  // namespace

const CodePage& ListsPage() {
  static const CodePage page(1252);
  return page;
}

Properties::Properties(std::string_view bytes) {
  const bool isUtf8 = bytes.starts_with(kUtf8Mark);
  if (isUtf8) bytes.remove_prefix(kUtf8Mark.size());
  Decoder decoder(isUtf8);
  std::size_t number = 0;
  while (!bytes.empty()) {
    const std::size_t line = number + 1;
    const std::string whole = TakeLine(bytes, number);
    if (whole.empty()) continue;
    const std::size_t end = KeyEnd(whole);
    auto text = WithoutLeadingBlanks(std::string_view(whole).substr(end));
    if (text.starts_with('=') || text.starts_with(':')) text = WithoutLeadingBlanks(text.substr(1));
    text = text.substr(0, text.find_last_not_of(kBlanks) + 1);
    std::string key = decoder.Decode(std::string_view(whole).substr(0, end));
    Put(std::move(key), decoder.Decode(text), line);
    if (decoder.IsMalformed && malformed_ == 0) malformed_ = line;
  }
}

const Property* Properties::Find(std::string_view key) const {
  const auto found = byKey_.find(key);
  return found == byKey_.end() ? nullptr : &all_[found->second];
}

void Properties::Complete(const Properties& other) {
  for (const auto& property : other.all_)
    if (!Find(property.Key)) Put(property.Key, property.Text, property.Line);
}

void Properties::Put(std::string key, std::string text, std::size_t line) {
  const auto [place, isNew] = byKey_.try_emplace(key, all_.size());
  if (isNew)
    all_.push_back({std::move(key), std::move(text), line});
  else
    all_[place->second] = {std::move(key), std::move(text), line};
}

}  // namespace rws
