// quorvel-drive's interpreter: runs a match form headless from a script, one command a line.
#pragma once

#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
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

  // Every command's form ("click CONTROL", "until PATH VALUE MS", ...), as --help lists them.
  static std::vector<std::string> usages();

 private:
  using Words = std::vector<std::string>;
  // One handler a command; `w` holds the command's words, its count already checked.
  using Handler = Status (Driver::*)(const Words& w, int lineNo);
  struct Command {
    std::size_t minWords, maxWords;  // the command's own word included
    const char* usage;
    Handler handler;
  };
  static const std::vector<std::pair<std::string_view, Command>>& commands();
  static const Command* command(std::string_view name);

  Status fail(int lineNo, const std::string& what);
  Status error(int lineNo, const std::string& what);

  Status seed(const Words& w, int lineNo);
  Status rnd(const Words& w, int lineNo);
  Status click(const Words& w, int lineNo);
  Status press(const Words& w, int lineNo);
  Status scroll(const Words& w, int lineNo);
  Status type(const Words& w, int lineNo);
  Status browser(const Words& w, int lineNo);
  Status key(const Words& w, int lineNo);
  Status advance(const Words& w, int lineNo);
  Status until(const Words& w, int lineNo);
  Status place(const Words& w, int lineNo);
  Status ball(const Words& w, int lineNo);
  Status call(const Words& w, int lineNo);
  Status set(const Words& w, int lineNo);
  Status get(const Words& w, int lineNo);
  Status expect(const Words& w, int lineNo);
  Status dump(const Words& w, int lineNo);

  std::ostream& out_;
  std::ostream& err_;
  std::unique_ptr<MatchForm> form_;
  std::unique_ptr<FormPaths> paths_;
};

// Splits a script line into words: blanks separate, double quotes keep blanks and allow "",
// '#' outside quotes starts a comment. Returns false (with a reason) on an unclosed quote.
bool splitWords(std::string_view line, std::vector<std::string>& words, std::string& reason);

}  // namespace quorvel
