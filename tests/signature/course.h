// The course of a match: the whole state at every moment something happened, from Start to
// the final whistle. The behaviour signature pins each seeded match's course by one hash;
// the trace writes it out value by value, so that two builds' traces diff at the first
// value that parted.
#pragma once

#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

#include "sim.h"

namespace quorvel::course {

// The seeded matches the signature plays: every mode, every IQ against every IQ and against
// random play, both match lengths, both 50/50 rules, with and without "Quickplay", random
// teams and automatic play.
const std::vector<sim::Settings>& signatureMatches();
std::uint64_t seedOf(std::size_t match);
// "match 17: Play Left vs AI, IQ 3 against the mirrored IQ 5, ..., seed 0x..."
std::string describe(std::size_t match);

// One hash of match `match`'s whole course: the virtual time and the state at every moment a
// person's input or a timer's tick changed anything, then the whole final state and where the
// random source stands.
std::uint64_t courseHash(std::size_t match);

// The course as text: a line "@MS WHAT  PATH=VALUE" for each value that a moment changed
// (every value at the first moment), WHAT the input or the timer that ran at MS ms.
void writeTrace(std::size_t match, std::ostream& out);

}  // namespace quorvel::course
