#pragma once

#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "tarn/model/module.h"
#include "tarn/model/rules.h"

namespace kiva::test {

/// The next text is read as the first of its process. Its modules stay in the tables until the
/// next.
void restart_reader();

/// A source text read and its module "main" compiled under a set of rules; not finalised, so the
/// set and reset wires are inputs of its equations. The counters of statement names start at 0.
class Compiled {
 public:
  explicit Compiled(const std::string& text, const Rules& rules = Rules::sound());
  /// A module made by hand, which is taken over.
  explicit Compiled(Module* module, const Rules& rules = Rules::sound());
  ~Compiled();
  Compiled(const Compiled&) = delete;
  Compiled& operator=(const Compiled&) = delete;

  /// False when the process would have ended or an exception came; `report` tells.
  bool ok() const { return report_.empty(); }
  const std::string& report() const { return report_; }
  Module* module() const { return module_; }
  Bddexpressionwood* wood() const { return module_->getBddWood(); }
  const Rules& rules() const { return rules_; }

  /// The right member of a variable's equation; fails the test when there is none.
  bdd equation(const std::string& variable) const;

 private:
  void run(const std::function<void()>& make_module);

  Rules rules_;
  Module* module_ = nullptr;
  std::string report_;
};

/// Checks an equation against a formula over variables (bdd/expression_parser.h).
void expect_equation(const Compiled& compiled, const std::string& variable,
                     const std::string& formula);

/// One instant's inputs: those present, and the two wires.
struct Stimulus {
  std::set<std::string> present;
  bool set = false;
  bool reset = false;
};

/// Runs a compiled module by its equations, in the order of their dates, one instant at a time. As
/// after finalisation, an input that is not present is Zero, and so is an occurrence of a signal
/// that nothing writes, and all occurrences say whether it is absent: the constructor makes it so.
class Instants {
 public:
  explicit Instants(const Compiled& compiled);
  void step(const Stimulus& stimulus);
  /// Of a signal by name, or of the module's end by "RTL": '1' One, '0' Zero, 'T' Top, '_' Bottom.
  char state(const std::string& signal) const;

 private:
  void close_occurrences(const Rules& rules);
  void write(const Signal* signal, bool status, bool value);

  Module* module_;
  std::vector<long> order_;
  std::vector<int> literals_;
};

/// The states of a signal, one character an instant. Instants are words: the names of the inputs
/// present joined by "+", "!set" and "!reset" among them, or "." for none. The first sets.
std::string trace(const std::string& text, const std::string& signal, const std::string& stimuli,
                  const Rules& rules = Rules::sound());

}  // namespace kiva::test
