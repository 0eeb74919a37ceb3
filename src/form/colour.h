// A 24-bit RGB colour as the controls' colour properties hold it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quorvel {

struct Colour {
  std::uint32_t rgb = 0;  // 0xRRGGBB

  constexpr int red() const { return static_cast<int>((rgb >> 16) & 0xFF); }
  constexpr int green() const { return static_cast<int>((rgb >> 8) & 0xFF); }
  constexpr int blue() const { return static_cast<int>(rgb & 0xFF); }
  friend constexpr bool operator==(Colour, Colour) = default;
};

constexpr Colour RGB(int r, int g, int b) {
  return Colour{(static_cast<std::uint32_t>(r & 0xFF) << 16) |
                (static_cast<std::uint32_t>(g & 0xFF) << 8) | static_cast<std::uint32_t>(b & 0xFF)};
}

// "#rrggbb", lower case.
std::string toHex(Colour c);
// Accepts "#rrggbb" (either case); nothing else.
std::optional<Colour> parseHex(std::string_view text);

}  // namespace quorvel
