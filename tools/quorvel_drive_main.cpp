// quorvel-drive: runs the match form headless from scripts named on the command line, or from
// standard input. Exit status 0 when every line ran, 1 on a failed expect/until, 2 on a line
// that could not be carried out.
#include <fstream>
#include <iostream>

#include "driver.h"

int main(int argc, char** argv) {
  quorvel::Driver driver(std::cout, std::cerr);
  if (argc < 2) return driver.run(std::cin);
  for (int i = 1; i < argc; ++i) {
    std::ifstream in(argv[i]);
    if (!in) {
      std::cerr << argv[i] << ": cannot be read" << std::endl;
      return quorvel::Driver::kError;
    }
    if (auto status = driver.run(in); status != quorvel::Driver::kOk) return status;
  }
  return quorvel::Driver::kOk;
}
