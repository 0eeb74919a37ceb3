#include "form/basic.h"

#include <cctype>
#include <charconv>

namespace quorvel {

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
  double v = 0;
  std::from_chars(number.data(), number.data() + number.size(), v);
  return v;
}

namespace {

template <typename Real>
std::string shortest(Real v) {
  if (v == 0) return "0";  // also for -0
  char buf[64];
  const auto res = std::to_chars(buf, buf + sizeof buf, v);
  return std::string(buf, res.ptr);
}

}  // namespace

std::string plainNumber(double v) {
  return shortest(v);
}
std::string plainNumber(float v) {
  return shortest(v);
}

}  // namespace quorvel
