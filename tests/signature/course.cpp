#include "course.h"

#include <cstring>
#include <functional>
#include <iomanip>
#include <memory>
#include <string_view>
#include <utility>

#include "form_paths.h"
#include "state_view.h"

namespace quorvel::course {

namespace {

using sim::LeftPlayer;
using sim::Mode;

// Settings in the order of sim::Settings: mode, IQ, left player, its IQ, 10-second moves,
// rank, Quickplay, Random Teams, automatic play.
std::vector<sim::Settings> makeMatches() {
  std::vector<sim::Settings> all;
  for (int iq = 1; iq <= 6; ++iq) {
    for (int left = 1; left <= 6; ++left)
      all.push_back({Mode::AI, iq, LeftPlayer::Mirror, left, (iq + left) % 2 == 1,
                     (iq * left) % 3 == 0, left != iq, left == 1, iq == left + 1});
    all.push_back(
        {Mode::AI, iq, LeftPlayer::Random, 0, iq % 2 == 0, iq > 3, iq != 2, iq == 5, iq % 3 == 0});
  }
  for (Mode mode : {Mode::Free, Mode::Keys})
    for (LeftPlayer left : {LeftPlayer::Random, LeftPlayer::Mirror})
      all.push_back({mode, 4, left, 5, left == LeftPlayer::Mirror, mode == Mode::Keys,
                     left == LeftPlayer::Random, true, mode == Mode::Free});
  return all;
}

// FNV-1a, 64 bits: the course's running hash.
void mixBytes(std::uint64_t& h, std::string_view bytes) {
  for (unsigned char c : bytes) h = (h ^ c) * 0x100000001b3ULL;
}

template <typename T>
void mixValue(std::uint64_t& h, T v) {
  char bytes[sizeof v];
  std::memcpy(bytes, &v, sizeof v);
  mixBytes(h, std::string_view(bytes, sizeof bytes));
}

// A value's bytes, to tell cheaply whether it changed.
std::string rawBytes(const FormPaths::Field& field) {
  using Type = FormPaths::Type;
  if (field.timer) return FormPaths::text(field);
  const auto bytes = [&field](std::size_t n) {
    return std::string(static_cast<const char*>(field.p), n);
  };
  switch (field.type) {
    case Type::Int16:
      return bytes(sizeof(Integer));
    case Type::Int32:
      return bytes(sizeof(Long));
    case Type::Int:
      return bytes(sizeof(int));
    case Type::Float:
      return bytes(sizeof(float));
    case Type::Double:
      return bytes(sizeof(double));
    case Type::Bool:
      return bytes(sizeof(bool));
    case Type::Colour:
      return bytes(sizeof(Colour));
    case Type::String:
    case Type::Image:
      break;
  }
  return *static_cast<const std::string*>(field.p);
}

const char* modeName(Mode m) {
  return m == Mode::Free ? "Free Mode" : m == Mode::Keys ? "Mouse vs Keys" : "Play Left vs AI";
}

}  // namespace

const std::vector<sim::Settings>& signatureMatches() {
  static const std::vector<sim::Settings> all = makeMatches();
  return all;
}

std::uint64_t seedOf(std::size_t match) {
  return sim::matchSeed(2026, match);
}

std::string describe(std::size_t match) {
  const sim::Settings& s = signatureMatches().at(match);
  std::string out = "match " + std::to_string(match) + ": " + modeName(s.mode) + ", ";
  out += s.mode == Mode::AI ? "the computer at IQ " : "the right side choosing as IQ ";
  out += std::to_string(s.iq) + " against ";
  out += s.left == LeftPlayer::Random ? std::string("random play")
                                      : "the mirrored IQ " + std::to_string(s.leftIq);
  out += s.tenSeconds ? ", 10-second moves" : ", 15-second moves";
  out += s.rank ? ", 50/50 balls by rank" : ", 50/50 balls by dice";
  out += s.quickplay ? ", Quickplay" : ", walking";
  if (s.randomTeams) out += ", Random Teams";
  if (s.autoPlay) out += ", automatic play";
  return out + ", seed " + std::to_string(seedOf(match));
}

std::uint64_t courseHash(std::size_t match) {
  std::uint64_t h = 0xcbf29ce484222325ULL;
  std::unique_ptr<StateView> view;
  std::uint64_t last = 0;
  auto atEnd = [&h](MatchForm& f) {
    mixBytes(h, FormPaths(f).dump());
    mixValue(h, f.Rnd.next());  // where the random source stands
  };
  auto onMoment = [&](MatchForm& f, std::string_view) {
    if (!view) view = std::make_unique<StateView>(f);
    const std::uint64_t state = view->hash();
    if (state == last) return;
    last = state;
    mixValue(h, f.Sched.now());
    mixValue(h, state);
  };
  const auto r = sim::playMatch(signatureMatches().at(match), seedOf(match), atEnd, onMoment);
  mixValue(h, r.finished);
  return h;
}

void writeTrace(std::size_t match, std::ostream& out) {
  std::vector<std::pair<std::string, FormPaths::Field>> fields;
  std::vector<std::string> seen;  // each value's bytes at the last moment
  auto onMoment = [&](MatchForm& f, std::string_view what) {
    const bool first = fields.empty();
    if (first) {
      fields = FormPaths(f).fields();
      seen.resize(fields.size());
    }
    for (std::size_t i = 0; i < fields.size(); ++i) {
      std::string now = rawBytes(fields[i].second);
      if (!first && now == seen[i]) continue;
      out << '@' << f.Sched.now() << ' ' << what << "  " << fields[i].first << '='
          << FormPaths::text(fields[i].second) << '\n';
      seen[i] = std::move(now);
    }
  };
  auto atEnd = [&out](MatchForm& f) {
    out << "random source at " << std::setprecision(17) << f.Rnd.next() << '\n';
  };
  const auto r = sim::playMatch(signatureMatches().at(match), seedOf(match), atEnd, onMoment);
  out << (r.finished ? "full time\n" : "stopped at the safety limit\n");
}

}  // namespace quorvel::course
