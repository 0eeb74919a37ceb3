// What assistive technology learns of the pictures we paint. A picture that acts as a button
// (the die, a flag, a 50/50 die, a colour swatch, a banner) reports the role of a button, its
// name from the model and a press action; any other picture reports a graphic and what it
// shows. The players and the ball, painted on one layer, are that layer's children, each a
// graphic. The names are the game's own words (ui/accessible_names.h), asked for when read.
#pragma once

namespace quorvel {

// Installs, once for the program, the factory that gives our pictures their interfaces.
void installPictureAccessibility();

}  // namespace quorvel
