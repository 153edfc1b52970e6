// Expressions of diagrams. A function of few products is their sum, factored. Of others it is
// counted how often each node and each variable is mentioned; then each equation is written from
// its leaves, in both polarities, since it is the reader that knows which one it wants. A function
// that is mentioned twice, or is as long as a line, becomes a line; its readers have its name.

#include "tarn/targets/frame/straight_code.h"

#include <algorithm>
#include <map>
#include <optional>
#include <unordered_map>
#include <unordered_set>

#include "base/graph_walk.h"
#include "bdd/literal_list.h"
#include "tarn/targets/frame/sum_text.h"

namespace kiva {

namespace {

constexpr int longest = 8;           ///< operands of a line
constexpr long most_products = 100;  ///< of a sum that is factored
constexpr int most_factored = 160;   ///< operands of it
constexpr int most_inline = 4;       ///< operands of an equation that stands where it is read

/// What is above all else in an expression.
enum class Kind { atom, not_atom, conjunction, disjunction, comparison };

struct Expression {
  Kind kind = Kind::atom;
  std::string text;
  int size = 1;
};

/// An expression and its complement.
struct Both {
  Expression plain, complement;
  const Expression& of(bool negated) const { return negated ? complement : plain; }
  Both turned(bool negated) const { return negated ? Both{complement, plain} : *this; }
};

class StraightCode {
 public:
  StraightCode(const TargetText& text, const ExpressionTexts& texts)
      : text_(text), texts_(texts), one_(text.manager()->Bdd_node_one()) {
    count();
  }

  std::vector<StraightLine> lines() {
    for (const TargetEquation& equation : text_.equations()) put(equation);
    return std::move(lines_);
  }

 private:
  using Node = const bdd_node*;

  // What a node is: x and t, x or e, not x or t, x same as t, or a choice.
  static bool is_comparison(Node n) {
    return n->then_node() == n->else_node() && n->else_link_type() == -1;
  }
  bool is_literal(Node n) const { return is_comparison(n) && n->then_node() == one_; }
  bool is_choice(Node n) const {
    return n->then_node() != one_ && n->else_node() != one_ && !is_comparison(n);
  }

  void count() {
    std::unordered_set<Node> met{one_};
    for (const TargetEquation& equation : text_.equations()) {
      if (equation.kind != TargetEquation::function) {
        if (const auto signals = equation.binding->getValue()->computeDependencySet())
          for (const Signal* signal : *signals) named_.insert(text_.status(signal));
        named_.insert(equation.index);
        continue;
      }
      ++uses_[equation.f.node()];
      walk_from(
          std::vector<Node>{equation.f.node()}, [&](Node n) { return met.insert(n).second; },
          [&](Node n, auto more) {
            mentions_[n->var_index()] += is_choice(n) ? 2 : 1;
            ++uses_[n->then_node()];
            more(n->then_node());
            if (is_comparison(n)) return;
            ++uses_[n->else_node()];
            more(n->else_node());
          });
    }
    for (const StateRail& rail : text_.state()) named_.insert(rail.next);
    for (long index : text_.output_rails()) named_.insert(index);
    const DataTable* data = text_.module()->getDataTable();
    if (data != nullptr)
      for (const auto& [bound, binding] : *data) {
        if (binding->getSignal() != nullptr) named_.insert(text_.status(binding->getSignal()));
        if (binding->getClock() != nullptr) named_.insert(text_.status(binding->getClock()));
      }
  }

  Both atom(const std::string& name) const {
    return {{Kind::atom, name}, {Kind::not_atom, texts_.not_text + name}};
  }
  Both variable(long index) const {
    const auto at = inlined_.find(index);
    return at == inlined_.end() ? atom(texts_.read(index)) : at->second;
  }
  Both constant() const { return {{Kind::atom, texts_.one, 0}, {Kind::atom, texts_.zero, 0}}; }

  Expression joined(Kind kind, const Expression& a, const Expression& b) const {
    const auto operand = [kind](const Expression& e) {
      const bool bare = e.kind == Kind::atom || (e.kind == kind && kind != Kind::comparison) ||
                        (e.kind == Kind::not_atom && kind != Kind::comparison);
      return bare ? e.text : "(" + e.text + ")";
    };
    const std::string& word = kind == Kind::conjunction ? texts_.and_text : texts_.or_text;
    return {kind, operand(a) + word + operand(b), a.size + b.size};
  }
  Expression both(const Expression& a, const Expression& b) const {
    return joined(Kind::conjunction, a, b);
  }
  Expression either(const Expression& a, const Expression& b) const {
    return joined(Kind::disjunction, a, b);
  }
  Expression compared(const std::string& word, const Expression& a, const Expression& b) const {
    const auto operand = [](const Expression& e) {
      return e.kind == Kind::atom ? e.text : "(" + e.text + ")";
    };
    return {Kind::comparison, operand(a) + word + operand(b), a.size + b.size};
  }

  /// That both are the same, and that they differ.
  Both comparison(const Both& a, const Both& b) const {
    if (!texts_.same_text.empty())
      return {compared(texts_.same_text, a.plain, b.plain),
              compared(texts_.differ_text, a.plain, b.plain)};
    return {either(both(a.plain, b.plain), both(a.complement, b.complement)),
            either(both(a.plain, b.complement), both(a.complement, b.plain))};
  }

  /// The expression of a node from those of its parts.
  Both expression(Node n) const {
    const Both x = variable(n->var_index());
    if (is_literal(n)) return x;
    const Both t = n->then_node() == one_ ? constant() : known_.at(n->then_node());
    if (is_comparison(n)) return comparison(x, t);
    const bool negated = n->else_link_type() == -1;
    if (n->else_node() == one_)
      return negated ? Both{both(x.plain, t.plain), either(x.complement, t.complement)}
                     : Both{either(x.complement, t.plain), both(x.plain, t.complement)};
    const Both e = known_.at(n->else_node()).turned(negated);
    if (n->then_node() == one_) return {either(x.plain, e.plain), both(x.complement, e.complement)};
    return {either(both(x.plain, t.plain), both(x.complement, e.plain)),
            either(both(x.plain, t.complement), both(x.complement, e.complement))};
  }

  using Product =
      std::vector<int>;  ///< codes of literals: twice an index, 1 more where it is plain

  Both conjunction(const Both& a, const Both& b) const {
    return {both(a.plain, b.plain), either(a.complement, b.complement)};
  }
  Both disjunction(const Both& a, const Both& b) const {
    return {either(a.plain, b.plain), both(a.complement, b.complement)};
  }

  /// The sum of products, none of them empty, with what several have in common in front of them.
  Both factored(std::vector<Product> sum) const {
    std::map<int, size_t> counts;
    for (const Product& product : sum)
      for (int code : product) ++counts[code];
    const int common =
        std::ranges::max_element(counts, {}, &std::pair<const int, size_t>::second)->first;
    std::vector<Product> with, without;
    for (Product& product : sum) {
      const bool has = std::erase(product, common) > 0;
      (has ? with : without).push_back(std::move(product));
    }
    Both f = variable(common / 2).turned(common % 2 == 0);
    // Where one product is the common literal alone, it takes in the others.
    if (std::ranges::none_of(with, &Product::empty)) f = conjunction(f, factored(std::move(with)));
    return without.empty() ? f : disjunction(f, factored(std::move(without)));
  }

  /// The function as a factored sum, if that is short.
  std::optional<Both> factored(const bdd& f) const {
    bddpp_manager& m = *text_.manager();
    if (m.Bdd_is_tautology(f) || known_.contains(f.node()) || compares(f) ||
        count_products(f, 4 * most_products) >= 4 * most_products)
      return std::nullopt;
    std::vector<Product> sum;
    for (const bdd& product : m.Bdd_sop(f, 1)) {
      const auto literals = literals_of(m, product);
      sum.emplace_back(literals.begin(), literals.end());
    }
    if (sum.size() > most_products) return std::nullopt;
    const Both both = factored(std::move(sum));
    return both.plain.size > most_factored ? std::nullopt : std::optional(both);
  }

  /// Nodes say that two things are the same or differ in fewer words.
  bool compares(const bdd& f) const {
    if (texts_.same_text.empty()) return false;
    bool found = false;
    std::unordered_set<Node> met{one_};
    walk_from(
        std::vector<Node>{f.node()}, [&](Node n) { return met.insert(n).second; },
        [&](Node n, auto more) {
          found = found || (is_comparison(n) && !is_literal(n));
          more(n->then_node());
          more(n->else_node());
        });
    return found;
  }

  /// Expressions of the nodes from `root` down; shared and long ones but the root's get lines.
  void take(bdd_node* root) {
    walk_from_below(
        Node{root}, [&](Node n) { return n == one_ || known_.contains(n); },
        [&](Node n, auto ask) {
          ask(n->then_node());
          ask(n->else_node());
        },
        [&](Node n) {
          Both made = expression(n);
          const bool shared = uses_[n] > 1 && made.plain.size > 1;
          if (n != root && (shared || made.plain.size > longest)) {
            const long number = parts_++;
            lines_.push_back({.number = number, .right = made.plain.text});
            made = atom(texts_.part(number));
          }
          known_.emplace(n, std::move(made));
        });
  }

  void put(const TargetEquation& equation) {
    if (equation.kind != TargetEquation::function) {
      lines_.push_back({.index = equation.index, .equation = &equation});
      return;
    }
    const bool negated = equation.f.link_type() == -1;
    const std::optional<Both> sum = factored(equation.f);
    if (!sum) take(equation.f.node());
    const Both f = sum ? *sum
                       : (equation.f.node() == one_ ? constant() : known_.at(equation.f.node()))
                             .turned(negated);
    const bool wanted = named_.contains(equation.index);
    if (!wanted &&
        (f.plain.size <= 1 || (mentions_[equation.index] <= 1 && f.plain.size <= most_inline))) {
      inlined_.emplace(equation.index, f);
      return;
    }
    lines_.push_back({.index = equation.index, .right = f.plain.text});
    // Whoever reads the node from here on reads the variable.
    if (f.plain.size > 1)
      known_[equation.f.node()] = atom(texts_.read(equation.index)).turned(negated);
  }

  const TargetText& text_;
  const ExpressionTexts& texts_;
  Node one_;
  std::unordered_map<Node, int> uses_;
  std::unordered_map<long, int> mentions_;  ///< by index of a variable
  std::unordered_set<long> named_;          ///< variables that others than expressions read
  std::unordered_map<Node, Both> known_;
  std::unordered_map<long, Both> inlined_;  ///< by index
  std::vector<StraightLine> lines_;
  long parts_ = 0;
};

}  // namespace

std::string left_of(const StraightLine& line, const ExpressionTexts& texts) {
  return line.index < 0 ? texts.part(line.number) : texts.read(line.index);
}

std::vector<const DataBinding*> early_values(const TargetText& text,
                                             const std::vector<StraightLine>& lines) {
  std::vector<const DataBinding*> early;
  if (text.module()->getDataTable() == nullptr) return early;
  std::unordered_set<long> computed;
  for (const StraightLine& line : lines) computed.insert(line.index);
  for (const auto& [bound, binding] : *text.module()->getDataTable())
    if (binding->getClock() != nullptr && !binding->getClock()->isOutput() &&
        !computed.contains(text.status(binding->getSignal())))
      early.push_back(binding);
  return early;
}

std::string broken(const std::string& line) {
  constexpr size_t width = 100;
  const std::string margin = "\n" + std::string(line.find_first_not_of(' ') + 4, ' ');
  std::string text;
  size_t from = 0, column = 0;
  while (line.size() - from + column > width + 1) {
    size_t at = line.rfind(' ', from + width - column);
    if (at == std::string::npos || at <= from + margin.size()) at = line.find(' ', from + width);
    if (at == std::string::npos) break;
    text += line.substr(from, at - from) + margin;
    column = margin.size() - 1;
    from = at + 1;
  }
  return text + line.substr(from);
}

std::vector<StraightLine> straight_code(const TargetText& text, const ExpressionTexts& texts) {
  return StraightCode(text, texts).lines();
}

}  // namespace kiva
