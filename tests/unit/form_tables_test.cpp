// The one table of controls: a control added to it exists everywhere at once (its member, its
// name, the driver's paths, the dump, the state view all come from the table), but its place in
// the stored layout is written by hand, so the table is held to the layout here.
#include <gtest/gtest.h>

#include "events/events.h"

namespace quorvel {
namespace {

TEST(Tables, EachControlOfTheTableHasAPlaceInTheStoredLayout) {
  auto f = newMatchForm();
  int controls = 0;
  forEachControl(*f, [&controls](Control& c) {
    EXPECT_GT(c.Width * c.Height, 0) << c.name << " has no place in the stored layout";
    ++controls;
  });
  EXPECT_GT(controls, 100);  // both windows: 142 controls
}

}  // namespace
}  // namespace quorvel
