// The game's code values, named once. The variables keep the numbers the game has always
// stored (the driver reads and writes them as numbers), so each name is the number itself,
// typed as the variable that holds it.
#pragma once

#include "form/basic.h"

namespace quorvel {

// TeamTurn, KickOffSide, sideOf(): the side to play.
inline constexpr Single kLeftSide = 1;   // players 1..11, the mouse
inline constexpr Single kRightSide = 2;  // players 12..22, the keys or the computer

// DiceReady.
inline constexpr Single kDiceReady = 1;    // the side to play may roll
inline constexpr Single kDiceRolled = -1;  // rolled this turn, or no match yet

// ClickFrom: where the next flag click comes from.
inline constexpr Single kFromMouse = 0;  // a mouse click, or none pending
inline constexpr Single kFromComputer = 33;
inline constexpr Single kFromKeypad = 77;

// ContestWin: the 50/50 dice contest of the kick in flight.
inline constexpr Integer kNoContest = 0;
inline constexpr Integer kLeftWonContest = 11;
inline constexpr Integer kRightWonContest = 22;

// OnlyFlag: 0..7 the one flag offered, or none (no flag or several).
inline constexpr Single kNoOnlyFlag = 11;

// GameOn: no match yet, or a match has been started (never cleared again).
inline constexpr Single kNoMatchYet = 0;
inline constexpr Single kGameOn = 7;

// PlaceMode: how the placement walk treats the ball.
inline constexpr Single kPlaceKickOff = 34;   // the ball drifts to the centre spot
inline constexpr Single kPlaceAfterSub = 23;  // the ball stays at its owner's feet

// EditLock: team names and colours.
inline constexpr Integer kNamesOpen = 1;
inline constexpr Integer kNamesLocked = 3;

}  // namespace quorvel
