// What the command-line tools share in reading their options: the same messages for the same
// mistakes, and arguments quoted so that a stray control byte never reaches the terminal.
#pragma once

#include <charconv>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>

namespace quorvel::options {

enum class Parsed { Run, Help, Bad };

// An argument as a message shows it: long ones shortened, control bytes escaped.
inline std::string shown(std::string_view s) {
  constexpr std::size_t kLongest = 40;
  std::string out;
  for (std::size_t i = 0; i < s.size() && i < kLongest; ++i) {
    const auto c = static_cast<unsigned char>(s[i]);
    if (c >= 0x20 && c < 0x7f) {
      out += static_cast<char>(c);
    } else {
      char hex[5];
      std::snprintf(hex, sizeof hex, "\\x%02x", c);
      out += hex;
    }
  }
  if (s.size() > kLongest) out += "...";
  return out;
}

// True when all of `text` is a whole number that fits `v`.
inline bool whole(std::string_view text, std::uint64_t& v) {
  const auto r = std::from_chars(text.data(), text.data() + text.size(), v);
  return r.ec == std::errc() && r.ptr == text.data() + text.size();
}

// Reads `text` as a whole number lo..hi for `option`; says what is wrong when it is not.
inline bool wholeNumber(const char* tool, const char* option, std::string_view text,
                        std::uint64_t lo, std::uint64_t hi, std::uint64_t& v) {
  if (whole(text, v) && v >= lo && v <= hi) return true;
  std::fprintf(stderr, "%s: %s takes a whole number %llu..%llu, not '%s'\n", tool, option,
               static_cast<unsigned long long>(lo), static_cast<unsigned long long>(hi),
               shown(text).c_str());
  return false;
}

inline Parsed unknownOption(const char* tool, std::string_view option) {
  std::fprintf(stderr, "%s: unknown option '%s' (--help lists them)\n", tool,
               shown(option).c_str());
  return Parsed::Bad;
}

// The value that follows option argv[i], moving i onto it; null, said so, when there is none.
inline const char* valueOf(const char* tool, int argc, char** argv, int& i) {
  if (i + 1 >= argc) {
    std::fprintf(stderr, "%s: %s needs a value\n", tool, argv[i]);
    return nullptr;
  }
  return argv[++i];
}

// The exit status when the tool stops after reading its options (printing `usage` for
// --help), or -1 when it runs.
inline int stopStatus(Parsed p, const char* usage) {
  switch (p) {
    case Parsed::Help:
      std::fputs(usage, stdout);
      return 0;
    case Parsed::Bad:
      return 2;
    case Parsed::Run:
      break;
  }
  return -1;
}

}  // namespace quorvel::options
