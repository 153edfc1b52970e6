// A pass over the equations without handles, reference counts or pointers.
//
// Most equations of real modules read one to four variables. Over inputs of three values such an
// equation is a small table, filled once by asking the diagram itself; equations of one shape share
// a table. An evaluation is then a few loads, with no branch that depends on data. Wider equations
// keep their diagram, as an array of nodes.
//
// Equations are gathered in windows. Inside a window no equation writes what another of the window
// reads, or writes, so their order inside it cannot be observed, and they are sorted by form: a run
// of equal form is one tight loop. A window ends at the first equation that reads or overwrites
// something of it, and at every cut. With the dates of an acyclic wood a window is one level or
// more.
//
// Invariants:
//   1. Inside a window no equation writes what another of it writes or reads.
//   2. A node of the array stands behind its children.
//   3. Runs of a segment lie behind each other and cover its equations, none empty.
//   4. Entries of a context are 0, 1 or 2 before and after a run.

#include "engine/flat_equations.h"

#include <algorithm>

#include "base/check.h"
#include "base/graph_walk.h"

namespace kiva {

void FlatEquations::add(long index, const bdd& exp) {
  const index_set support = manager_->set_of_index_depend_on(exp);
  Pending equation{index, exp, {support.begin(), support.end()}};

  const size_t variables = static_cast<size_t>(manager_->Nb_bdd_vars());
  written_in_.resize(variables, 0);
  read_in_.resize(variables, 0);
  const bool depends = written_in_[index] == window_number_ || read_in_[index] == window_number_ ||
                       std::any_of(equation.reads.begin(), equation.reads.end(), [this](long read) {
                         return written_in_[read] == window_number_;
                       });
  if (depends) close_window();
  KIVA_CHECK(1, written_in_[index] != window_number_ && read_in_[index] != window_number_);
  written_in_[index] = window_number_;
  for (long read : equation.reads) read_in_[read] = window_number_;
  window_.push_back(std::move(equation));
  ++equations_;
}

void FlatEquations::cut() {
  close_window();
  segment_ends_.push_back(runs_.size());
}

void FlatEquations::close_window() {
  // Equations of one form stand together.
  std::stable_sort(window_.begin(), window_.end(), [](const Pending& a, const Pending& b) {
    return std::min(a.reads.size(), most_table_inputs + 1) <
           std::min(b.reads.size(), most_table_inputs + 1);
  });
  emit(window_);
  window_.clear();
  ++window_number_;
}

void FlatEquations::emit(const std::vector<Pending>& window) {
  for (const Pending& equation : window) {
    const size_t inputs = equation.reads.size();
    const bool table = inputs <= most_table_inputs;
    const auto place =
        static_cast<std::uint32_t>(table ? table_equations_.size() : diagram_equations_.size());
    if (table) {
      TableEquation flat{
          static_cast<std::uint32_t>(equation.index), table_of(equation.exp, equation.reads), {}};
      for (size_t i = 0; i < inputs; ++i)
        flat.in[i] = static_cast<std::uint32_t>(equation.reads[i]);
      table_equations_.push_back(flat);
    } else {
      diagram_equations_.push_back(
          {static_cast<std::uint32_t>(equation.index), edge_of(equation.exp)});
    }
    const std::uint8_t form = table ? static_cast<std::uint8_t>(inputs) : diagram_run;
    const size_t segment_begin = segment_ends_.empty() ? 0 : segment_ends_.back();
    if (runs_.size() > segment_begin && runs_.back().form == form && runs_.back().end == place) {
      runs_.back().end = place + 1;
    } else {
      runs_.push_back({form, place, place + 1});
    }
  }
}

std::uint32_t FlatEquations::table_of(const bdd& exp, const std::vector<long>& reads) {
  literals_.resize(static_cast<size_t>(manager_->Nb_bdd_vars()), 0);
  // 3 is no value of an entry; its places repeat those of 0 so that tables of one function agree.
  static constexpr int value_of_bits[4] = {0, 1, 2, 0};
  const size_t entries = size_t{1} << (2 * reads.size());
  std::string table(entries, '\0');
  for (size_t entry = 0; entry < entries; ++entry) {
    for (size_t i = 0; i < reads.size(); ++i)
      literals_[static_cast<size_t>(reads[i])] = value_of_bits[(entry >> (2 * i)) & 3];
    table[entry] = static_cast<char>(manager_->Bdd_eval_for_literal(exp, literals_.data()));
  }
  auto [at, fresh] = known_tables_.emplace(table, static_cast<std::uint32_t>(tables_.size()));
  if (fresh) tables_.insert(tables_.end(), table.begin(), table.end());
  return at->second;
}

FlatEquations::Edge FlatEquations::edge_of(const bdd& exp) {
  const auto place_of = [this](const bdd_node* node) -> Edge& {
    const size_t id = static_cast<size_t>(node->global_id());
    if (id >= place_of_node_.size())
      place_of_node_.resize(static_cast<size_t>(manager_->Bdd_total_size()), 0);
    return place_of_node_[id];
  };
  const auto laid = [&](const bdd_node* node) {
    return node->var_index() < 0 || place_of(node) != 0;
  };
  const auto edge_to = [&](const bdd_node* node, int link) {
    const Edge place = node->var_index() < 0 ? 0 : place_of(node);
    return place * 2 + (link == 1 ? 0u : 1u);
  };
  const auto children = [](const bdd_node* node, auto ask) {
    ask(node->else_node());
    ask(node->then_node());
  };
  walk_from_below<const bdd_node*>(exp.node(), laid, children, [&](const bdd_node* node) {
    place_of(node) = static_cast<Edge>(nodes_.size());
    KIVA_CHECK(2, laid(node->then_node()) && laid(node->else_node()));
    nodes_.push_back({static_cast<std::uint32_t>(node->var_index()), edge_to(node->then_node(), 1),
                      edge_to(node->else_node(), node->else_link_type())});
  });
  return edge_to(exp.node(), exp.link_type());
}

int FlatEquations::evaluate(Edge root, const int* context) const {
  Edge edge = root;
  while (edge > 1) {
    const Node& node = nodes_[edge >> 1];
    const int literal = context[node.variable];
    if (literal == 2) {
      // The complement of the path so far applies to whatever comes.
      const int result = evaluate_with_unknowns(edge & ~1u, context);
      return result == 2 ? 2 : result ^ static_cast<int>(edge & 1);
    }
    edge = (literal == 1 ? node.then_edge : node.else_edge) ^ (edge & 1);
  }
  return edge == 0 ? 1 : 0;
}

int FlatEquations::evaluate_with_unknowns(Edge root, const int* context) const {
  // A result for each node under way, so that a shared node costs one visit.
  stamp_.resize(nodes_.size(), 0);
  result_.resize(nodes_.size(), 0);
  if (++current_stamp_ == 0) {
    std::fill(stamp_.begin(), stamp_.end(), 0);
    current_stamp_ = 1;
  }
  const auto known = [this](Edge edge) { return edge <= 1 || stamp_[edge >> 1] == current_stamp_; };
  const auto value = [this](Edge edge) -> int {
    const int complement = static_cast<int>(edge & 1);
    if (edge <= 1) return 1 ^ complement;
    const int result = result_[edge >> 1];
    return result == 2 ? 2 : result ^ complement;
  };
  const auto needed = [&](Edge edge, auto ask) {
    const Node& node = nodes_[edge >> 1];
    const int literal = context[node.variable];
    if (literal != 0) ask(node.then_edge & ~1u);
    if (literal != 1) ask(node.else_edge & ~1u);
  };
  walk_from_below<Edge>(root & ~1u, known, needed, [&](Edge edge) {
    const Node& node = nodes_[edge >> 1];
    const int literal = context[node.variable];
    int result = literal == 1 ? value(node.then_edge) : value(node.else_edge);
    if (literal == 2 && value(node.then_edge) != result) result = 2;
    stamp_[edge >> 1] = current_stamp_;
    result_[edge >> 1] = static_cast<std::uint8_t>(result);
  });
  return value(root);
}

namespace {

/// The loop over equations of N inputs each.
template <int N, class Equation>
void run_table_loop(const Equation* at, const Equation* end, const std::uint8_t* tables,
                    int* context) {
  for (; at != end; ++at) {
    std::uint32_t entry = at->table;
    for (int i = 0; i < N; ++i) KIVA_CHECK(4, static_cast<unsigned>(context[at->in[i]]) <= 2u);
    for (int i = 0; i < N; ++i) entry += static_cast<std::uint32_t>(context[at->in[i]]) << (2 * i);
    context[at->out] = tables[entry];
  }
}

}  // namespace

std::unique_ptr<code::CompiledPass> FlatEquations::compiled() const {
  return code::CompiledPass::make(*this, static_cast<size_t>(manager_->Nb_bdd_vars()));
}

void FlatEquations::run(size_t segment, int* context) const {
  if (segments() == 1) {
    if (code::CompiledPass* pass = code_.ready(); pass == nullptr)
      code_.count(equations_, [this] { return compiled(); });
    else if (pass->run(context))
      return;
  }
  run_tables(segment, context);
}

bool FlatEquations::compile() const {
  return code_.make_now([this] { return compiled(); });
}

void FlatEquations::run_tables(size_t segment, int* context) const {
  const size_t first = segment == 0 ? 0 : segment_ends_[segment - 1];
  const std::uint8_t* tables = tables_.data();
  for (size_t r = first; r < segment_ends_[segment]; ++r) {
    const Run& run = runs_[r];
    KIVA_CHECK(3, run.begin < run.end && (r == first || runs_[r - 1].form != run.form ||
                                          runs_[r - 1].end == run.begin));
    if (run.form == diagram_run) {
      for (std::uint32_t i = run.begin; i != run.end; ++i)
        context[diagram_equations_[i].out] = evaluate(diagram_equations_[i].root, context);
      continue;
    }
    const TableEquation* begin = table_equations_.data() + run.begin;
    const TableEquation* end = table_equations_.data() + run.end;
    switch (run.form) {
      case 0:
        run_table_loop<0>(begin, end, tables, context);
        break;
      case 1:
        run_table_loop<1>(begin, end, tables, context);
        break;
      case 2:
        run_table_loop<2>(begin, end, tables, context);
        break;
      case 3:
        run_table_loop<3>(begin, end, tables, context);
        break;
      default:
        run_table_loop<4>(begin, end, tables, context);
    }
  }
}

}  // namespace kiva
