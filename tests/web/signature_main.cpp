// The behaviour signature's matches in the WebAssembly build, under Node: each must run the very
// course the native build pins (expected_courses.h). "--trace N" writes match N's course instead,
// to diff against the native build's (QUORVEL_TRACE=N build/tests/quorvel_tests).
#include <cstdlib>
#include <iostream>
#include <iterator>
#include <string>

#include "course.h"
#include "expected_courses.h"

int main(int argc, char** argv) {
  using namespace quorvel::course;
  if (argc == 3 && std::string(argv[1]) == "--trace") {
    writeTrace(std::strtoul(argv[2], nullptr, 10) % signatureMatches().size(), std::cout);
    return 0;
  }
  const std::size_t n = signatureMatches().size();
  if (n != std::size(kCourses)) {
    std::cout << n << " signature matches, but " << std::size(kCourses) << " expected courses\n";
    return 1;
  }
  std::size_t parted = 0;
  for (std::size_t i = 0; i < n; ++i) {
    if (courseHash(i) == kCourses[i]) continue;
    std::cout << describe(i) << ": left its course\n";
    ++parted;
  }
  std::cout << n - parted << " of " << n << " signature matches ran their course\n";
  return parted == 0 ? 0 : 1;
}
