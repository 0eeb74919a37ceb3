// quorvel-drive: runs the match form headless from scripts named on the command line, or from
// standard input. Exit status 0 when every line ran, 1 on a failed expect/until, 2 on a line
// that could not be carried out, or on a script that cannot be read.
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string_view>

#include "driver.h"

namespace {

const char* const kUsage =
    "usage: quorvel-drive [SCRIPT...]\n"
    "Runs each script in turn on one headless match form, or standard input when none is\n"
    "named; '-' names standard input too, and '--' ends the options.\n"
    "Exit status: 0 every line ran, 1 a failed expect or until, 2 a line that could not be\n"
    "carried out or a script that cannot be read. docs/driver.md tells each command.\n"
    "Commands, one a line ('#' starts a comment):\n";

// Opens a script, or says on standard error why it cannot be read.
bool open(const char* name, std::ifstream& in) {
  std::error_code ec;
  if (std::filesystem::is_directory(name, ec)) {
    std::cerr << "quorvel-drive: " << name << ": is a directory, not a script" << std::endl;
    return false;
  }
  errno = 0;
  in.open(name);
  if (!in) {
    std::cerr << "quorvel-drive: " << name << ": cannot be read"
              << (errno != 0 ? std::string(": ") + std::strerror(errno) : std::string())
              << std::endl;
    return false;
  }
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  int firstScript = 1;
  for (; firstScript < argc; ++firstScript) {
    const std::string_view a = argv[firstScript];
    if (a == "--") {
      ++firstScript;
      break;
    }
    if (a == "--help" || a == "-h") {
      std::cout << kUsage;
      for (const std::string& usage : quorvel::Driver::usages()) std::cout << "  " << usage << '\n';
      return 0;
    }
    if (a.size() > 1 && a[0] == '-') {
      std::cerr << "quorvel-drive: unknown option '" << argv[firstScript] << "' (--help tells more)"
                << std::endl;
      return quorvel::Driver::kError;
    }
    break;
  }

  quorvel::Driver driver(std::cout, std::cerr);
  if (firstScript >= argc) return driver.run(std::cin);
  for (int i = firstScript; i < argc; ++i) {
    if (std::string_view(argv[i]) == "-") {
      if (auto status = driver.run(std::cin); status != quorvel::Driver::kOk) return status;
      continue;
    }
    std::ifstream in;
    if (!open(argv[i], in)) return quorvel::Driver::kError;
    if (auto status = driver.run(in); status != quorvel::Driver::kOk) return status;
    if (in.bad()) {
      std::cerr << "quorvel-drive: " << argv[i] << ": reading stopped part way" << std::endl;
      return quorvel::Driver::kError;
    }
  }
  return quorvel::Driver::kOk;
}
