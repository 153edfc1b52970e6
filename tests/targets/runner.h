#pragma once

#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "tests/targets/target_case.h"

namespace kiva::test {

/// What a text showed over the instants of its case, once or several times.
struct Seen {
  std::vector<std::vector<int>> rows;  ///< the outputs' bits
  std::vector<double> values;          ///< of the last output, by row; empty where none is shown
};

using Cases = std::vector<const TargetCase*>;

/// How the texts of one target are run. A new language adds one to the table, as a global
/// `const Registered`.
struct Runner {
  std::string option;  ///< of tarn
  bool tools = true;   ///< needs programs of others; else an evaluator of ours reads the text
  bool open = true;    ///< takes modules that are not finalised
  int random_programs = 6;
  /// Proves the texts of the cases by their benches; null where an evaluator of ours runs them.
  std::function<void(const Cases&)> prove = {};
  /// Writes the texts of the cases and runs them.
  std::function<std::vector<Seen>(const Cases&)> run = {};
};

inline std::ostream& operator<<(std::ostream& out, const Runner& runner) {
  return out << runner.option;
}

/// All of them, by static registration.
std::vector<Runner>& runners();

struct Registered {
  explicit Registered(Runner runner) { runners().push_back(std::move(runner)); }
};

/// A runner that takes the cases one by one.
std::function<std::vector<Seen>(const Cases&)> one_by_one(
    std::function<Seen(const TargetCase&)> run);

}  // namespace kiva::test
