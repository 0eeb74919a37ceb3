// The whole state of a form as one number, read value by value (every variable and every
// property of every control, as the driver's registry names them), fast enough to look at after
// every tick of a match: the behaviour signature hashes each moment of a course with it, and the
// harness checks with it that what must change nothing changed nothing.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "form_paths.h"
#include "match/match_form.h"

namespace quorvel {

class StateView {
 public:
  explicit StateView(MatchForm& f);
  explicit StateView(const std::vector<FormPaths::Field>& fields);  // those values alone
  std::uint64_t hash() const;

 private:
  std::vector<const Integer*> int16_;
  std::vector<const std::int32_t*> int32_;
  std::vector<const float*> singles_;
  std::vector<const double*> doubles_;
  std::vector<const bool*> bools_;
  std::vector<const Colour*> colours_;
  std::vector<const std::string*> texts_;
  std::vector<const Timer*> timers_;
};

}  // namespace quorvel
