// A 24-bit RGB colour as the controls' colour properties hold it.
#pragma once

#include <array>
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

// How readable one colour is on another: the WCAG 2 contrast ratio of their relative
// luminances, from 1 (equally light) to 21 (black on white). It ignores hue on purpose.
double contrastRatio(Colour a, Colour b);

// A colour as the eye orders it: CIE L*a*b* of the sRGB colour under daylight (D65).
struct Lab {
  double L, a, b;
};
Lab toLab(Colour c);
// The CIEDE2000 colour difference: about 1 is the smallest difference a person notices,
// 25 and more tells two colours apart at a glance, hue included.
double deltaE(const Lab& x, const Lab& y);
double deltaE(Colour x, Colour y);

// The eyes colours are chosen for: the typical eye, and the full (dichromatic) forms of the
// three colour deficiencies, red-blind, green-blind and blue-blind.
enum class Vision { Typical, Protanopia, Deuteranopia, Tritanopia };
constexpr std::array<Vision, 4> kVisions = {Vision::Typical, Vision::Protanopia,
                                            Vision::Deuteranopia, Vision::Tritanopia};
// "typical eye", "protanopia", ...
const char* visionName(Vision v);
// The colour a typical eye would have to see to see as `v` sees `c`: the model of Machado,
// Oliveira and Fernandes (2009) at full severity, applied in linear RGB. Colours are then
// compared as usual (contrastRatio, deltaE) to tell what that eye can tell apart.
Colour simulate(Colour c, Vision v);

}  // namespace quorvel
