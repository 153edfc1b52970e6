// Dating a table, and the report that ends a compilation whose equations depend on themselves.

#include <fstream>
#include <map>
#include <set>

#include "base/process_end.h"
#include "forms/forms.h"
#include "tarn/model/compilation.h"
#include "tarn/model/equationtable.h"
#include "tarn/model/sexception.h"

namespace kiva {

namespace {

/// "VARIABLE = f(what it reads)", or "VARIABLE = -" without an equation.
std::string debug_in_string(const Bddexpressionwood& wood, long id) {
  const std::string name = wood.Name_var_by_index(id);
  const Bddexpression* equation = wood.exp_by_index(id);
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
  fl_show_Smessages(cycle_report(cycle));
  end_process();
}

long EquationTable::callPert(const std::list<long>& ids) {
  settle();
  const long levels = bdd_expression_wood->compute_dates(ids);
  if (levels < 0) throw ModulePertFailureException();
  const std::list<long> cycle = bdd_expression_wood->loop_detection();
  if (cycle.empty()) return levels;
  fl_show_Sbigmessages(cycle_report(cycle), 300);
  end_process();
}

std::string EquationTable::cycle_report(std::list<long> cycle) {
  std::string report =
      "ERROR in Module `" + module_name + "': detecting variables in a dependance cycle:\n";
  for (long id : cycle) report += bdd_expression_wood->Name_var_by_index(id) + "\n";
  const std::string lines = source_lines(cycle);
  report += "\n\nwhen sorting equations: \n" + computeDependence(cycle);
  return lines.empty() ? report : report + "in the source lines:\n" + lines;
}

std::string EquationTable::computeDependence(std::list<long>& ids) {
  if (ids.empty()) return "";
  std::set<long> awaited(ids.begin(), ids.end());
  std::vector<long> met;
  std::vector<long> stack{ids.front()};
  while (!stack.empty()) {
    const long id = stack.back();
    stack.pop_back();
    if (awaited.erase(id) == 0) continue;
    met.push_back(id);
    const Bddexpression* equation = bdd_expression_wood->exp_by_index(id);
    if (equation == nullptr) continue;
    const index_set& deps = equation->set_of_var_dependances();
    for (auto dep = deps.end(); dep != deps.begin();)
      if (awaited.contains(*--dep)) stack.push_back(*dep);
  }
  ids.remove_if([&](long id) { return !awaited.contains(id); });
  std::string text;
  for (long id : met) text += debug_in_string(*bdd_expression_wood, id) + "\n\n";
  for (long id : ids) text += debug_in_string(*bdd_expression_wood, id) + "\n\n";
  return text;
}

/// The first line of each statement whose own signals are in the cycle, as "FILE:LINE: TEXT".
std::string EquationTable::source_lines(const std::list<long>& cycle) const {
  if (sources_ == nullptr) return "";
  std::map<std::string, std::set<int>> lines;
  for (long id : cycle) {
    const std::string variable = bdd_expression_wood->Name_var_by_index(id);
    if (variable.size() < 3) continue;
    auto at = sources_->find(Compilation::bddNameToSignalName(variable));
    if (at != sources_->end()) lines[*at->second.file].insert(at->second.first_line);
  }
  std::string text;
  for (const auto& [file, numbers] : lines) {
    std::ifstream source(file);
    std::string line;
    int read = 0;
    for (int number : numbers) {
      while (read < number && std::getline(source, line)) ++read;
      text += file + ":" + std::to_string(number) + ": " + (read == number ? line : "") + "\n";
    }
  }
  return text;
}

}  // namespace kiva
