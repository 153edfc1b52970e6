// Dating a table, and the report that ends a compilation whose equations depend on themselves.

#include <algorithm>
#include <fstream>
#include <set>
#include <tuple>

#include "tarn/model/compilation.h"
#include "tarn/model/cycle_story.h"
#include "tarn/model/equationtable.h"
#include "tarn/model/sexception.h"
#include "tarn/session/diagnostic.h"

namespace kiva {

namespace {

/// "VARIABLE = f(what it reads)", or "VARIABLE = -" without an equation.
std::string debug_in_string(const Bddexpressionwood& wood, long index) {
  const std::string name = wood.Name_var_by_index(index);
  const Bddexpression* equation = wood.exp_by_index(index);
  if (equation == nullptr) return name + " = -";
  std::string reads;
  for (long dep : equation->set_of_var_dependances()) {
    if (!reads.empty()) reads += ", ";
    reads += wood.Name_var_by_index(dep);
  }
  return name + " = f(" + reads + ")";
}

}  // namespace

long EquationTable::callPert() {
  settle();
  const long levels = bdd_expression_wood->compute_dates();
  if (levels < 0) throw ModulePertFailureException();
  const std::list<long> cycle = bdd_expression_wood->loop_detection();
  if (cycle.empty()) return levels;
  end_with(cycle_fault(cycle, Manner::message));
}

long EquationTable::callPert(const std::list<long>& indices) {
  settle();
  const long levels = bdd_expression_wood->compute_dates(indices);
  if (levels < 0) throw ModulePertFailureException();
  const std::list<long> cycle = bdd_expression_wood->loop_detection();
  if (cycle.empty()) return levels;
  end_with(cycle_fault(cycle, Manner::big_message));
}

std::string EquationTable::cycle_report(std::list<long> cycle) {
  std::string report =
      "ERROR in Module `" + module_name + "': detecting variables in a dependance cycle:\n";
  for (long index : cycle) report += bdd_expression_wood->Name_var_by_index(index) + "\n";
  const std::string lines = source_lines(cycle);
  report += "\n\nwhen sorting equations: \n" + computeDependence(cycle);
  return lines.empty() ? report : report + "in the source lines:\n" + lines;
}

std::string EquationTable::computeDependence(std::list<long>& indices) {
  if (indices.empty()) return "";
  std::set<long> awaited(indices.begin(), indices.end());
  std::vector<long> met;
  std::vector<long> stack{indices.front()};
  while (!stack.empty()) {
    const long index = stack.back();
    stack.pop_back();
    if (awaited.erase(index) == 0) continue;
    met.push_back(index);
    const Bddexpression* equation = bdd_expression_wood->exp_by_index(index);
    if (equation == nullptr) continue;
    const index_set& deps = equation->set_of_var_dependances();
    for (auto dep = deps.end(); dep != deps.begin();)
      if (awaited.contains(*--dep)) stack.push_back(*dep);
  }
  indices.remove_if([&](long index) { return !awaited.contains(index); });
  std::string text;
  for (long index : met) text += debug_in_string(*bdd_expression_wood, index) + "\n\n";
  for (long index : indices) text += debug_in_string(*bdd_expression_wood, index) + "\n\n";
  return text;
}

/// Where the statements whose own signals are in the cycle begin, by file, line and column.
std::vector<SourceSpan> EquationTable::source_spans(const std::list<long>& cycle) const {
  std::vector<SourceSpan> spans;
  if (sources_ == nullptr) return spans;
  for (long index : cycle) {
    const std::string variable = bdd_expression_wood->Name_var_by_index(index);
    if (variable.size() < 3) continue;
    auto at = sources_->makers.find(Compilation::bddNameToSignalName(variable));
    if (at != sources_->makers.end()) spans.push_back(at->second);
  }
  std::sort(spans.begin(), spans.end(), [](const SourceSpan& a, const SourceSpan& b) {
    return std::tie(*a.file, a.first_line, a.first_column) <
           std::tie(*b.file, b.first_line, b.first_column);
  });
  return spans;
}

/// The first line of each of them once, as "FILE:LINE: TEXT".
std::string EquationTable::source_lines(const std::list<long>& cycle) const {
  std::string text;
  std::ifstream source;
  std::string line, file;
  int read = 0;
  for (const SourceSpan& span : source_spans(cycle)) {
    if (*span.file != file) {
      file = *span.file;
      source = std::ifstream(file);
      read = 0;
    } else if (span.first_line == read) {
      continue;
    }
    line.clear();
    while (read < span.first_line) {
      if (!std::getline(source, line)) line.clear();
      ++read;
    }
    text += file + ":" + std::to_string(span.first_line) + ": " + line + "\n";
  }
  return text;
}

Diagnostic EquationTable::open_cycle(const std::list<long>& members) const {
  Diagnostic warning;
  warning.severity = Severity::warning;
  CycleStory(*this, members).tell(warning);
  warning.notes.push_back({warning.where, "whether it settles is still being found out"});
  return warning;
}

Diagnostic EquationTable::cycle_fault(const std::list<long>& cycle, Manner manner) {
  Diagnostic fault = Diagnostic::of_told(cycle_report(cycle), manner);
  CycleStory(*this, cycle).tell(fault);
  if (!unsettled_.empty()) fault.notes.push_back({fault.where, unsettled_});
  return fault;
}

}  // namespace kiva
