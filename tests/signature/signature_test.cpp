// The behaviour signature: each seeded match of the list runs the course it always has. A
// course is the virtual time and the whole state at every moment something happened, then the
// final state, so a rule whose effect is over before full time (a flash, a walking path, a
// value that lives for a second) changes it as surely as the score does.
//
// A change made on purpose pastes the new table that the failure prints and says
// "Signature: N" in its commit message, N as this test prints it.
//
// QUORVEL_TRACE=N in the environment makes the test binary write match N's course instead
// of testing; the copy of the last binary that passed (QUORVEL_PASSED) is the expected build.
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

namespace quorvel::course {
namespace {

constexpr std::uint64_t kCourses[] = {
    14983894606526101415ULL,  // 0
    17334528287677641491ULL,  // 1
    4456164548272265181ULL,   // 2
    1562686276526596056ULL,   // 3
    18005168776728736520ULL,  // 4
    17910943221250522242ULL,  // 5
    17597135057756751271ULL,  // 6
    3604803947760758756ULL,   // 7
    13078884793934372287ULL,  // 8
    7156726213004593522ULL,   // 9
    9749582535961137601ULL,   // 10
    10870398335921868321ULL,  // 11
    16041303284660238872ULL,  // 12
    15607370136190687328ULL,  // 13
    7138842070819884914ULL,   // 14
    14653046553928027950ULL,  // 15
    1076562767297957667ULL,   // 16
    5137220507654312301ULL,   // 17
    14560891660032689380ULL,  // 18
    2474094456040142691ULL,   // 19
    17754545313084797099ULL,  // 20
    3902888729975754432ULL,   // 21
    1538681732286370417ULL,   // 22
    8866325359763493289ULL,   // 23
    12545120494499516163ULL,  // 24
    13696288688040173917ULL,  // 25
    18432251554121226763ULL,  // 26
    7906020536044153639ULL,   // 27
    5544836233813864460ULL,   // 28
    6771907690840527547ULL,   // 29
    10385976920839733220ULL,  // 30
    618420109815920832ULL,    // 31
    13457331910097865357ULL,  // 32
    9487890899250633194ULL,   // 33
    5646397170765690292ULL,   // 34
    3801017131858893401ULL,   // 35
    17656908057844203491ULL,  // 36
    15876035911068088222ULL,  // 37
    17103322428617541479ULL,  // 38
    15785090473240703113ULL,  // 39
    2542831288703641047ULL,   // 40
    2347512248542008675ULL,   // 41
    13402776938887215216ULL,  // 42
    1554267347660946047ULL,   // 43
    5152222360555908258ULL,   // 44
    4843171522121442760ULL,   // 45
};

const bool kTraceOnly = [] {
  const char* match = std::getenv("QUORVEL_TRACE");
  if (match == nullptr) return false;
  std::ios::sync_with_stdio(false);
  writeTrace(std::strtoul(match, nullptr, 10) % signatureMatches().size(), std::cout);
  std::cout.flush();
  std::exit(0);
}();

std::vector<std::uint64_t> playAll() {
  const std::size_t n = signatureMatches().size();
  std::vector<std::uint64_t> got(n);
  std::atomic<std::size_t> next{0};
  auto work = [&] {
    for (std::size_t k; (k = next.fetch_add(1)) < n;) got[k] = courseHash(k);
  };
  std::thread other(work);
  work();
  other.join();
  return got;
}

std::vector<std::string> lines(const std::string& text) {
  std::vector<std::string> out;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) out.push_back(line);
  return out;
}

// The first line at which two traces differ: the moment, and the value each build gave.
std::string firstDifference(const std::vector<std::string>& expected,
                            const std::vector<std::string>& actual) {
  for (std::size_t i = 0; i < std::max(expected.size(), actual.size()); ++i) {
    const std::string e = i < expected.size() ? expected[i] : "(the course had ended)";
    const std::string a = i < actual.size() ? actual[i] : "(the course had ended)";
    if (e != a) return "parted from its course:\n  expected " + e + "\n  got      " + a + "\n";
  }
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
  return "match " + std::to_string(match) + " " +
         firstDifference(lines(expected), lines(actual.str())) + how;
}

// Keeps this binary, which ran every course as expected, to tell where a later build parts.
void keepThisBuild() {
  std::error_code ignored;
  std::filesystem::copy_file("/proc/self/exe", QUORVEL_PASSED,
                             std::filesystem::copy_options::overwrite_existing, ignored);
}

TEST(Signature, EverySeededMatchRunsTheCourseItAlwaysHas) {
  ASSERT_EQ(signatureMatches().size(), std::size(kCourses));
  const std::vector<std::uint64_t> got = playAll();
  std::string parted, table;
  std::uint64_t signature = 0xcbf29ce484222325ULL;
  std::size_t first = got.size();
  for (std::size_t i = 0; i < got.size(); ++i) {
    signature = (signature ^ got[i]) * 0x100000001b3ULL;
    table += "    " + std::to_string(got[i]) + "ULL,  // " + std::to_string(i) + "\n";
    if (got[i] == kCourses[i]) continue;
    parted += describe(i) + "\n";
    first = std::min(first, i);
  }
  if (first == got.size()) {
    keepThisBuild();
    return;
  }
  const bool brief = std::getenv("QUORVEL_SIGNATURE_BRIEF") != nullptr;
  ADD_FAILURE()
      << "These matches left their course:\n"
      << parted << (brief ? "" : whereItParted(first)) << "Signature: " << signature
      << "\nFor a change made on purpose, kCourses in tests/signature/signature_test.cpp becomes:\n"
      << table;
}

}  // namespace
}  // namespace quorvel::course
