// The driver's registry: every form variable and control property by its name, as scripts and
// bug reports write it:
// "BallOwner", "PlayerCol(9)", "SubMinute(2,6)", "CDdest(3).Visible", "LinksForm.Picture1.Visible",
// "MatchForm.BackColor", "ActiveControl", "LastMessage.Text", "LastPage".
// Values read and write as text: numbers in their shortest exact form, "true"/"false",
// check boxes 0/1, colours "#rrggbb".
#pragma once

#include <array>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "match/match_form.h"

namespace quorvel {

// The values a script may write into a variable that the rules use to pick a player, a flag, a
// side, a die face or a square: anything else would reach past the end of the form's arrays.
struct Domain {
  const char* name;
  double lo, hi;
  double extra;  // one more allowed value outside lo..hi (OnlyFlag's "none"), or kNoOtherValue
};

class FormPaths {
 public:
  explicit FormPaths(MatchForm& f);

  // Each returns an empty string on success, otherwise the reason it could not be done.
  std::string get(std::string_view path, std::string& value) const;
  std::string set(std::string_view path, std::string_view value);
  // `same` tells whether the path reads `value`; numbers compare as numbers.
  std::string compare(std::string_view path, std::string_view value, bool& same) const;

  // A control by its name ("Cdice", "Player(3)", "LinksForm.CDend"), or nullptr; `reason`
  // tells why not.
  Control* control(std::string_view name, std::string* reason = nullptr) const;

  // The whole state as one line of JSON keyed by path.
  std::string dump() const;

  enum class Type { Int16, Int32, Int, Float, Double, Bool, String, Colour, Image };
  struct Field {
    Type type;
    void* p;
    bool checkBox = false;           // an int restricted to 0/1
    const ScrollBar* bar = nullptr;  // a scroll bar's Value stays within Min..Max
    Timer* timer = nullptr;          // Enabled/Interval go through the timer's setters
    bool interval = false;
    const Domain* domain = nullptr;  // the values a variable used as an index may take
  };

  // Every value of the state by its path, in the dump's order: the variables, every property
  // of every control, the timers, then the windows' own values.
  std::vector<std::pair<std::string, Field>> fields() const;
  // A value as a script reads it.
  static std::string text(const Field& field);

 private:
  struct Var {
    Type type;
    void* base;
    int dims;       // 0, 1 or 2
    int size[2];    // extents
    Domain limits;  // what a script may write, when the rules use the variable as an index
  };
  template <typename T>
  void addVar(const Domain& limits, T& v);
  template <typename T, std::size_t N>
  void addVar(const Domain& limits, std::array<T, N>& a);
  template <typename T, std::size_t N, std::size_t M>
  void addVar(const Domain& limits, std::array<std::array<T, M>, N>& a);

  // The windows' own values, which belong to no control: the window's colour, whether each
  // window is open, the focus, the last message and the last page asked for.
  std::array<std::pair<const char*, Field>, 7> windowValues() const;
  std::string resolve(std::string_view path, Field& out) const;
  std::string resolveVar(std::string_view path, Field& out) const;
  std::string resolveProperty(Control& c, std::string_view prop, Field& out) const;

  MatchForm& f_;
  std::vector<std::string> varOrder_;
  std::map<std::string, Var, std::less<>> vars_;
  std::map<std::string, Control*, std::less<>> controls_;  // full names
  std::set<std::string, std::less<>> arrays_;              // control arrays' names
  std::map<std::string, Timer*, std::less<>> timers_;
};

}  // namespace quorvel
