// quorvel-drive's interpreter: runs a match form headless from a script, one command a line.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "form_paths.h"
#include "match/match_form.h"

namespace quorvel {

class Driver {
 public:
  enum Status { kOk = 0, kFailed = 1, kError = 2 };

  // Creates and loads the form; output lines go to `out`, complaints to `err`.
  Driver(std::ostream& out, std::ostream& err);

  // Runs every line of `in`; stops at the first failure or error and returns its status.
  Status run(std::istream& in);
  // One line (numbered `lineNo` in messages).
  Status execute(std::string_view line, int lineNo);

  MatchForm& form() { return *form_; }

 private:
  Status fail(int lineNo, const std::string& what);
  Status error(int lineNo, const std::string& what);
  Status call(const std::vector<std::string>& args, int lineNo);

  std::ostream& out_;
  std::ostream& err_;
  std::unique_ptr<MatchForm> form_;
  std::unique_ptr<FormPaths> paths_;
};

// Splits a script line into words: blanks separate, double quotes keep blanks and allow "",
// '#' outside quotes starts a comment. Returns false (with a reason) on an unclosed quote.
bool splitWords(std::string_view line, std::vector<std::string>& words, std::string& reason);

}  // namespace quorvel
