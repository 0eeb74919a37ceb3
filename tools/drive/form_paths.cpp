#include "form_paths.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <type_traits>

#include "match/codes.h"

namespace quorvel {

namespace {

template <typename T>
bool parseWhole(std::string_view s, T& out) {
  auto r = std::from_chars(s.data(), s.data() + s.size(), out);
  return r.ec == std::errc() && r.ptr == s.data() + s.size();
}

template <typename Real>
bool finiteReal(std::string_view s, Real& out) {
  return parseReal(s, out) && std::isfinite(out);
}

std::string quoted(std::string_view s) {
  return "'" + std::string(s) + "'";
}

// NAME, NAME(I) or NAME(I,J); indices whole numbers.
bool splitIndices(std::string_view path, std::string_view& name, std::vector<long>& idx,
                  std::string& err) {
  const auto open = path.find('(');
  if (open == std::string_view::npos) {
    name = path;
    return true;
  }
  if (path.back() != ')') {
    err = "malformed path " + quoted(path);
    return false;
  }
  name = path.substr(0, open);
  std::string_view inner = path.substr(open + 1, path.size() - open - 2);
  while (true) {
    const auto comma = inner.find(',');
    std::string_view part = inner.substr(0, comma);
    long v;
    if (!parseWhole(part, v)) {
      err = "malformed index " + quoted(part) + " in " + quoted(path);
      return false;
    }
    idx.push_back(v);
    if (comma == std::string_view::npos) break;
    inner = inner.substr(comma + 1);
  }
  return true;
}

std::string escapeJson(const std::string& s) {
  std::string out = "\"";
  for (char ch : s) {
    const auto c = static_cast<unsigned char>(ch);
    if (ch == '"')
      out += "\\\"";
    else if (ch == '\\')
      out += "\\\\";
    else if (ch == '\n')
      out += "\\n";
    else if (ch == '\r')
      out += "\\r";
    else if (ch == '\t')
      out += "\\t";
    else if (c < 0x20) {
      char buf[8];
      std::snprintf(buf, sizeof buf, "\\u%04x", c);
      out += buf;
    } else
      out += ch;
  }
  return out + "\"";
}

}  // namespace

// ---- registration ---------------------------------------------------------------------------

template <typename T>
void FormPaths::addVar(const Domain& limits, T& v) {
  Type t;
  if constexpr (std::is_same_v<T, Integer>)
    t = Type::Int16;
  else if constexpr (std::is_same_v<T, Long>)
    t = Type::Int32;
  else if constexpr (std::is_same_v<T, Single>)
    t = Type::Float;
  else if constexpr (std::is_same_v<T, double>)
    t = Type::Double;
  else
    t = Type::String;
  vars_[limits.name] = Var{t, &v, 0, {0, 0}, limits};
  varOrder_.emplace_back(limits.name);
}

template <typename T, std::size_t N>
void FormPaths::addVar(const Domain& limits, std::array<T, N>& a) {
  addVar(limits, a[0]);
  Var& v = vars_[limits.name];
  v.dims = 1;
  v.size[0] = static_cast<int>(N);
}

template <typename T, std::size_t N, std::size_t M>
void FormPaths::addVar(const Domain& limits, std::array<std::array<T, M>, N>& a) {
  addVar(limits, a[0][0]);
  Var& v = vars_[limits.name];
  v.dims = 2;
  v.size[0] = static_cast<int>(N);
  v.size[1] = static_cast<int>(M);
}

FormPaths::FormPaths(MatchForm& f) : f_(f) {
#define MATCH_VAR(type, name, start, lowest, highest, orAlso) \
  addVar(Domain{#name, lowest, highest, orAlso}, f.name);
#define MATCH_ARRAY(type, extent, name, lowest, highest) \
  addVar(Domain{#name, lowest, highest, kNoOtherValue}, f.name);
#define MATCH_TABLE(type, rows, columns, name, lowest, highest) \
  addVar(Domain{#name, lowest, highest, kNoOtherValue}, f.name);
#include "match/match_variables.def"
#undef MATCH_VAR
#undef MATCH_ARRAY
#undef MATCH_TABLE

  forEachControl(f, [this](Control& c) { controls_[c.name] = &c; });
#define MATCH_CONTROL(kind, member)
#define MATCH_CONTROLS(kind, member, ...) arrays_.emplace(#member);
#define LINKS_CONTROL(kind, member)
#include "match/match_controls.def"
#undef MATCH_CONTROL
#undef MATCH_CONTROLS
#undef LINKS_CONTROL
#define MATCH_TIMER(name, interval, enabled, onShow) timers_[#name] = &f.name;
#include "match/match_timers.def"
#undef MATCH_TIMER
  timers_[f.LinksForm.Timer1.name()] = &f.LinksForm.Timer1;
}

// ---- resolution -----------------------------------------------------------------------------

Control* FormPaths::control(std::string_view name, std::string* reason) const {
  if (auto it = controls_.find(name); it != controls_.end()) return it->second;
  if (reason) {
    std::string_view base;
    std::vector<long> idx;
    std::string err;
    if (!splitIndices(name, base, idx, err))
      *reason = err;
    else if (auto a = arrays_.find(base); a != arrays_.end()) {
      *reason = idx.empty() ? quoted(base) + " is a control array and needs an index"
                            : "no control " + quoted(name) + " (the array " + quoted(base) +
                                  " has no such index)";
    } else
      *reason = "unknown control " + quoted(name);
  }
  return nullptr;
}

std::string FormPaths::resolveVar(std::string_view path, Field& out) const {
  std::string_view name;
  std::vector<long> idx;
  std::string err;
  if (!splitIndices(path, name, idx, err)) return err;
  auto it = vars_.find(name);
  if (it == vars_.end()) {
    if (controls_.count(name) || arrays_.count(name) || timers_.count(name))
      return quoted(name) + " is a control: name one of its properties, as in " +
             std::string(name) + ".Visible";
    return "unknown name " + quoted(name);
  }
  const Var& v = it->second;
  if (static_cast<int>(idx.size()) != v.dims) {
    return quoted(name) + (v.dims == 0 ? " takes no index"
                                       : " needs " + std::to_string(v.dims) +
                                             (v.dims == 1 ? " index" : " indices"));
  }
  long offset = 0;
  for (int d = 0; d < v.dims; ++d) {
    if (idx[d] < 0 || idx[d] >= v.size[d])
      return "index " + std::to_string(idx[d]) + " out of range 0.." +
             std::to_string(v.size[d] - 1) + " for " + quoted(name);
    offset = offset * v.size[d] + idx[d];
  }
  std::size_t elem = 0;
  switch (v.type) {
    case Type::Int16:
      elem = sizeof(Integer);
      break;
    case Type::Int32:
      elem = sizeof(Long);
      break;
    case Type::Float:
      elem = sizeof(Single);
      break;
    case Type::Double:
      elem = sizeof(double);
      break;
    default:
      elem = sizeof(std::string);
      break;
  }
  out = Field{v.type, static_cast<char*>(v.base) + offset * static_cast<long>(elem)};
  const bool limited = v.limits.lo != kAnyLow || v.limits.hi != kAnyHigh;
  out.domain = limited ? &v.limits : nullptr;
  return {};
}

namespace {

using Field = FormPaths::Field;
using Type = FormPaths::Type;

// Every property of `c`, by its name in scripts, in the dump's order (the table of
// properties): a check box's Value is 0 or 1, a scroll bar's stays within its range.
std::vector<std::pair<const char*, Field>> propertiesOf(Control& c) {
  std::vector<std::pair<const char*, Field>> out;
#define QUORVEL_FIELD(type, member, script, value, start) \
  out.emplace_back(script, Field{Type::value, &k.member});
  {
    Control& k = c;
    QUORVEL_COMMON_PROPERTIES(QUORVEL_FIELD)
  }
  switch (c.kind) {
#define QUORVEL_KIND_FIELDS(kind, words)              \
  case Kind::kind: {                                  \
    auto& k = static_cast<kind&>(c);                  \
    QUORVEL_##kind##_PROPERTIES(QUORVEL_FIELD) break; \
  }
    QUORVEL_CONTROL_KINDS(QUORVEL_KIND_FIELDS)
#undef QUORVEL_KIND_FIELDS
  }
#undef QUORVEL_FIELD
  for (auto& [name, field] : out) {
    if (std::string_view(name) != "Value") continue;
    if (c.kind == Kind::CheckBox) field.checkBox = true;
    if (c.kind == Kind::ScrollBar) field.bar = &static_cast<ScrollBar&>(c);
  }
  return out;
}

}  // namespace

std::string FormPaths::resolveProperty(Control& c, std::string_view prop, Field& out) const {
  for (const auto& [name, field] : propertiesOf(c))
    if (prop == name) return out = field, std::string();
  return "a " + std::string(kindName(c.kind)) + " has no property " + quoted(prop);
}

std::array<std::pair<const char*, FormPaths::Field>, 7> FormPaths::windowValues() const {
  return {{{"MatchForm.BackColor", {Type::Colour, &f_.BackColor}},
           {"MatchForm.Visible", {Type::Bool, &f_.Visible}},
           {"LinksForm.Visible", {Type::Bool, &f_.LinksForm.Visible}},
           {"ActiveControl", {Type::String, &f_.ActiveControl}},
           {"LastMessage.Title", {Type::String, &f_.LastMessage.Title}},
           {"LastMessage.Text", {Type::String, &f_.LastMessage.Text}},
           {"LastPage", {Type::String, &f_.LastPage}}}};
}

std::string FormPaths::resolve(std::string_view path, Field& out) const {
  for (const auto& [name, field] : windowValues())
    if (path == name) return out = field, "";

  const auto dot = path.rfind('.');
  if (dot == std::string_view::npos) return resolveVar(path, out);
  const std::string_view owner = path.substr(0, dot), prop = path.substr(dot + 1);
  if (auto t = timers_.find(owner); t != timers_.end()) {
    if (prop == "Enabled")
      out = {Type::Bool, nullptr};
    else if (prop == "Interval")
      out = {Type::Int, nullptr};
    else
      return "a timer has no property " + quoted(prop);
    out.timer = t->second;
    out.interval = prop == "Interval";
    return {};
  }
  std::string reason;
  Control* c = control(owner, &reason);
  if (c == nullptr) return reason;
  return resolveProperty(*c, prop, out);
}

// ---- values ---------------------------------------------------------------------------------

namespace {

std::string read(const FormPaths::Field& fl) {
  using T = FormPaths::Type;
  if (fl.timer)
    return fl.interval ? std::to_string(fl.timer->Interval())
                       : (fl.timer->Enabled() ? "true" : "false");
  switch (fl.type) {
    case T::Int16:
      return std::to_string(*static_cast<Integer*>(fl.p));
    case T::Int32:
      return std::to_string(*static_cast<Long*>(fl.p));
    case T::Int:
      return std::to_string(*static_cast<int*>(fl.p));
    case T::Float:
      return plainNumber(*static_cast<Single*>(fl.p));
    case T::Double:
      return plainNumber(*static_cast<double*>(fl.p));
    case T::Bool:
      return *static_cast<bool*>(fl.p) ? "true" : "false";
    case T::Colour:
      return toHex(*static_cast<Colour*>(fl.p));
    case T::String:
    case T::Image:
      return *static_cast<std::string*>(fl.p);
  }
  return {};
}

bool numeric(FormPaths::Type t) {
  using T = FormPaths::Type;
  return t == T::Int16 || t == T::Int32 || t == T::Int || t == T::Float || t == T::Double;
}

std::string outsideDomain(const FormPaths::Field& fl, double v) {
  const Domain* d = fl.domain;
  if (d == nullptr || (v >= d->lo && v <= d->hi) || v == d->extra) return {};
  std::string range = plainNumber(d->lo) + ".." + plainNumber(d->hi);
  if (d->extra != kNoOtherValue) range += " or " + plainNumber(d->extra);
  return "value " + plainNumber(v) + " out of range " + range + " for " + quoted(d->name);
}

// Checks that `text` fits the field; writes it only when `write` is set. Returns the reason it
// does not fit, or "".
std::string wrongKind(std::string_view text, const char* what) {
  return "value " + quoted(text) + " is not " + what;
}

std::string storeTimer(const FormPaths::Field& fl, std::string_view text, bool write) {
  if (fl.interval) {
    long v;
    if (!parseWhole(text, v) || v < 0 || v > 65535)
      return wrongKind(text, "an interval of 0..65535 ms");
    if (write) fl.timer->setInterval(static_cast<int>(v));
  } else {
    if (text != "true" && text != "false") return wrongKind(text, "true or false");
    if (write) fl.timer->setEnabled(text == "true");
  }
  return {};
}

std::string storeWhole(const FormPaths::Field& fl, std::string_view text, bool write) {
  using T = FormPaths::Type;
  long v;
  if (!parseWhole(text, v)) return wrongKind(text, "a whole number");
  long lo =
      fl.type == T::Int16 ? std::numeric_limits<Integer>::min() : std::numeric_limits<Long>::min();
  long hi =
      fl.type == T::Int16 ? std::numeric_limits<Integer>::max() : std::numeric_limits<Long>::max();
  if (fl.checkBox) lo = 0, hi = 1;
  if (fl.bar) lo = std::min(fl.bar->Min, fl.bar->Max), hi = std::max(fl.bar->Min, fl.bar->Max);
  if (v < lo || v > hi)
    return "value " + std::to_string(v) + " out of range " + std::to_string(lo) + ".." +
           std::to_string(hi);
  if (auto err = outsideDomain(fl, static_cast<double>(v)); !err.empty()) return err;
  if (write) {
    if (fl.type == T::Int16)
      *static_cast<Integer*>(fl.p) = static_cast<Integer>(v);
    else if (fl.type == T::Int32)
      *static_cast<Long*>(fl.p) = static_cast<Long>(v);
    else
      *static_cast<int*>(fl.p) = static_cast<int>(v);
  }
  return {};
}

template <typename Real>
std::string storeReal(const FormPaths::Field& fl, std::string_view text, bool write) {
  Real v;
  if (!finiteReal(text, v)) return wrongKind(text, "a number");
  if (auto err = outsideDomain(fl, v); !err.empty()) return err;
  if (write) *static_cast<Real*>(fl.p) = v;
  return {};
}

std::string store(const FormPaths::Field& fl, std::string_view text, bool write) {
  using T = FormPaths::Type;
  if (fl.timer) return storeTimer(fl, text, write);
  switch (fl.type) {
    case T::Int16:
    case T::Int32:
    case T::Int:
      return storeWhole(fl, text, write);
    case T::Float:
      return storeReal<Single>(fl, text, write);
    case T::Double:
      return storeReal<double>(fl, text, write);
    case T::Bool:
      if (text != "true" && text != "false") return wrongKind(text, "true or false");
      if (write) *static_cast<bool*>(fl.p) = text == "true";
      return {};
    case T::Colour: {
      auto c = parseHex(text);
      if (!c) return wrongKind(text, "a colour #rrggbb");
      if (write) *static_cast<Colour*>(fl.p) = *c;
      return {};
    }
    case T::String:
    case T::Image:
      if (write) *static_cast<std::string*>(fl.p) = std::string(text);
      return {};
  }
  return {};
}

}  // namespace

std::string FormPaths::get(std::string_view path, std::string& value) const {
  Field fl{};
  if (auto err = resolve(path, fl); !err.empty()) return err;
  value = read(fl);
  return {};
}

std::string FormPaths::set(std::string_view path, std::string_view value) {
  Field fl{};
  if (auto err = resolve(path, fl); !err.empty()) return err;
  if (auto err = store(fl, value, false); !err.empty()) return err;
  return store(fl, value, true);
}

std::string FormPaths::compare(std::string_view path, std::string_view value, bool& same) const {
  Field fl{};
  if (auto err = resolve(path, fl); !err.empty()) return err;
  const std::string now = read(fl);
  const bool isNumber = fl.timer ? fl.interval : numeric(fl.type);
  if (!isNumber) {
    if (fl.type == Type::Colour && !fl.timer) {
      auto c = parseHex(value);
      if (!c) return "value " + quoted(value) + " is not a colour #rrggbb";
      same = *c == *static_cast<Colour*>(fl.p);
      return {};
    }
    if ((fl.type == Type::Bool || fl.timer) && value != "true" && value != "false")
      return "value " + quoted(value) + " is not true or false";
    same = now == value;
    return {};
  }
  // Numbers compare as numbers, each read in the variable's own precision.
  if (fl.type == Type::Float && !fl.timer) {
    float v;
    if (!finiteReal(value, v)) return "value " + quoted(value) + " is not a number";
    same = v == *static_cast<Single*>(fl.p);
    return {};
  }
  double expected, actual;
  if (!finiteReal(value, expected)) return "value " + quoted(value) + " is not a number";
  finiteReal(now, actual);
  same = expected == actual;
  return {};
}

std::vector<std::pair<std::string, FormPaths::Field>> FormPaths::fields() const {
  std::vector<std::pair<std::string, Field>> all;
  auto addVar = [&](const std::string& key) {
    Field fl{};
    resolveVar(key, fl);
    all.emplace_back(key, fl);
  };
  for (const std::string& name : varOrder_) {
    const Var& v = vars_.at(name);
    if (v.dims == 0) addVar(name);
    for (int i = 0; v.dims > 0 && i < v.size[0]; ++i) {
      const std::string row = name + "(" + std::to_string(i);
      if (v.dims == 1) addVar(row + ")");
      for (int j = 0; v.dims == 2 && j < v.size[1]; ++j)
        addVar(row + "," + std::to_string(j) + ")");
    }
  }
  forEachControl(f_, [&](Control& c) {
    for (const auto& [prop, field] : propertiesOf(c)) all.emplace_back(c.name + "." + prop, field);
  });
  for (const auto& [name, t] : timers_) {
    Field en{Type::Bool, nullptr};
    en.timer = t;
    all.emplace_back(name + ".Enabled", en);
    Field iv{Type::Int, nullptr};
    iv.timer = t;
    iv.interval = true;
    all.emplace_back(name + ".Interval", iv);
  }
  for (const auto& [name, field] : windowValues()) all.emplace_back(name, field);
  return all;
}

std::string FormPaths::text(const Field& field) {
  return read(field);
}

std::string FormPaths::dump() const {
  std::string out = "{";
  for (const auto& [key, fl] : fields()) {
    if (out.size() > 1) out += ",";
    out += escapeJson(key) + ":";
    const bool plain = fl.timer ? true : (numeric(fl.type) || fl.type == Type::Bool);
    out += plain ? read(fl) : escapeJson(read(fl));
  }
  return out + "}";
}

}  // namespace quorvel
