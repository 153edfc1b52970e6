#pragma once

// Expressions over signals that are present, absent or Bottom in each instant, all states tried.

#include <array>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace kiva {

class Expression;
class Signal;

/// Status and value, as the expressions have them.
struct Rails {
  bool status, value;
};

inline bool is_present(const Rails& r) {
  return r.status && !r.value;
}

/// A signal in an instant, whatever numbers instants.
using Moment = std::pair<const Signal*, int>;
using States = std::vector<std::pair<Moment, Rails>>;

/// The expression in that instant.
Rails rails(const Expression* e, int instant, const States& states);

/// A text that only expressions which read the same have in common; "" for one too long to try.
std::string expression_key(const Expression* e);

/// Calls `see` with each state of the signals; false, without a call, where there are too many.
template <class See>
[[nodiscard]] bool for_each_state(const std::set<Moment>& moments, See see) {
  constexpr size_t most = 6;
  if (moments.size() > most) return false;
  static constexpr std::array<Rails, 3> each{{{false, false}, {true, false}, {false, true}}};
  size_t count = 1;
  for (size_t i = 0; i < moments.size(); ++i) count *= each.size();
  for (size_t n = 0; n < count; ++n) {
    States states;
    size_t rest = n;
    for (const Moment& moment : moments) {
      states.emplace_back(moment, each[rest % each.size()]);
      rest /= each.size();
    }
    see(states);
  }
  return true;
}

}  // namespace kiva
