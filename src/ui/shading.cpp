// Shades of a colour in 16-bit HSV, each step rounded where Qt rounds it.
#include "ui/shading.h"

#include <algorithm>
#include <cstdint>

namespace quorvel {

namespace {

constexpr int kFull = 65535;     // a 16-bit channel at full strength
constexpr int kNoHue = 65535;    // the hue of a grey
constexpr int kHueTurn = 36000;  // hundredths of a degree

// Qt's rounding of a non-negative float, edge cases included.
int roundHalfUp(float d) {
  return static_cast<int>(d + 0.5F);  // NOLINT(bugprone-incorrect-roundings)
}

// A 16-bit channel as a fraction of full strength.
float unit(int sixteen) {
  return static_cast<float>(sixteen) / static_cast<float>(kFull);
}

// A 16-bit channel to 8 bits, rounded to the nearest.
std::uint8_t eightBits(int x) {
  return static_cast<std::uint8_t>((2 * x + 257) / 514);
}

struct Hsv {
  int hue, saturation, value;  // hue in hundredths of a degree, the others 0..kFull
};

Hsv toHsv(Rgba c) {
  const float r = unit(c.r * 257), g = unit(c.g * 257), b = unit(c.b * 257);
  const float max = std::max({r, g, b}), min = std::min({r, g, b}), delta = max - min;
  Hsv hsv{kNoHue, 0, roundHalfUp(max * kFull)};
  if (delta <= 1e-5F) return hsv;
  hsv.saturation = roundHalfUp(delta / max * kFull);
  float hue = 0;
  if (r == max)
    hue = (g - b) / delta;
  else if (g == max)
    hue = 2.0F + (b - r) / delta;
  else
    hue = 4.0F + (r - g) / delta;
  hue *= 60.0F;
  if (hue < 0) hue += 360.0F;
  hsv.hue = roundHalfUp(hue * 100);
  return hsv;
}

Rgba fromHsv(const Hsv& hsv, std::uint8_t alpha) {
  auto eight = [](float x) { return eightBits(roundHalfUp(x * kFull)); };
  if (hsv.saturation == 0 || hsv.hue == kNoHue) {
    const std::uint8_t grey = eightBits(hsv.value);
    return {grey, grey, grey, alpha};
  }
  const float h = hsv.hue == kHueTurn ? 0 : static_cast<float>(hsv.hue) / 6000.0F;
  const float s = unit(hsv.saturation), v = unit(hsv.value);
  const int sector = static_cast<int>(h);
  const float f = h - static_cast<float>(sector), p = v * (1.0F - s), q = v * (1.0F - s * f),
              t = v * (1.0F - s * (1.0F - f));
  switch (sector) {
    case 0:
      return {eight(v), eight(t), eight(p), alpha};
    case 1:
      return {eight(q), eight(v), eight(p), alpha};
    case 2:
      return {eight(p), eight(v), eight(t), alpha};
    case 3:
      return {eight(p), eight(q), eight(v), alpha};
    case 4:
      return {eight(t), eight(p), eight(v), alpha};
    default:
      return {eight(v), eight(p), eight(q), alpha};
  }
}

}  // namespace

Rgba lighter(Rgba c, int percent) {
  Hsv hsv = toHsv(c);
  int value = percent * hsv.value / 100;
  if (value > kFull) {
    hsv.saturation = std::max(0, hsv.saturation - (value - kFull));
    value = kFull;
  }
  hsv.value = value;
  return fromHsv(hsv, c.a);
}

Rgba darker(Rgba c, int percent) {
  Hsv hsv = toHsv(c);
  hsv.value = hsv.value * 100 / percent;
  return fromHsv(hsv, c.a);
}

int lightness(Rgba c) {
  const float max = unit(std::max({c.r, c.g, c.b}) * 257);
  const float min = unit(std::min({c.r, c.g, c.b}) * 257);
  return eightBits(roundHalfUp(0.5F * (max + min) * kFull));
}

}  // namespace quorvel
