#pragma once

#include <optional>
#include <string>
#include <vector>

#include "engine/coverage_goals.h"
#include "engine/stimuli.h"
#include "proof/product.h"
#include "proof/question.h"
#include "proof/survey.h"

namespace kiva::proof {

/// A module with what many runs are held against, and what they shall reach. First everything is
/// asked, then `build`. The simulation must outlive it and is moved by `shown`.
class CampaignMachine {
 public:
  /// Something that must not be in any instant of a run.
  struct Check {
    Property::Kind kind;
    std::string text;
    Literal wrong;
    std::vector<NamedLiteral> named;
  };
  /// Something that runs may reach.
  struct Goal {
    std::string kind, name;
    Literal reached;
    SourcePlace place = {};  ///< of a piece of source text
  };

  /// Throws MachineError.
  CampaignMachine(Simulation& simulation, bool with_reset);

  /// Only instants count up to which the expression has held. Throws ConditionError, and
  /// MachineError where it depends on what nothing computes; so do the others.
  void assume(const std::string& expression);
  void check(const Property& property);
  /// Takes what is awaited of an instant; gives its place among all that may be awaited.
  size_t await(const Expectation& expectation);
  /// Every input and output, the locals of those rows, perhaps the registers, as present and as
  /// not.
  void cover_signals(const std::vector<size_t>& locals, bool registers);
  void cover(const std::vector<CoverageGoal>& goals);
  /// The module with its outputs.
  Side side() { return side_of(simulation_, module_); }
  /// The outputs must be those of the other module.
  void compare_with(const Side& other);
  void build();
  /// What of the module is worth knowing of all its runs, once built: its goals, registers and
  /// outputs.
  SurveyQuestion survey() const {
    return {machine_, literals(goals_), shown_, registers_, assumed_};
  }

  const Machine& machine() const { return machine_; }
  size_t inputs() const { return module_.machine.inputs.size(); }
  const std::vector<Check>& checks() const { return checks_; }
  const std::vector<Goal>& goals() const { return goals_; }
  const std::vector<Literal>& awaited() const { return awaited_; }
  /// Whether all that is assumed holds in the instant.
  Literal assumed() const { return assumed_; }
  /// Whether the outputs differ from the other module's; `zero` without one.
  Literal differs() const { return differs_; }

  /// The run shortened, and as stimuli with what is then. `check` may be checks().size(), for the
  /// other module.
  std::string shown(size_t check, Run run);

 private:
  static std::vector<Literal> literals(const std::vector<Goal>& goals);
  Literal checked(Literal literal);
  Literal bit(const ShownBit& bit);

  Simulation& simulation_;
  ModuleMachine module_;
  std::optional<Side> other_;
  std::vector<Product::Output> outputs_;
  Machine machine_;
  std::vector<Check> checks_;
  std::vector<Goal> goals_;
  std::vector<Literal> awaited_, shown_;
  std::vector<size_t> registers_;
  Literal assumed_ = one, differs_ = zero;
};

}  // namespace kiva::proof
