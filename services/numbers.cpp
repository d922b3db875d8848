#include "services/numbers.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

#include "services/faults.h"
#include "services/text.h"

namespace rws {

namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

/** Reads a sign, digits with one "." and an exponent; returns how many characters were used. */
std::size_t ReadDecimal(std::string_view text, double& value) {
  std::size_t start = !text.empty() && (text[0] == '+' || text[0] == '-') ? 1 : 0;
  const bool digitFirst = start < text.size() && IsDigit(text[start]);
  const bool pointFirst = start + 1 < text.size() && text[start] == '.' && IsDigit(text[start + 1]);
  if (!digitFirst && !pointFirst) return 0;
  const char* first = text.data() + start;
  const auto [end, error] = std::from_chars(first, text.data() + text.size(), value);
  if (error == std::errc::result_out_of_range) {
    const std::string_view rest(first, static_cast<std::size_t>(end - first));
    const std::size_t e = rest.find_first_of("eE");
    const bool tiny = e != rest.npos && e + 1 < rest.size() && rest[e + 1] == '-';
    value = tiny ? 0.0 : std::numeric_limits<double>::infinity();
  }
  if (text[0] == '-') value = -value;
  return static_cast<std::size_t>(end - text.data());
}

/** Reads "&17", "&O17" or "&H1F"; returns how many characters were used. */
std::size_t ReadRadix(std::string_view text, double& value) {
  if (text.size() < 2 || text[0] != '&') return 0;
  std::size_t start = 1;
  int base = 8;
  if (LowerAscii(text[1]) == 'h') {
    base = 16;
    start = 2;
  } else if (LowerAscii(text[1]) == 'o') {
    start = 2;
  }
  std::uint64_t whole = 0;
  const char* first = text.data() + start;
  const auto [end, error] = std::from_chars(first, text.data() + text.size(), whole, base);
  if (end == first) return 0;
  value =
      error == std::errc() ? static_cast<double>(whole) : std::numeric_limits<double>::infinity();
  return static_cast<std::size_t>(end - text.data());
}

std::size_t ReadNumber(std::string_view text, double& value) {
  if (text.empty()) return 0;
  return text[0] == '&' ? ReadRadix(text, value) : ReadDecimal(text, value);
}

template <class Whole>
Whole ToWhole(double value) {
  const double rounded = RoundHalfEven(value, 0);
  if (!(rounded >= std::numeric_limits<Whole>::min() &&
        rounded <= std::numeric_limits<Whole>::max()))
    throw OverflowFault();
  return static_cast<Whole>(rounded);
}

template <class Real>
std::string ShortestText(Real value) {
  // Whole numbers, by far the most of them, without the search for the shortest decimal.
  if (std::fabs(value) < 1e15 && std::trunc(value) == value)
    return std::to_string(static_cast<long long>(value));
  // The longest plain decimal of a 64-bit number has 309 digits before or 324 behind the point.
  std::array<char, 400> buffer;
  const auto result =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed);
  return {buffer.data(), result.ptr};
}

/** Rounds a plain decimal (no sign) to `decimals` places, ties away from zero. */
std::string RoundDecimalText(std::string digits, std::size_t decimals) {
  const std::size_t point = std::min(digits.find('.'), digits.size());
  if (point < digits.size()) digits.erase(point, 1);
  const bool up = digits.size() > point + decimals && digits[point + decimals] >= '5';
  digits.resize(point + decimals, '0');
  if (!up) return digits;
  std::size_t i = digits.size();
  while (i > 0 && digits[i - 1] == '9') digits[--i] = '0';
  if (i == 0) return '1' + digits;
  ++digits[i - 1];
  return digits;
}

}  // namespace

std::size_t PlainDigits(std::string_view text) {
  if (text.empty() || text[0] == '0') return 0;
  std::size_t digits = 0;
  while (digits < text.size() && IsDigit(text[digits])) ++digits;
  return digits <= 15 ? digits : 0;
}

std::optional<double> ParseNumber(std::string_view text) {
  text = Trim(text);
  double value = 0;
  const std::size_t used = ReadNumber(text, value);
  if (used == 0) return {};
  // A point behind the digits belongs to the number: "5." is 5.
  if (used + 1 == text.size() && text.back() == '.' && !Contains(text.substr(0, used), ".") &&
      text[0] != '&')
    return value;
  if (used != text.size()) return {};
  return value;
}

bool IsNumeric(std::string_view text) { return ParseNumber(text).has_value(); }

double Val(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
  double value = 0;
  return ReadNumber(text, value) == 0 ? 0.0 : value;
}

double CDbl(std::string_view text) {
  const auto value = ParseNumber(text);
  if (!value) throw TypeMismatchFault();
  if (!std::isfinite(*value)) throw OverflowFault();
  return *value;
}

std::int16_t CInt(double value) { return ToWhole<std::int16_t>(value); }
std::int16_t CInt(std::string_view text) { return CInt(CDbl(text)); }
std::int32_t CLng(double value) { return ToWhole<std::int32_t>(value); }
std::int32_t CLng(std::string_view text) { return CLng(CDbl(text)); }

double RoundHalfEven(double value, int decimals) {
  const double scale = std::pow(10.0, decimals);
  const double scaled = value * scale;
  // Beyond 2^52 a number has no fraction left to round.
  if (!(std::fabs(scaled) < 4503599627370496.0)) return value;
  double whole = std::floor(scaled);
  const double rest = scaled - whole;
  if (rest > 0.5 || (rest == 0.5 && std::fmod(whole, 2.0) != 0.0)) whole += 1.0;
  return whole / scale;
}

std::string NumberText(double value) { return ShortestText(value); }
std::string NumberText(float value) { return ShortestText(value); }

std::string FormatNumber(double value, std::string_view mask) {
  if (!std::isfinite(value)) throw OverflowFault();
  const std::size_t point = std::min(mask.find('.'), mask.size());
  const std::size_t decimals = point < mask.size() ? mask.size() - point - 1 : 0;
  const std::size_t firstZero = std::min(mask.find('0'), point);
  const std::size_t wholeWanted = point - firstZero;
  const auto right = mask.substr(mask.size() - decimals);
  const auto fractionWanted = static_cast<std::size_t>(std::count(right.begin(), right.end(), '0'));

  std::string digits = RoundDecimalText(ShortestText(std::fabs(value)), decimals);
  const bool isZero = digits.find_first_not_of('0') == digits.npos;
  std::size_t whole = digits.size() - decimals;
  const std::size_t leading = std::min(digits.find_first_not_of('0'), whole);
  digits.erase(0, leading);
  whole -= leading;
  // A "0" to the left of the point forces all digits from there on.
  if (whole < wholeWanted) digits.insert(0, wholeWanted - whole, '0');
  whole = std::max(whole, wholeWanted);
  while (digits.size() > whole + fractionWanted && digits.back() == '0') digits.pop_back();
  if (point < mask.size()) digits.insert(whole, 1, '.');
  if (value < 0 && !isZero) digits.insert(0, 1, '-');
  return digits;
}

std::string FormatNumber(std::string_view text, std::string_view mask) {
  const auto value = ParseNumber(text);
  return value ? FormatNumber(*value, mask) : std::string(text);
}

std::string SizeText(std::uint64_t bytes) {
  constexpr double kKilo = 1024;
  if (bytes < kKilo) return std::to_string(bytes) + (bytes == 1 ? " byte" : " bytes");
  double size = static_cast<double>(bytes) / kKilo;
  // What would be shown as 1024 is one of the next unit.
  if (size < kKilo - 0.5) return FormatNumber(size, "0") + " KB";
  size /= kKilo;
  if (size < kKilo - 0.05) return FormatNumber(size, "0.0") + " MB";
  return FormatNumber(size / kKilo, "0.0") + " GB";
}

std::string GroupedNumber(std::uint64_t number) {
  std::string text = std::to_string(number);
  for (std::size_t at = text.size(); at > 3;) text.insert(at -= 3, ",");
  return text;
}

std::string RightAligned(std::string_view text, std::size_t width) {
  return std::string(width > text.size() ? width - text.size() : 0, ' ') + std::string(text);
}

}  // namespace rws
