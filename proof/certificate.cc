// The graph of the three conditions is built without simplification beyond what a graph does by
// itself, and written in full: whoever checks needs no part of this program.

#include "proof/certificate.h"

#include <filesystem>
#include <numeric>
#include <ostream>

#include "base/whole_file.h"

namespace kiva::proof {

namespace {

/// A graph with its variables first, as the ASCII form numbers them.
class AagWriter {
 public:
  explicit AagWriter(const Aig& aig) : aig_(aig), number_(aig.size(), 0) {}

  void variable(Literal literal) { number_[node_of(literal)] = ++variables_; }
  /// The ands below the roots, behind all variables.
  void ands(const std::vector<Literal>& roots) {
    for (std::uint32_t node : aig_.cone(roots)) {
      if (!aig_.is_and(node)) continue;
      number_[node] = ++variables_;
      ands_.push_back(node);
    }
  }
  std::uint32_t of(Literal a) const { return 2 * number_[node_of(a)] + (is_negated(a) ? 1 : 0); }
  std::uint32_t variables() const { return variables_; }
  size_t and_count() const { return ands_.size(); }
  void put_ands(std::ostream& out) const {
    for (std::uint32_t node : ands_)
      out << 2 * number_[node] << ' ' << of(aig_.right(node)) << ' ' << of(aig_.left(node)) << '\n';
  }

 private:
  const Aig& aig_;
  std::vector<std::uint32_t> number_, ands_;
  std::uint32_t variables_ = 0;
};

void put_machine(const Machine& machine, std::ostream& out) {
  AagWriter writer(machine.aig);
  std::vector<Literal> roots{machine.bad};
  for (const Machine::Input& input : machine.inputs) writer.variable(input.literal);
  for (const Machine::Latch& latch : machine.latches) {
    writer.variable(latch.now);
    roots.push_back(latch.next);
  }
  writer.ands(roots);
  out << "aag " << writer.variables() << ' ' << machine.inputs.size() << ' '
      << machine.latches.size() << " 1 " << writer.and_count() << '\n';
  for (const Machine::Input& input : machine.inputs) out << writer.of(input.literal) << '\n';
  for (const Machine::Latch& latch : machine.latches)
    out << writer.of(latch.now) << ' ' << writer.of(latch.next) << (latch.initial ? " 1" : "")
        << '\n';
  out << writer.of(machine.bad) << '\n';
  writer.put_ands(out);
  for (size_t k = 0; k < machine.inputs.size(); ++k)
    out << 'i' << k << ' ' << machine.inputs[k].name << '\n';
  for (size_t k = 0; k < machine.latches.size(); ++k)
    out << 'l' << k << ' ' << machine.latches[k].name << '\n';
  out << "o0 bad\n";
}

void put_invariant(const Machine& machine, const Invariant& invariant, std::ostream& out) {
  AagWriter writer(invariant.aig);
  for (Literal latch : invariant.latches) writer.variable(latch);
  writer.ands({invariant.holds});
  out << "aag " << writer.variables() << ' ' << invariant.latches.size() << " 0 1 "
      << writer.and_count() << '\n';
  for (Literal latch : invariant.latches) out << writer.of(latch) << '\n';
  out << writer.of(invariant.holds) << '\n';
  writer.put_ands(out);
  for (size_t k = 0; k < machine.latches.size(); ++k)
    out << 'i' << k << ' ' << machine.latches[k].name << '\n';
  out << "o0 holds\n";
}

/// That all of the literals can be 1 together.
void put_cnf(const Aig& aig, const std::vector<Literal>& all, const std::string& says,
             std::ostream& out) {
  const std::vector<std::uint32_t> cone = aig.cone(all);
  std::vector<int> number(aig.size(), 0);
  int variables = 0;
  size_t clauses = 1 + all.size();  // the constant, and what is asked
  for (std::uint32_t node : cone) {
    number[node] = ++variables;
    if (aig.is_and(node)) clauses += 3;
  }
  if (number[0] == 0) number[0] = ++variables;
  const auto of = [&](Literal a) {
    return is_negated(a) ? -number[node_of(a)] : number[node_of(a)];
  };
  out << "c " << says << "\np cnf " << variables << ' ' << clauses << '\n' << -number[0] << " 0\n";
  for (std::uint32_t node : cone) {
    if (!aig.is_and(node)) continue;
    const int left = of(aig.left(node)), right = of(aig.right(node)), both = number[node];
    out << -both << ' ' << left << " 0\n"
        << -both << ' ' << right << " 0\n"
        << both << ' ' << -left << ' ' << -right << " 0\n";
  }
  for (Literal a : all) out << of(a) << " 0\n";
}

const char* const check_script = R"sh(#!/bin/sh
# Asks a SAT solver for the three conditions: none may have a solution.
# usage: check [SOLVER]    cadical (the default), minisat, or another that takes a DIMACS file and
#                          exits with 20 where there is no solution
solver=${1:-cadical}
folder=$(dirname "$0")
if ! command -v "$solver" > /dev/null; then
  echo "check: there is no program $solver" >&2
  exit 2
fi
for condition in starts stays implies; do
  "$solver" "$folder/$condition.cnf" > /dev/null 2>&1
  status=$?
  if [ "$status" -eq 20 ]; then
    echo "$condition: holds"
  else
    echo "$condition: does not hold ($solver exits with $status)"
    exit 1
  fi
done
)sh";

template <class Put>
bool write(const std::string& folder, const char* name, std::string& reason, Put put) {
  WholeFile file(folder + '/' + name);
  if (file.opened()) put(file.out());
  if (file.opened() && file.finish()) return true;
  reason = folder + '/' + name + " cannot be written";
  return false;
}

}  // namespace

bool write_certificate(const Machine& machine, const Invariant& invariant,
                       const std::string& folder, std::string& reason) {
  // Both in one graph, the invariant once over the latches and once over their next values.
  Aig aig = machine.aig;
  std::vector<std::uint32_t> nodes(invariant.aig.size());
  std::iota(nodes.begin(), nodes.end(), 0U);
  std::vector<Literal> now(invariant.aig.size(), zero), next = now, starts;
  for (size_t k = 0; k < invariant.latches.size(); ++k) {
    const Machine::Latch& latch = machine.latches[k];
    now[node_of(invariant.latches[k])] = latch.now;
    next[node_of(invariant.latches[k])] = latch.next;
    starts.push_back(negated_if(latch.now, !latch.initial));
  }
  copy_nodes(invariant.aig, nodes, aig, now);
  copy_nodes(invariant.aig, nodes, aig, next);
  const Literal inside = image_of(invariant.holds, now), after = image_of(invariant.holds, next);
  starts.push_back(negated(inside));

  std::error_code failed;
  std::filesystem::create_directories(folder, failed);
  const bool written =
      write(folder, "module.aag", reason, [&](std::ostream& out) { put_machine(machine, out); }) &&
      write(folder, "invariant.aag", reason,
            [&](std::ostream& out) { put_invariant(machine, invariant, out); }) &&
      write(folder, "starts.cnf", reason,
            [&](std::ostream& out) {
              put_cnf(aig, starts, "the start, outside the invariant", out);
            }) &&
      write(folder, "stays.cnf", reason,
            [&](std::ostream& out) {
              put_cnf(aig, {inside, negated(after)},
                      "an instant that leads from inside the invariant out of it", out);
            }) &&
      write(folder, "implies.cnf", reason,
            [&](std::ostream& out) {
              put_cnf(aig, {inside, machine.bad}, "a bad instant inside the invariant", out);
            }) &&
      write(folder, "check", reason, [](std::ostream& out) { out << check_script; });
  if (!written) return false;
  using std::filesystem::perms;
  std::filesystem::permissions(folder + "/check",
                               perms::owner_exec | perms::group_exec | perms::others_exec,
                               std::filesystem::perm_options::add, failed);
  return !failed;
}

}  // namespace kiva::proof
