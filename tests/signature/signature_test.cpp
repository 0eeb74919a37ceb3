// The behaviour signature: each seeded match of the list runs the course it always has. A
// course is the virtual time and the whole state at every moment something happened, then the
// final state, so a rule whose effect is over before full time (a flash, a walking path, a
// value that lives for a second) changes it as surely as the score does.
//
// A change made on purpose pastes the new table that the failure prints into
// expected_courses.h and says "Signature: N" in its commit message, N as this test prints it.
//
// QUORVEL_TRACE=N in the environment makes the test binary write match N's course instead
// of testing; the copy of the last binary that passed (QUORVEL_PASSED) is the expected build.
// QUORVEL_SIGNATURE_BRIEF, as `make mutants` sets it, asks only whether a match leaves its
// course: the matches stop at the first that does, and QUORVEL_SIGNATURE_FIRST=N plays match N
// first (the one that caught the same fault last time).
#include <gtest/gtest.h>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <iterator>
#include <memory>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "course.h"
#include "expected_courses.h"

namespace quorvel::course {
namespace {

const bool kTraceOnly = [] {
  const char* match = std::getenv("QUORVEL_TRACE");
  if (match == nullptr) return false;
  std::ios::sync_with_stdio(false);
  writeTrace(std::strtoul(match, nullptr, 10) % signatureMatches().size(), std::cout);
  std::cout.flush();
  std::exit(0);
}();

// Every match's course hash; when `brief`, from match `first` on, and those after the first
// that parts keep their expected hash, unplayed.
std::vector<std::uint64_t> playAll(bool brief, std::size_t first) {
  const std::size_t n = signatureMatches().size();
  std::vector<std::uint64_t> got(std::begin(kCourses), std::end(kCourses));
  std::atomic<std::size_t> next{0};
  std::atomic<bool> parted{false};
  auto work = [&] {
    for (std::size_t i; !parted && (i = next.fetch_add(1)) < n;) {
      const std::size_t k = (first + i) % n;
      got[k] = courseHash(k);
      if (brief && got[k] != kCourses[k]) parted = true;
    }
  };
  std::thread other(work);
  work();
  other.join();
  return got;
}

// The first line at which two traces differ: the moment, and the value each build gave.
std::string firstDifference(const std::string& expected, const std::string& actual) {
  std::istringstream e(expected), a(actual);
  for (std::string x, y; std::getline(e, x), std::getline(a, y), e || a;)
    if (x != y) return "parted from its course:\n  expected " + x + "\n  got      " + y + "\n";
  return "ran its course exactly as the kept build did: the table is stale\n";
}

// Where the match parted from its expected course: the trace of the last build that passed
// (kept beside the tests) against this build's.
std::string whereItParted(std::size_t match) {
  const std::string reference = QUORVEL_PASSED;
  const std::string how =
      "tests/signature/course-diff " + std::to_string(match) + " writes both traces for diff.\n";
  if (!std::filesystem::exists(reference))
    return "No build that passed is kept in " + reference + " to say where; " + how;
  std::string expected;
  std::unique_ptr<FILE, int (*)(FILE*)> pipe(
      popen(("QUORVEL_TRACE=" + std::to_string(match) + " " + reference).c_str(), "r"), pclose);
  char buffer[1 << 16];
  for (std::size_t n; pipe && (n = fread(buffer, 1, sizeof buffer, pipe.get())) > 0;)
    expected.append(buffer, n);
  std::ostringstream actual;
  writeTrace(match, actual);
  return "match " + std::to_string(match) + " " + firstDifference(expected, actual.str()) + how;
}

// Keeps this binary, which ran every course as expected, to tell where a later build parts.
void keepThisBuild() {
  std::error_code ignored;
  std::filesystem::copy_file("/proc/self/exe", QUORVEL_PASSED,
                             std::filesystem::copy_options::overwrite_existing, ignored);
}

TEST(Signature, EverySeededMatchRunsTheCourseItAlwaysHas) {
  ASSERT_EQ(signatureMatches().size(), std::size(kCourses));
  const bool brief = std::getenv("QUORVEL_SIGNATURE_BRIEF") != nullptr;
  const char* played = std::getenv("QUORVEL_SIGNATURE_FIRST");
  const std::vector<std::uint64_t> got = playAll(
      brief, played != nullptr ? std::strtoul(played, nullptr, 10) % std::size(kCourses) : 0);
  std::string parted, table;
  std::uint64_t signature = 0xcbf29ce484222325ULL;
  std::size_t first = got.size();
  for (std::size_t i = 0; i < got.size(); ++i) {
    signature = (signature ^ got[i]) * 0x100000001b3ULL;
    table += (i % 3 == 0 ? "    " : " ") + std::to_string(got[i]) + "ULL,";
    if (i % 3 == 2 || i + 1 == got.size())
      table += "  // " + std::to_string(i - i % 3) + ".." + std::to_string(i) + "\n";
    if (got[i] == kCourses[i]) continue;
    parted += describe(i) + "\n";
    first = std::min(first, i);
  }
  if (first == got.size()) {
    keepThisBuild();
    return;
  }
  if (brief) {  // not every match was played: no table
    ADD_FAILURE() << "These matches left their course:\n" << parted;
    return;
  }
  ADD_FAILURE()
      << "These matches left their course:\n"
      << parted << whereItParted(first) << "Signature: " << signature
      << "\nFor a change made on purpose, kCourses in tests/signature/expected_courses.h becomes:\n"
      << table;
}

}  // namespace
}  // namespace quorvel::course
