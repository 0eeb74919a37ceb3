// The game's pictures as shapes (shapes.h), described for the box they fill. A picture is named
// by the key a control's Image holds: "pitch", "goal", "ball", "player", "flag", "swatch",
// "die0" (blank) to "die6", "die7" (dimmed blank), "banner-title", "banner-site", "site",
// "advert1", "advert2", and the empty key (a plain panel). pictureKind() looks each one up.
#pragma once

#include <string>
#include <string_view>

#include "form/colour.h"
#include "ui/shading.h"
#include "ui/shapes.h"

namespace quorvel {

constexpr Rgba toRgba(Colour c, std::uint8_t alpha = 255) {
  return {static_cast<std::uint8_t>(c.red()), static_cast<std::uint8_t>(c.green()),
          static_cast<std::uint8_t>(c.blue()), alpha};
}

// What a picture shows besides its key.
struct Look {
  Rgba back;           // the control's BackColor: a shirt's colour, a swatch's colour
  std::string number;  // a player's shirt number
  Rgba numberInk;      // ... and its colours
  Rgba numberBack;
  Box numberBox;           // where the number box sits, as fractions of the picture's size
  bool opensLeft = false;  // a goal whose mouth faces left (the right-hand goal)
  bool hovered = false;    // a clickable picture under the mouse
  bool operator==(const Look&) const = default;
};

// Picture `key` filling `box`. The empty key is a plain panel in the back colour; an unknown
// key is an empty picture.
Drawing describePicture(std::string_view key, const Look& look, const Box& box);

// What the game knows of each picture key, all in one table: how it is drawn and how a window
// shows it.
struct PictureKind {
  std::string_view key;
  void (*describe)(Drawing& pic, const Box& box, const Look& look);
  bool bare = false;              // shown on a button, it has no face round it (the flag)
  bool coversItsRect = false;     // it paints every pixel of its box: nothing under it shows
  bool drawnOncePerSide = false;  // the player: its side's shirt serves every player wearing it
  int dieFace = 0;                // a die: the face it shows, 1..6; 0 blank or not a die
};
// The kind of picture `key`, or nullptr for a key the game does not know.
const PictureKind* pictureKind(std::string_view key);
// Whether picture `key` paints every pixel of its box.
bool coversItsRect(std::string_view key);
// The face 1..6 die picture `key` shows; 0 for a blank die or any other picture.
int dieFaceOf(std::string_view key);

// How a command button that shows a picture is at the moment.
struct ButtonState {
  bool down = false;
  bool focused = false;
  bool enabled = true;
};

// A die's button in two layers, which drawn in turn make describeButton's picture of face
// `face` (1..6): the blank die on its face (key "die0"), the same at every roll, and its pips.
Drawing describeDiePips(int face, const ButtonState& state, const Box& box);

// The "player" picture in its two layers, which drawn in turn make the whole picture: the
// shirt, the same for every player of a side (its back and its number's ink), and the number.
Drawing describeShirt(const Look& look, const Box& box);
Drawing describeShirtNumber(const Look& look, const Box& box);

// A button showing picture `key` (the die, a flag, the web-site button) filling `box`: its face
// and the picture on it. A bare button has no face.
Drawing describeButton(std::string_view key, const Look& look, const ButtonState& state,
                       const Box& box);
bool bareButton(std::string_view key);

}  // namespace quorvel
