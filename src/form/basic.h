// Number types and the two rounding rules the game uses everywhere.
#pragma once

#include <cmath>
#include <cstdint>
#include <string>
#include <string_view>

namespace quorvel {

using Integer = std::int16_t;  // 16-bit signed
using Long = std::int32_t;     // 32-bit signed
using Single = float;          // 32-bit real

// The integer part of a non-negative draw or percentage: dice, percentages, random ranges.
inline double intPart(double x) {
  return std::floor(x);
}

// Rounding to the nearest whole number, halves to even: storing a real into an Integer,
// using a real as an index. Relies on the default rounding mode, which nothing here changes.
inline double roundEven(double x) {
  return std::nearbyint(x);
}
inline int roundIndex(double x) {
  return static_cast<int>(std::nearbyint(x));
}

// The number a text box holds: its leading number, blanks skipped; 0 when it starts with none
// (an empty or non-numeric box counts as 0).
double textValue(std::string_view text);

// All of `text` as one number, as std::from_chars reads it (no blanks, no '+', in any locale);
// false, `out` untouched, when it is not one or is out of range.
bool parseReal(std::string_view text, double& out);
bool parseReal(std::string_view text, float& out);

// A number as a text box shows it: the shortest text that reads back as the same value, "0"
// for -0. A Single is written as a Single, so 12.1 stays "12.1".
std::string plainNumber(double v);
std::string plainNumber(float v);

}  // namespace quorvel
