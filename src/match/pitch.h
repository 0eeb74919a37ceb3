// The pitch on screen, in twips: the grid of squares, where a picture stands on its square, the
// goals, and the places around the pitch that the rules move pictures to. The rules read these
// names, and so does the stored layout (ui/layout.cpp), which sets the same pictures out.
#pragma once

namespace quorvel {

// Two chessboards side by side; column 1 is at the left, row 1 at the top.
inline constexpr int kPitchColumns = 16;
inline constexpr int kPitchRows = 8;
inline constexpr double kSquareTwips = 900;
// The corner of square (1, 1); the grid ends at kPitchRight.
inline constexpr double kGridLeft = 480;
inline constexpr double kGridTop = 1920;
inline constexpr double kPitchRight = kGridLeft + kPitchColumns * kSquareTwips;

// The pitch picture frames the grid with a thin chalk line all round.
inline constexpr double kPitchFrameTwips = 15;
inline constexpr double kPitchWidth = kPitchColumns * kSquareTwips + 2 * kPitchFrameTwips;
inline constexpr double kPitchHeight = kPitchRows * kSquareTwips + 2 * kPitchFrameTwips;

// Every picture the rules move sits on a grain of this many twips (a pixel at scale 1): a walk
// moves one grain a tick and has arrived only when the positions are equal.
inline constexpr double kStepTwips = 15;

// Picture sizes. A player's picture stands kPlayerInset inside its square's corner.
inline constexpr double kPlayerTwips = 870;
inline constexpr double kPlayerInset = 15;
inline constexpr double kBallTwips = 330;
inline constexpr double kFlagTwips = 405;

// The corner of the picture of a player standing on square (col, row).
inline double playerLeft(double col) {
  return (col - 1) * kSquareTwips + (kGridLeft + kPlayerInset);
}
inline double playerTop(double row) {
  return (row - 1) * kSquareTwips + (kGridTop + kPlayerInset);
}

// A shot is a kick to a goal mouth: the column just off either end, on the two middle rows.
inline constexpr int kLeftMouthColumn = 0;
inline constexpr int kRightMouthColumn = kPitchColumns + 1;
inline constexpr int kMouthTopRow = kPitchRows / 2;
inline bool isMouthRow(int row) {
  return row == kMouthTopRow || row == kMouthTopRow + 1;
}

// The goals stand just outside the grid, as high as the mouth rows.
inline constexpr double kGoalWidth = 300;
inline constexpr double kGoalHeight = 2 * kSquareTwips;
inline constexpr double kGoalTop = kGridTop + (kMouthTopRow - 1) * kSquareTwips;
inline constexpr double kLeftGoalLeft = kGridLeft - kGoalWidth;
inline constexpr double kRightGoalLeft = kPitchRight;

// The ball for a kick-off: centred on the corner the four centre squares share.
inline constexpr double kCentreLeft = kGridLeft + kPitchColumns * kSquareTwips / 2;
inline constexpr double kCentreTop = kGridTop + kPitchRows * kSquareTwips / 2;
inline constexpr double kKickOffBallLeft = kCentreLeft - kBallTwips / 2;
inline constexpr double kKickOffBallTop = kCentreTop - kBallTwips / 2;

// Around the pitch: where a substitute appears (just above the pitch, about on the half-way
// line), where the half-time board shows, and where the two banners come to rest below.
inline constexpr double kBenchLeft = 7200;
inline constexpr double kBenchTop = 960;
inline constexpr double kBoardLeft = 5790;
inline constexpr double kBoardTop = 5000;
inline constexpr double kBannerRestTop[2] = {9160, 10300};

}  // namespace quorvel
