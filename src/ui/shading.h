// Shades of a colour as the window has always shaded them (Qt's 16-bit HSV, rounding at each
// step), so that a picture described here looks as it did when Qt shaded it.
#pragma once

#include "ui/shapes.h"

namespace quorvel {

// A colour shaded: its value raised or lowered to `percent` (100 or more) per cent, a raised
// value beyond full taking saturation away.
Rgba lighter(Rgba c, int percent);
Rgba darker(Rgba c, int percent);
// Its HSL lightness, 0..255.
int lightness(Rgba c);

}  // namespace quorvel
