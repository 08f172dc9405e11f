#pragma once

#include <QString>
#include <cstdint>
#include <optional>

// The numeric conventions the program's files and text boxes rely on: numbers read from the
// front of a text, rounding to nearest with ties to even, Int as floor, 16-bit wrap.
namespace vb {

// The number at the front of the text: leading blanks skipped, blanks between digits ignored,
// "&H" and "&O" prefixes for hex and octal, "." as the decimal point whatever the locale,
// an exponent after E or D. Anything unreadable reads as 0.
double Val(const QString& text);

// True when the whole text (blanks around it allowed) is one number.
bool IsNumeric(const QString& text);

// Rounds to nearest, ties to even (2.5 -> 2, 3.5 -> 4).
double RoundHalfEven(double value);
// Largest whole number not above the value.
double Int(double value);

// Wraps into signed 16 bits, as arithmetic on 16-bit integers does without an overflow check.
std::int16_t Wrap16(std::int64_t value);
// Conversions as a statement makes them: rounded half to even, and nothing at all when the
// value does not fit (or is not a number), so that the caller keeps what it had. The 16-bit wrap
// is a separate step, for the few places whose arithmetic is known to wrap.
std::optional<std::int16_t> CInt(double value);
std::optional<std::int32_t> CLng(double value);
// Single precision: only the range is checked.
std::optional<float> CSng(double value);

// "###,###,###,###": thousands separated by commas, no leading zeros; 0 gives "".
QString FormatThousands(std::int64_t value);

} // namespace vb
