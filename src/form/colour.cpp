#include "form/colour.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <numbers>

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

namespace {

// sRGB component 0..255 to linear light 0..1; a table, as every colour measure starts here.
double linear(int component) {
  static const std::array<double, 256> kTable = [] {
    std::array<double, 256> t{};
    for (std::size_t i = 0; i < t.size(); ++i) {
      const double c = static_cast<double>(i) / 255.0;
      t[i] = c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
    }
    return t;
  }();
  return kTable[static_cast<std::size_t>(component & 0xFF)];
}

double squared(double x) {
  return x * x;
}

// x to the 7th, which CIEDE2000 takes of chromas, by multiplying: pow is its slow part.
double seventh(double x) {
  const double x2 = x * x;
  return x2 * x2 * x2 * x;
}

constexpr double k25To7 = 6103515625.0;

// The length of (a, b); Lab values are far from overflow, so std::hypot's care is not needed.
double chroma(double a, double b) {
  return std::sqrt(a * a + b * b);
}

// Linear light 0..1 (clipped) to an sRGB component 0..255.
int encoded(double linearLight) {
  const double c = std::clamp(linearLight, 0.0, 1.0);
  const double s = c <= 0.0031308 ? 12.92 * c : 1.055 * std::pow(c, 1 / 2.4) - 0.055;
  return static_cast<int>(std::lround(s * 255));
}

double luminance(Colour c) {
  return 0.2126 * linear(c.red()) + 0.7152 * linear(c.green()) + 0.0722 * linear(c.blue());
}

double degrees(double radians) {
  return radians * 180 / std::numbers::pi;
}

double radians(double degrees) {
  return degrees * std::numbers::pi / 180;
}

}  // namespace

double contrastRatio(Colour a, Colour b) {
  const double la = luminance(a), lb = luminance(b);
  return (std::max(la, lb) + 0.05) / (std::min(la, lb) + 0.05);
}

Lab toLab(Colour c) {
  const double r = linear(c.red()), g = linear(c.green()), b = linear(c.blue());
  // XYZ relative to the D65 white point.
  const double x = (0.4124 * r + 0.3576 * g + 0.1805 * b) / 0.95047;
  const double y = 0.2126 * r + 0.7152 * g + 0.0722 * b;
  const double z = (0.0193 * r + 0.1192 * g + 0.9505 * b) / 1.08883;
  auto f = [](double t) {
    constexpr double kEpsilon = 216.0 / 24389, kKappa = 24389.0 / 27;
    return t > kEpsilon ? std::cbrt(t) : (kKappa * t + 16) / 116;
  };
  return {116 * f(y) - 16, 500 * (f(x) - f(y)), 200 * (f(y) - f(z))};
}

// Sharma, Wu and Dalal's formulation, with their test data in the unit tests.
double deltaE(const Lab& x, const Lab& y) {
  const double c1 = chroma(x.a, x.b), c2 = chroma(y.a, y.b);
  const double cMean7 = seventh((c1 + c2) / 2);
  const double g = 0.5 * (1 - std::sqrt(cMean7 / (cMean7 + k25To7)));
  const double a1 = (1 + g) * x.a, a2 = (1 + g) * y.a;
  const double cp1 = chroma(a1, x.b), cp2 = chroma(a2, y.b);
  auto hue = [](double b, double a) {
    if (a == 0 && b == 0) return 0.0;
    const double h = degrees(std::atan2(b, a));
    return h < 0 ? h + 360 : h;
  };
  const double h1 = hue(x.b, a1), h2 = hue(y.b, a2);

  const double dL = y.L - x.L, dC = cp2 - cp1;
  double dh = 0;
  if (cp1 * cp2 != 0) {
    dh = h2 - h1;
    if (dh > 180) dh -= 360;
    if (dh < -180) dh += 360;
  }
  const double dH = 2 * std::sqrt(cp1 * cp2) * std::sin(radians(dh / 2));

  const double lMean = (x.L + y.L) / 2, cpMean = (cp1 + cp2) / 2;
  double hMean = h1 + h2;
  if (cp1 * cp2 != 0) {
    if (std::abs(h1 - h2) <= 180)
      hMean = (h1 + h2) / 2;
    else
      hMean = h1 + h2 < 360 ? (h1 + h2 + 360) / 2 : (h1 + h2 - 360) / 2;
  }
  const double t = 1 - 0.17 * std::cos(radians(hMean - 30)) + 0.24 * std::cos(radians(2 * hMean)) +
                   0.32 * std::cos(radians(3 * hMean + 6)) -
                   0.20 * std::cos(radians(4 * hMean - 63));
  const double dTheta = 30 * std::exp(-squared((hMean - 275) / 25));
  const double cpMean7 = seventh(cpMean);
  const double rc = 2 * std::sqrt(cpMean7 / (cpMean7 + k25To7));
  const double sl = 1 + 0.015 * squared(lMean - 50) / std::sqrt(20 + squared(lMean - 50));
  const double sc = 1 + 0.045 * cpMean, sh = 1 + 0.015 * cpMean * t;
  const double rt = -std::sin(radians(2 * dTheta)) * rc;
  const double l = dL / sl, c = dC / sc, h = dH / sh;
  return std::sqrt(l * l + c * c + h * h + rt * c * h);
}

double deltaE(Colour x, Colour y) {
  return deltaE(toLab(x), toLab(y));
}

const char* visionName(Vision v) {
  switch (v) {
    case Vision::Typical:
      return "typical eye";
    case Vision::Protanopia:
      return "protanopia";
    case Vision::Deuteranopia:
      return "deuteranopia";
    case Vision::Tritanopia:
      return "tritanopia";
  }
  return "?";
}

Colour simulate(Colour c, Vision v) {
  using Matrix = std::array<std::array<double, 3>, 3>;
  // Machado et al. (2009), severity 1.0 of protanomaly, deuteranomaly and tritanomaly.
  static constexpr Matrix kProtan = {{{0.152286, 1.052583, -0.204868},
                                      {0.114503, 0.786281, 0.099216},
                                      {-0.003882, -0.048116, 1.051998}}};
  static constexpr Matrix kDeutan = {{{0.367322, 0.860646, -0.227968},
                                      {0.280085, 0.672501, 0.047413},
                                      {-0.011820, 0.042940, 0.968881}}};
  static constexpr Matrix kTritan = {{{1.255528, -0.076749, -0.178779},
                                      {-0.078411, 0.930809, 0.147602},
                                      {0.004733, 0.691367, 0.303900}}};
  if (v == Vision::Typical) return c;
  const Matrix& m = v == Vision::Protanopia     ? kProtan
                    : v == Vision::Deuteranopia ? kDeutan
                                                : kTritan;
  const double in[3] = {linear(c.red()), linear(c.green()), linear(c.blue())};
  int out[3];
  for (std::size_t i = 0; i < 3; ++i)
    out[i] = encoded(m[i][0] * in[0] + m[i][1] * in[1] + m[i][2] * in[2]);
  return RGB(out[0], out[1], out[2]);
}

}  // namespace quorvel
