#include "state_view.h"

#include <algorithm>
#include <cstring>

#include "form_paths.h"

namespace quorvel {

namespace {

std::uint64_t finish(std::uint64_t x) {
  x = (x ^ (x >> 30)) * 0xbf58476d1ce4e5b9ULL;
  x = (x ^ (x >> 27)) * 0x94d049bb133111ebULL;
  return x ^ (x >> 31);
}

constexpr std::uint64_t kOdd = 0x9e3779b97f4a7c15ULL;

// Four independent lanes, so that hashing two thousand values after every tick keeps the
// processor busy rather than waiting on one chain of multiplications. Each step is a
// bijection of its lane, so one changed value always changes the result.
struct Lanes {
  std::uint64_t a = 1, b = 2, c = 3, d = 4;

  template <typename P, typename Read>
  void add(const std::vector<P>& values, Read read) {
    std::size_t i = 0;
    for (; i + 4 <= values.size(); i += 4) {
      a = (a + read(values[i])) * kOdd;
      b = (b + read(values[i + 1])) * kOdd;
      c = (c + read(values[i + 2])) * kOdd;
      d = (d + read(values[i + 3])) * kOdd;
    }
    for (; i < values.size(); ++i) a = (a + read(values[i])) * kOdd;
  }
  // A text by its length and its first and last eight bytes: all of it up to sixteen
  // letters (a name, a score, the clock), in constant time for the long tool tips. The whole
  // text of every value is in the final state.
  void add(const std::string& s) {
    std::uint64_t head = 0, tail = 0;
    if (s.size() >= 8) {
      std::memcpy(&head, s.data(), 8);
      std::memcpy(&tail, s.data() + s.size() - 8, 8);
    } else {
      for (char ch : s) head = head << 8 | static_cast<unsigned char>(ch);
    }
    b = (b + s.size()) * kOdd;
    c = (c + head) * kOdd;
    d = (d + tail) * kOdd;
  }
  std::uint64_t result() const { return finish(finish(finish(finish(a) ^ b) ^ c) ^ d); }
};

template <typename T>
std::uint64_t bits(T v) {
  std::uint64_t out = 0;
  std::memcpy(&out, &v, sizeof v);
  return out;
}

}  // namespace

// The name tables are left out: they are filled at load and only read.
StateView::StateView(MatchForm& f)
    : StateView([&f] {
        std::vector<FormPaths::Field> read;
        for (const auto& [path, field] : FormPaths(f).fields())
          if (path.rfind("NameHead(", 0) != 0 && path.rfind("NameTail(", 0) != 0)
            read.push_back(field);
        return read;
      }()) {}

StateView::StateView(const std::vector<FormPaths::Field>& fields) {
  using Type = FormPaths::Type;
  for (const FormPaths::Field& field : fields) {
    if (field.timer) {
      timers_.push_back(field.timer);
      continue;
    }
    switch (field.type) {
      case Type::Int16:
        int16_.push_back(static_cast<const Integer*>(field.p));
        break;
      case Type::Int32:
      case Type::Int:
        int32_.push_back(static_cast<const std::int32_t*>(field.p));
        break;
      case Type::Float:
        singles_.push_back(static_cast<const float*>(field.p));
        break;
      case Type::Double:
        doubles_.push_back(static_cast<const double*>(field.p));
        break;
      case Type::Bool:
        bools_.push_back(static_cast<const bool*>(field.p));
        break;
      case Type::Colour:
        colours_.push_back(static_cast<const Colour*>(field.p));
        break;
      case Type::String:
      case Type::Image:
        texts_.push_back(static_cast<const std::string*>(field.p));
        break;
    }
  }
}

std::uint64_t StateView::hash() const {
  Lanes h;
  auto value = [](const auto* v) { return bits(*v); };
  h.add(int16_, value);
  h.add(int32_, value);
  h.add(singles_, value);
  h.add(doubles_, value);
  h.add(bools_, value);
  h.add(colours_, value);
  h.add(timers_,
        [](const Timer* t) { return bits(t->Interval()) << 1 | (t->Enabled() ? 1U : 0U); });
  for (const std::string* v : texts_) h.add(*v);
  return h.result();
}

}  // namespace quorvel
