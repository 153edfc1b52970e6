#include "proof/sat.h"

#include <cadical.hpp>
#include <cstdlib>
#include <new>
#include <tuple>
#include <utility>

#include "base/graph_walk.h"

namespace kiva::proof {

namespace {

// In steps: a question, without work ahead or with it, and what lies between two calls of the
// solver, each with what it takes for each variable; to enter a clause.
constexpr double plain_steps = 4'000, plain_variable_steps = 2, question_steps = 20'000,
                 variable_steps = 80, call_steps = 10'000, call_variable_steps = 200,
                 clause_steps = 100;

struct SolverPause : CaDiCaL::Terminator {
  SolverPause(const Stop& stop, double steps) : stop(stop), steps(steps) {}
  bool terminate() override {
    // The first one may come at once.
    if (calls++ > 0) stop.count(steps);
    // The clock is asked now and then: the solver calls after each few steps of its own.
    return (calls & 15U) == 0 && stop();
  }
  const Stop& stop;
  double steps;
  unsigned calls = 0;
};

}  // namespace

Sat::Sat(const Aig& aig, bool plain)
    : aig_(aig), plain_(plain), solver_(std::make_unique<CaDiCaL::Solver>()) {
  if (plain) solver_->configure("plain");
  solver_->set("quiet", 1);
  solver_->set("phase", 0);  // a run shall have no more inputs than it needs
}

Sat::~Sat() {
  if (out_of_memory_) std::ignore = solver_.release();
}

template <class Work>
auto Sat::guarded(const Work& work) {
  try {
    return work();
  } catch (const std::bad_alloc&) {
    out_of_memory_ = true;
    throw;
  }
}

int Sat::literal(Literal a) {
  if (variable_of_.size() < aig_.size()) variable_of_.resize(aig_.size(), 0);
  const auto known = [&](std::uint32_t node) { return variable_of_[node] != 0; };
  const auto needs = [&](std::uint32_t node, auto ask) {
    if (!aig_.is_and(node)) return;
    ask(node_of(aig_.left(node)));
    ask(node_of(aig_.right(node)));
  };
  const auto of = [&](Literal b) {
    const int variable = variable_of_[node_of(b)];
    return is_negated(b) ? -variable : variable;
  };
  walk_from_below<std::uint32_t>(node_of(a), known, needs, [&](std::uint32_t node) {
    const int variable = variable_of_[node] = fresh();
    if (node == 0) clause({-variable});
    if (!aig_.is_and(node)) return;
    const int left = of(aig_.left(node)), right = of(aig_.right(node));
    clause({-variable, left});
    clause({-variable, right});
    clause({variable, -left, -right});
  });
  return of(a);
}

void Sat::clause(const std::vector<int>& literals) {
  ++entered_;
  guarded([&] {
    for (int literal : literals) solver_->add(literal);
    solver_->add(0);
  });
}

std::optional<bool> Sat::solve(const std::vector<int>& assumptions, const Stop& stop,
                               int conflicts) {
  const double variables = variables_;
  stop.count(clause_steps * static_cast<double>(std::exchange(entered_, 0)) +
             (plain_ ? plain_steps + plain_variable_steps * variables
                     : question_steps + variable_steps * variables));
  SolverPause pause(stop, call_steps + call_variable_steps * variables);
  const int status = guarded([&] {
    for (int literal : assumptions) solver_->assume(literal);
    if (conflicts >= 0) solver_->limit("conflicts", conflicts);
    solver_->connect_terminator(&pause);
    return solver_->solve();
  });
  solver_->disconnect_terminator();
  if (status == 0) return std::nullopt;
  return status == 10;
}

bool Sat::value(int literal) const {
  if (std::abs(literal) > solver_->vars()) return literal < 0;
  const int value = solver_->val(std::abs(literal));
  return (value > 0) == (literal > 0);
}

bool Sat::value_of(Literal a) const {
  const std::uint32_t node = node_of(a);
  const int variable = node < variable_of_.size() ? variable_of_[node] : 0;
  return (variable != 0 && value(variable)) != is_negated(a);
}

bool Sat::failed(int literal) const {
  return solver_->failed(literal);
}

}  // namespace kiva::proof
