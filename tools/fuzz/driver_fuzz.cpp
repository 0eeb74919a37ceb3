// libFuzzer target over the driver's script language: any bytes, read as script lines, must
// be run or refused cleanly (status 1 or 2), never crash, leak or trip a sanitizer.
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "driver.h"

namespace {

// Ten virtual minutes a command keeps one input quick; longer waits only repeat the same ticks.
constexpr long long kLongestWait = 600000;

// Lines left out: waits beyond kLongestWait. Every other line runs, `set` included: a script may
// only write values the game's own inputs can produce.
bool runnable(std::string_view line) {
  std::vector<std::string> w;
  std::string reason;
  if (!quorvel::splitWords(line, w, reason) || w.empty()) return true;
  if ((w[0] == "advance" && w.size() == 2) || (w[0] == "until" && w.size() == 4)) {
    const std::string& ms = w.back();
    char* end = nullptr;
    const long long v = std::strtoll(ms.c_str(), &end, 10);
    if (ms.size() > 12 || v > kLongestWait) return false;
  }
  return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size > 8192) return 0;
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  std::ostringstream out, err;
  quorvel::Driver driver(out, err);
  int lineNo = 0;
  for (std::size_t start = 0; start <= text.size();) {
    std::size_t end = text.find('\n', start);
    if (end == std::string_view::npos) end = text.size();
    const std::string_view line = text.substr(start, end - start);
    ++lineNo;
    if (runnable(line) && driver.execute(line, lineNo) != quorvel::Driver::kOk) break;
    start = end + 1;
  }
  return 0;
}
