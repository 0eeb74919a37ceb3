// The table of form variables is the one list: each variable in it has a name in the driver's
// registry, a place in the dump, and a part in the harness's view of the state.
#include <gtest/gtest.h>

#include <string>

#include "events/events.h"
#include "form_paths.h"
#include "state_view.h"

namespace quorvel {
namespace {

TEST(Variables, EachOneOfTheTableIsNamedDumpedAndSeen) {
  const std::string names[] = {
#define MATCH_VAR(type, name, ...) #name,
#define MATCH_ARRAY(type, extent, name, ...) #name "(1)",
#define MATCH_TABLE(type, rows, columns, name, ...) #name "(1,1)",
#include "match/match_variables.def"
  };
  auto f = newMatchForm();
  FormPaths paths(*f);
  const StateView view(*f);
  const std::string dump = paths.dump();
  for (const std::string& name : names) {
    std::string value;
    ASSERT_EQ(paths.get(name, value), "") << name;
    EXPECT_NE(dump.find('"' + name + "\":"), std::string::npos) << name;
    const std::uint64_t before = view.hash();
    ASSERT_EQ(paths.set(name, value == "1" ? "0" : "1"), "") << name;
    if (name.rfind("Name", 0) != 0) {  // the name tables are filled at load and only read
      EXPECT_NE(view.hash(), before) << name;
    }
  }
}

}  // namespace
}  // namespace quorvel
