#include "form/basic.h"

#include <cctype>
#include <cmath>
#include <iomanip>
#include <limits>
#include <locale>
#include <sstream>

namespace quorvel {

namespace {

// Numbers are read and written through streams in the classic locale: the same text whatever
// locale the toolkit chose, and in every standard library (not all of them read or write reals
// with std::from_chars and std::to_chars).

// Whole numbers of up to 15 digits, the scores read many times a second, without a stream:
// such a number converts to the nearest real exactly as a stream reads it. False for any other
// text, which the stream then reads.
template <typename Real>
bool readWhole(std::string_view text, Real& out) {
  constexpr std::size_t kMostDigits = 15;  // below 2^53: held exactly before it is converted
  const bool negative = text[0] == '-';
  const std::string_view digits = text.substr(negative ? 1 : 0);
  if (digits.empty() || digits.size() > kMostDigits) return false;
  long long whole = 0;
  for (const char c : digits) {
    if (c < '0' || c > '9') return false;
    whole = whole * 10 + (c - '0');
  }
  out = negative ? -static_cast<Real>(whole) : static_cast<Real>(whole);
  return true;
}

// All of `text` as one number, as std::from_chars reads it: no blanks, no '+'. False when it is
// not one, or out of range; a number too small for a normal real reads as the nearest real
// (some libraries flag that as an error, some do not). Not "inf" nor "nan".
template <typename Real>
bool readAll(std::string_view text, Real& out) {
  if (text.empty() || text[0] == '+') return false;
  if (readWhole(text, out)) return true;
  if (text.find_first_not_of("0123456789.eE+-") != std::string_view::npos) return false;
  std::istringstream in{std::string(text)};
  in.imbue(std::locale::classic());
  Real v = 0;
  in >> std::noskipws >> v;
  if (in.fail() && !(v != 0 && std::isfinite(v) && std::fabs(v) < 1)) return false;
  in.clear();
  if (in.peek() != std::char_traits<char>::eof()) return false;
  // Too small even for the smallest real: some libraries read 0 and flag nothing.
  const std::string_view digits = text.substr(0, text.find_first_of("eE"));
  if (v == 0 && digits.find_first_of("123456789") != std::string_view::npos) return false;
  out = v;
  return true;
}

// A number too large reads as 0.
template <typename Real>
Real readNumber(std::string_view text) {
  Real v = 0;
  return readAll(text, v) ? v : 0;
}

template <typename Real>
std::string written(Real v, std::ios_base::fmtflags notation, int precision) {
  std::ostringstream out;
  out.imbue(std::locale::classic());
  out.setf(notation, std::ios_base::floatfield);
  out << std::setprecision(precision) << v;
  return out.str();
}

// A decimal as its digits and the power of ten of the first one: 1.25e+03 is {"125", 3}.
struct Decimal {
  std::string digits;
  int exponent = 0;
  std::string scientific() const {
    const std::string power = std::to_string(exponent < 0 ? -exponent : exponent);
    return digits.substr(0, 1) + (digits.size() > 1 ? "." + digits.substr(1) : "") +
           (exponent < 0 ? "e-" : "e+") + (power.size() < 2 ? "0" : "") + power;
  }
};

// The shortest decimal that reads back as v (v > 0), the nearest of that length. Of each length
// the nearest is tried, then the one a unit above it: just above a power of two the values that
// read back as v reach further up than down.
template <typename Real>
Decimal shortestDecimal(Real v) {
  Decimal d;
  for (int count = 1;; ++count) {
    const std::string text = written(v, std::ios_base::scientific, count - 1);  // d.ddde+xx
    const std::size_t e = text.find('e');
    d.digits = text.substr(0, 1) + (count > 1 ? text.substr(2, e - 2) : "");
    d.exponent = std::stoi(text.substr(e + 1));
    if (count == std::numeric_limits<Real>::max_digits10 || readNumber<Real>(text) == v) return d;
    Decimal up = d;
    std::size_t i = up.digits.size();
    while (i > 0 && up.digits[i - 1] == '9') up.digits[--i] = '0';
    if (i == 0) {
      up.digits = "1" + up.digits.substr(1);
      ++up.exponent;
    } else {
      ++up.digits[i - 1];
    }
    if (readNumber<Real>(up.scientific()) == v) return up;
  }
}

// The shortest text that reads back as v, in fixed or scientific notation, whichever is shorter
// (fixed on a tie), a whole number in fixed notation written exactly: what std::to_chars writes
// for a real.
template <typename Real>
std::string shortest(Real v) {
  if (v == 0) return "0";  // also for -0
  if (!std::isfinite(v)) return std::isnan(v) ? "nan" : v < 0 ? "-inf" : "inf";
  const std::string sign = v < 0 ? "-" : "";
  const Decimal d = shortestDecimal(v < 0 ? -v : v);
  const int count = static_cast<int>(d.digits.size());
  std::string fixed;
  if (d.exponent < 0)
    fixed = sign + "0." + std::string(static_cast<std::size_t>(-d.exponent - 1), '0') + d.digits;
  else if (d.exponent + 1 >= count)
    fixed = written(v, std::ios_base::fixed, 0);
  else
    fixed = sign + d.digits.substr(0, static_cast<std::size_t>(d.exponent) + 1) + "." +
            d.digits.substr(static_cast<std::size_t>(d.exponent) + 1);
  const std::string scientific = sign + d.scientific();
  return fixed.size() <= scientific.size() ? fixed : scientific;
}

}  // namespace

double textValue(std::string_view text) {
  std::size_t i = 0;
  while (i < text.size() && (text[i] == ' ' || text[i] == '\t')) ++i;
  std::size_t j = i;
  if (j < text.size() && (text[j] == '+' || text[j] == '-')) ++j;
  bool digits = false;
  while (j < text.size() && std::isdigit(static_cast<unsigned char>(text[j]))) ++j, digits = true;
  if (j < text.size() && text[j] == '.') {
    ++j;
    while (j < text.size() && std::isdigit(static_cast<unsigned char>(text[j]))) ++j, digits = true;
  }
  if (!digits) return 0;
  std::string_view number = text.substr(i, j - i);
  if (!number.empty() && number[0] == '+') number.remove_prefix(1);
  return readNumber<double>(number);
}

bool parseReal(std::string_view text, double& out) {
  return readAll(text, out);
}
bool parseReal(std::string_view text, float& out) {
  return readAll(text, out);
}

std::string plainNumber(double v) {
  return shortest(v);
}
std::string plainNumber(float v) {
  return shortest(v);
}

}  // namespace quorvel
