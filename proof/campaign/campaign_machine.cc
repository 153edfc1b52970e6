#include "proof/campaign/campaign_machine.h"

#include <map>

#include "proof/shortening.h"

namespace kiva::proof {

CampaignMachine::CampaignMachine(Simulation& simulation, bool with_reset)
    : simulation_(simulation), module_(simulation, with_reset) {
  for (size_t latch = 1; latch < module_.machine.latches.size(); ++latch)
    registers_.push_back(latch);  // behind the set wire
}

std::vector<Literal> CampaignMachine::literals(const std::vector<Goal>& goals) {
  std::vector<Literal> all;
  for (const Goal& goal : goals) all.push_back(goal.reached);
  return all;
}

/// As it is; throws where it depends on what nothing computes.
Literal CampaignMachine::checked(Literal literal) {
  module_.machine.bad = literal;
  if (const std::string reason = module_.undefined(module_.machine); !reason.empty())
    throw MachineError{reason};
  module_.machine.bad = zero;
  return literal;
}

void CampaignMachine::assume(const std::string& expression) {
  std::vector<SignalPlace> named;
  const Literal holds =
      checked(expression_literal(module_, SignalNames(simulation_), expression, named));
  assumed_ = module_.machine.aig.both(assumed_, holds);
}

void CampaignMachine::check(const Property& property) {
  std::vector<SignalPlace> places;
  const Literal holds =
      checked(expression_literal(module_, SignalNames(simulation_), property.text, places));
  Check& check = checks_.emplace_back(Check{
      property.kind, property.text, negated_if(holds, property.kind == Property::always), {}});
  for (SignalPlace place : places) check.named.push_back({place, module_.is_one(place)});
}

size_t CampaignMachine::await(const Expectation& expectation) {
  const Literal met = expectation.absent ? negated(module_.is_one(expectation.place))
                                         : module_.is(expectation.place, expectation.state);
  for (size_t known = 0; known < awaited_.size(); ++known)
    if (awaited_[known] == met) return known;
  awaited_.push_back(checked(met));
  return awaited_.size() - 1;
}

void CampaignMachine::cover_signals(const std::vector<size_t>& locals, bool registers) {
  const SignalNames names(simulation_);
  const auto add = [&](const char* list, SignalPlace place) {
    const std::string name = std::string(list) + ' ' + names.name(place);
    goals_.push_back({"present", name, module_.is_one(place)});
    goals_.push_back({"not present", name, module_.is_not_present(place)});
  };
  const auto add_all = [&](const char* list, SignalPlace::List which) {
    for (size_t row = 0; row < names.names(which).size(); ++row) add(list, {which, row});
  };
  add_all("input", SignalPlace::input);
  add_all("output", SignalPlace::output);
  if (registers) add_all("register", SignalPlace::register_);
  for (size_t row : locals) add("local", {SignalPlace::local, row});
}

Literal CampaignMachine::bit(const ShownBit& bit) {
  if (bit.list == ShownBit::missing) return negated_if(zero, !bit.wanted);
  const SignalPlace place{bit.list == ShownBit::local ? SignalPlace::local : SignalPlace::register_,
                          bit.row};
  return negated_if(bit.before ? module_.was_one(place) : module_.is_one(place), !bit.wanted);
}

void CampaignMachine::cover(const std::vector<CoverageGoal>& goals) {
  Aig& aig = module_.machine.aig;
  std::map<std::pair<std::string, std::string>, size_t> known;
  for (const CoverageGoal& goal : goals) {
    Literal reached = zero;
    for (const ShownCube& cube : goal.reached) {
      Literal all = one;
      for (const ShownBit& shown : cube) all = aig.both(all, bit(shown));
      reached = aig.either(reached, all);
    }
    const auto [at, fresh] = known.try_emplace({goal.kind, goal.name}, goals_.size());
    if (fresh)
      goals_.push_back({goal.kind, goal.name, reached, goal.place});
    else
      goals_[at->second].reached = aig.either(goals_[at->second].reached, reached);
  }
}

void CampaignMachine::compare_with(const Side& other) {
  other_ = other;
}

void CampaignMachine::build() {
  for (size_t row = 0; row < simulation_.output_names().size(); ++row)
    for (SignalState state : {SignalState::one, SignalState::zero, SignalState::top})
      shown_.push_back(module_.is({SignalPlace::output, row}, state));
  const std::vector<bool> open = undetermined(module_.machine);
  std::erase_if(shown_, [&](Literal literal) { return open[node_of(literal)]; });
  for (Goal& goal : goals_)
    if (open[node_of(goal.reached)]) goal.reached = zero;
  if (!other_) {
    machine_ = module_.machine;
    return;
  }
  Product product(side(), *other_);
  const auto move = [&](Literal& literal) { literal = image_of(literal, product.first); };
  for (Goal& goal : goals_) move(goal.reached);
  for (Check& check : checks_) {
    move(check.wrong);
    for (NamedLiteral& named : check.named) move(named.is_one);
  }
  for (Literal& literal : awaited_) move(literal);
  move(assumed_);
  differs_ = product.machine.bad;
  outputs_ = std::move(product.outputs);
  machine_ = std::move(product.machine);
}

std::string CampaignMachine::shown(size_t check, Run run) {
  const bool other = check == checks_.size();
  Machine machine = machine_;
  std::vector<Literal> assumed;
  if (assumed_ != one) assumed.push_back(assumed_);
  set_bad(machine, other ? differs_ : checks_[check].wrong, assumed);
  run = Shortening(machine).shortened(std::move(run));
  if (!other) return shown_run(simulation_, machine, checks_[check].named, run);
  Stepper stepper(machine);
  for (size_t instant = 0; instant < run.size(); ++instant) {
    if (instant > 0) stepper.move();
    stepper.look(words_of(run[instant]));
  }
  std::vector<NamedLiteral> differing;
  for (size_t row = 0; row < outputs_.size(); ++row) {
    const auto& [mine, others] = outputs_[row].present;
    if (stepper.word(mine) != stepper.word(others))
      differing.push_back({{SignalPlace::output, row}, mine});
  }
  return shown_run(simulation_, machine, differing, run);
}

}  // namespace kiva::proof
