// The tables of MatchForm's members are the one list: each variable and each control in them
// has a name in the driver's registry, a place in the dump and a part in the harness's view of
// the state, and each control a place in the stored layout.
#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <vector>

#include "events/events.h"
#include "form_paths.h"
#include "state_view.h"

namespace quorvel {
namespace {

TEST(Tables, EachVariableIsNamedDumpedAndSeen) {
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

TEST(Tables, EachControlIsNamedPlacedDumpedAndSeen) {
  std::vector<std::string> names;
  auto each = [&names](const std::string& stem, std::initializer_list<int> ranges) {
    for (const int* r = ranges.begin(); r + 1 < ranges.end(); r += 2)
      for (int i = r[0]; i <= r[1]; ++i) names.push_back(stem + "(" + std::to_string(i) + ")");
  };
#define MATCH_CONTROL(kind, name) names.emplace_back(#name);
#define MATCH_CONTROLS(kind, name, ...) each(#name, {__VA_ARGS__});
#define LINKS_CONTROL(kind, name) names.emplace_back("LinksForm." #name);
#include "match/match_controls.def"
  auto f = newMatchForm();
  FormPaths paths(*f);
  const StateView view(*f);
  const std::string dump = paths.dump();
  for (const std::string& name : names) {
    std::string reason;
    Control* c = paths.control(name, &reason);
    ASSERT_NE(c, nullptr) << reason;
    EXPECT_EQ(c->name, name);
    EXPECT_GT(c->Width * c->Height, 0) << name << " has no place in the stored layout";
    EXPECT_NE(dump.find('"' + name + ".Left\":"), std::string::npos) << name;
    const std::uint64_t before = view.hash();
    c->Left += 1;
    EXPECT_NE(view.hash(), before) << name;
  }
}

}  // namespace
}  // namespace quorvel
