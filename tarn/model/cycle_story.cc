// A cycle for whoever wrote the program. Its variables are rails of signals, of their further
// occurrences, and of wires between statements. The story names the signals alone, in the order in
// which one follows from the other, and for each the last statement on the way to it. What stands
// in a run module is found by the suffix of its instance, in that module's own table.

#include "tarn/model/cycle_story.h"
#include "tarn/session/open_texts.h"
#include "tarn/session/session.h"

#include <algorithm>
#include <cctype>
#include <tuple>
#include <unordered_map>

#include "tarn/model/compilation.h"
#include "tarn/model/module.h"
#include "tarn/session/open_texts.h"
#include "tarn/session/session.h"

namespace kiva {

namespace {

constexpr size_t most_starts = 200;       ///< members through which a shortest cycle is sought
constexpr size_t most_looks = 5'000'000;  ///< dependences followed for it
constexpr size_t most_told = 9;           ///< steps that have a note

const Module* module_of(const std::string& name) {
  return Compilation::ModTable() == nullptr ? nullptr : Compilation::ModTable()->get(name);
}

/// The name without the number of an occurrence, if that is a signal of the module.
std::string without_occurrence(const std::string& name, const Module* module) {
  const size_t bar = name.rfind('_');
  if (module == nullptr || bar == std::string::npos || module->getSignal(name) != nullptr)
    return name;
  const std::string base = name.substr(0, bar);
  return module->getSignal(base) != nullptr ? base : name;
}

/// The order of places in a source; what is unknown stands last.
std::tuple<bool, std::string, int, int> starts(const SourceSpan& span) {
  return {!span.known(), span.known() ? *span.file : "", span.first_line, span.first_column};
}

}  // namespace

CycleStory::CycleStory(const EquationTable& table, const std::list<long>& members) : table_(table) {
  gather_steps(shortest(members));
}

/// By breadth, from what the variable reads back to itself; in the order cause before effect. Empty
/// where the budget has gone.
std::vector<long> CycleStory::shortest_through(long index, const index_set& members,
                                               size_t& budget) const {
  std::unordered_map<long, long> reader;
  std::vector<long> row{index};
  for (size_t at = 0; at < row.size(); ++at) {
    const Bddexpression* equation = table_.bdd_expression_wood->exp_by_index(row[at]);
    if (equation == nullptr) continue;
    for (long read : equation->set_of_var_dependances()) {
      if (budget == 0) return {};
      --budget;
      if (read == index) {
        std::vector<long> cycle;
        for (long on = row[at]; on != index; on = reader.at(on)) cycle.push_back(on);
        cycle.push_back(index);
        return cycle;
      }
      if (members.contains(read) && reader.emplace(read, row[at]).second) row.push_back(read);
    }
  }
  return {};
}

std::vector<long> CycleStory::shortest(const std::list<long>& members) const {
  const index_set all = index_set::from_unsorted({members.begin(), members.end()});
  std::vector<long> best;
  size_t starts = 0;
  size_t budget = most_looks;
  for (long index : members) {
    if (++starts > most_starts) break;
    std::vector<long> cycle = shortest_through(index, all, budget);
    if (!cycle.empty() && (best.empty() || cycle.size() < best.size())) best = std::move(cycle);
  }
  return best;
}

std::string CycleStory::signal_name(long index) const {
  const std::string variable = table_.bdd_expression_wood->Name_var_by_index(index);
  constexpr size_t rail = 3;  // "_s_" or "_v_"
  return variable.size() < rail ? variable : Compilation::bddNameToSignalName(variable);
}

CycleStory::Step CycleStory::member(const EquationTable* table, std::string name) const {
  // Made by hand, of no module that has been read.
  if (table->sources_ == nullptr) return {name, {}};
  const Module* module = module_of(table->module_name);
  for (size_t at = name.rfind('@'); at != std::string::npos; at = name.rfind('@')) {
    // "@MODULE_iNUMBER"
    const std::string called = name.substr(at + 1, name.rfind("_i") - at - 1);
    name.resize(at);
    module = module_of(called);
    if (module == nullptr) return {name, {}};
    table = module->getCompilation();
  }
  if (table->sources_ != nullptr) {
    const auto maker = table->sources_->makers.find(name);
    if (maker != table->sources_->makers.end()) return {"", maker->second};
  }
  const std::string label = without_occurrence(name, module);
  const Signal* signal = module == nullptr ? nullptr : module->getSignal(label);
  if (signal == nullptr || signal->isValue() || signal->isWire()) return {"", {}};
  return {label, {}};
}

SourceSpan CycleStory::direct_cause(long from, long to) const {
  if (table_.sources_ == nullptr) return {};
  const std::string read = signal_name(from);
  const std::string written = without_occurrence(signal_name(to), module_of(table_.module_name));
  for (const auto& cause : table_.sources_->causes) {
    if (cause.written != nullptr && cause.written->getInternalName() != written) continue;
    if (!std::binary_search(cause.reads.begin(), cause.reads.end(), read)) continue;
    if (cause.written == nullptr) strong_abort_ = true;
    return cause.span;
  }
  return {};
}

void CycleStory::gather_steps(const std::vector<long>& cycle) {
  std::vector<Step> members;
  for (long index : cycle) members.push_back(member(&table_, signal_name(index)));
  size_t first = 0;
  while (first < members.size() && members[first].label.empty()) ++first;
  of_signals_ = first < members.size();
  if (of_signals_) {
    gather_signals(cycle, members, first);
  } else {
    gather_statements(members);
  }
  // In the order of the source, as far as a cycle has one.
  const auto earliest = std::min_element(
      steps_.begin(), steps_.end(),
      [](const Step& a, const Step& b) { return starts(a.span) < starts(b.span); });
  std::rotate(steps_.begin(), earliest, steps_.end());
}

void CycleStory::gather_statements(const std::vector<Step>& members) {
  for (const Step& here : members) {
    const auto there = [&](const Step& step) { return starts(step.span) == starts(here.span); };
    if (here.span.known() && std::none_of(steps_.begin(), steps_.end(), there))
      steps_.push_back({text_of(here.span), here.span});
  }
}

void CycleStory::gather_signals(const std::vector<long>& cycle, const std::vector<Step>& members,
                                size_t first) {
  SourceSpan last;
  for (size_t i = 1; i <= members.size(); ++i) {
    const size_t at = (first + i) % members.size();
    const Step& here = members[at];
    if (here.span.known()) last = here.span;
    if (here.label.empty()) continue;
    if (!last.known()) last = direct_cause(cycle[(first + i - 1) % cycle.size()], cycle[at]);
    if (!last.known() && i < members.size()) continue;  // an occurrence joins its signal
    steps_.push_back({here.label, last});
    last = {};
  }
  // The first signal itself closes the cycle, unless one of its occurrences has.
  if (steps_.size() > 1 && !steps_.back().span.known() &&
      steps_[steps_.size() - 2].label == steps_.back().label)
    steps_.pop_back();
}

/// The first line of the statement, not too long.
std::string CycleStory::text_of(const SourceSpan& span) const {
  const auto source = Session::current().part<OpenTexts>().open(*span.file);
  std::string line;
  for (int n = 0; n < span.first_line; ++n)
    if (!std::getline(*source, line)) return "";
  if (static_cast<size_t>(span.first_column) > line.size()) return "";
  size_t length = line.size();
  if (span.last_line == span.first_line)
    length = static_cast<size_t>(span.last_column - span.first_column) + 1;
  line = line.substr(static_cast<size_t>(span.first_column) - 1, length);
  while (!line.empty() && std::isspace(static_cast<unsigned char>(line.back())) != 0)
    line.pop_back();
  constexpr size_t most = 40;
  return line.size() <= most ? line : line.substr(0, most - 3) + "...";
}

void CycleStory::tell(Diagnostic& fault) const {
  if (steps_.empty()) {
    fault.sentence = "equations depend on each other in one instant";
    return;
  }
  std::string chain = steps_.back().label;
  for (size_t i = 0; i < steps_.size(); ++i) {
    if (i >= most_told && i + 1 < steps_.size()) {
      if (i == most_told) chain += " -> ...";
      continue;
    }
    chain += " -> " + steps_[i].label;
  }
  fault.sentence = of_signals_ ? '"' + steps_.back().label + "\" depends on itself in one instant: "
                               : "statements start each other in one instant: ";
  fault.sentence += chain;
  std::string before = steps_.back().label;
  for (size_t i = 0; i < std::min(steps_.size(), most_told); ++i) {
    const auto& [label, span] = steps_[i];
    const Place where = place_of(span);
    if (!fault.where.known()) fault.where = where;
    if (of_signals_ && where.known())
      fault.notes.push_back(
          {where, '"' + label + "\" follows from \"" + before + "\" here: " + text_of(span)});
    before = label;
  }
  const Module* module = table_.sources_ == nullptr ? nullptr : module_of(table_.module_name);
  if (!fault.where.known() && module != nullptr) fault.where = place_of(module->getSpan());
  const char* advice = "put a pause between cause and effect";
  if (strong_abort_)
    advice =
        "a strong abort cannot wait for what its own body does in that instant: use weak abort";
  fault.notes.push_back({fault.where, advice});
}

}  // namespace kiva
