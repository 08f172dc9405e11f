#pragma once

#include <QString>
#include <cstdint>

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
// Converts to a 16-bit integer: rounded half to even, then wrapped.
std::int16_t CInt(double value);
// Converts to a 32-bit integer: rounded half to even, clamped to the 32-bit range.
std::int32_t CLng(double value);

// "###,###,###,###": thousands separated by commas, no leading zeros; 0 gives "".
QString FormatThousands(std::int64_t value);

} // namespace vb
