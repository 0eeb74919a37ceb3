// Handlers whose rules are still being written: they do nothing yet.
#include "ai/ai.h"
#include "match/match.h"
#include "shape/shape.h"

namespace quorvel {


}  // namespace quorvel
