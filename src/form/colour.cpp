#include "form/colour.h"

#include <cstdio>

namespace quorvel {

std::string toHex(Colour c) {
  char buf[8];
  std::snprintf(buf, sizeof buf, "#%02x%02x%02x", c.red(), c.green(), c.blue());
  return buf;
}

std::optional<Colour> parseHex(std::string_view text) {
  if (text.size() != 7 || text[0] != '#') return std::nullopt;
  std::uint32_t v = 0;
  for (char ch : text.substr(1)) {
    int d;
    if (ch >= '0' && ch <= '9')
      d = ch - '0';
    else if (ch >= 'a' && ch <= 'f')
      d = ch - 'a' + 10;
    else if (ch >= 'A' && ch <= 'F')
      d = ch - 'A' + 10;
    else
      return std::nullopt;
    v = v * 16 + static_cast<std::uint32_t>(d);
  }
  return Colour{v};
}

}  // namespace quorvel
