#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/** Numbers and their texts. The decimal mark is "."; nothing here depends on the locale. */
namespace rws {

/** How many digits a text begins with when these are a whole number as it would be written: without
    a sign or leading zeros, and short enough to be exact. 0 otherwise. */
std::size_t PlainDigits(std::string_view text);

/** The number that a whole text stands for, with blanks around it allowed: a sign, digits with one
    ".", an exponent; or "&" with octal digits, "&H" with hexadecimal ones. Empty otherwise. */
std::optional<double> ParseNumber(std::string_view text);

bool IsNumeric(std::string_view text);

/** The longest number that `text` begins with, blanks skipped; 0 when there is none. */
double Val(std::string_view text);

/** Whole number of a text or a value, rounded half to even. A text that is no number is a type
    mismatch, a number beyond 16 (`CInt`) or 32 bits (`CLng`) an overflow. */
std::int16_t CInt(std::string_view text);
std::int16_t CInt(double value);
std::int32_t CLng(std::string_view text);
std::int32_t CLng(double value);

/** The number of a text; a text that is no number is a type mismatch. */
double CDbl(std::string_view text);

/** `value` rounded to `decimals` places, ties to the even neighbour. */
double RoundHalfEven(double value, int decimals);

/** The shortest plain decimal text that reads back as the same number; never an exponent. */
std::string NumberText(double value);
std::string NumberText(float value);

/** `value` through a mask of "0", "#" and one "." ("#0.00", "0#", "###.0"): "0" is a digit that is
    always there, "#" one that is there when needed. Ties are rounded away from zero. */
std::string FormatNumber(double value, std::string_view mask);

/** As above for a text: one that is no number, the empty one included, comes back unchanged. */
std::string FormatNumber(std::string_view text, std::string_view mask);

/** A number of bytes for the user: "812 bytes", "14 KB", "3.2 MB". */
std::string SizeText(std::uint64_t bytes);

/** A whole number in groups of three digits: "1,234". */
std::string GroupedNumber(std::uint64_t number);

/** `text` right-aligned in `width` columns; a longer text stays whole. */
std::string RightAligned(std::string_view text, std::size_t width);

}  // namespace rws
