// JSON: the whole module, for programs that have their own use for it. docs/targets.md tells the
// schema. There is no told form.

#include <ostream>

#include <nlohmann/json.hpp>

#include "base/graph_walk.h"
#include "tarn/targets/benches/benches.h"
#include "tarn/targets/frame/straight_code.h"
#include "tarn/targets/frame/target.h"

namespace kiva {

namespace {

const TargetText::Language language{.shape = {.target = "JSON", .more_characters = ".@"},
                                    .names_module = false};

std::string quoted(const std::string& text) {
  return nlohmann::json(text).dump(-1, ' ', true, nlohmann::json::error_handler_t::replace);
}

/// Items of a list, a line each.
class List {
 public:
  List(const char* name, std::ostream& out) : out_(out) { out << "  \"" << name << "\": ["; }
  void add(const std::string& item) {
    out_ << (empty_ ? "\n    " : ",\n    ") << item;
    empty_ = false;
  }
  void end(const char* separator = ",") { out_ << (empty_ ? "]" : "\n  ]") << separator << '\n'; }

 private:
  std::ostream& out_;
  bool empty_ = true;
};

class JsonText {
 public:
  explicit JsonText(const TargetText& text) : text_(text) {}

  void put(std::ostream& out) {
    out << "{\n  \"format\": \"kiva module\",\n  \"version\": 1,\n  \"name\": "
        << quoted(text_.module()->getName()) << ",\n";
    put_interface("inputs", text_.input_rails(), text_.inputs(), out);
    put_interface("outputs", text_.output_rails(), text_.outputs(), out);
    List registers("registers", out);
    for (const StateRail& rail : text_.state())
      registers.add("{\"name\": " + quoted(text_.name(rail.index)) +
                    ", \"next\": " + quoted(text_.name(rail.next)) +
                    ", \"initial\": " + (rail.initial ? "true" : "false") + "}");
    registers.end();
    put_nodes(out);
    List equations("equations", out);
    for (const TargetEquation& equation : text_.equations())
      equations.add("{\"name\": " + quoted(text_.name(equation.index)) +
                    ", \"function\": " + std::to_string(number(equation.f)) + "}");
    equations.end();
    put_text(out);
    out << "}\n";
  }

 private:
  void put_interface(const char* name, const std::vector<long>& rails,
                     const std::vector<Signal*>& signals, std::ostream& out) const {
    List list(name, out);
    for (long index : rails) {
      std::string item = "{\"name\": " + quoted(text_.name(index));
      for (const Signal* signal : signals)
        if (text_.status(signal) == index) {
          item += ", \"signal\": " + quoted(signal->getOriginalName());
          if (text_.is_valued(signal)) item += ", \"type\": " + quoted(text_.type(signal));
        }
      list.add(item + "}");
    }
    list.end();
  }

  void put_nodes(std::ostream& out) {
    const bdd_node* const one = text_.manager()->Bdd_node_one();
    numbers_[one] = 1;
    List list("nodes", out);
    for (const TargetEquation& equation : text_.equations())
      walk_from_below(
          static_cast<const bdd_node*>(equation.f.node()),
          [&](const bdd_node* node) { return numbers_.contains(node); },
          [&](const bdd_node* node, auto ask) {
            ask(node->then_node());
            ask(node->else_node());
          },
          [&](const bdd_node* node) {
            const long made = static_cast<long>(numbers_.size()) + 1;
            list.add("{\"number\": " + std::to_string(made) +
                     ", \"if\": " + quoted(text_.name(node->var_index())) + ", \"then\": " +
                     std::to_string(numbers_.at(node->then_node())) + ", \"else\": " +
                     std::to_string(numbers_.at(node->else_node()) * node->else_link_type()) + "}");
            numbers_[node] = made;
          });
    list.end();
  }

  long number(const bdd& f) const { return numbers_.at(f.node()) * f.link_type(); }

  void put_text(std::ostream& out) const {
    const ExpressionTexts texts{.and_text = " and ",
                                .or_text = " or ",
                                .not_text = "not ",
                                .differ_text = " xor ",
                                .same_text = " = ",
                                .zero = "false",
                                .one = "true",
                                .read = [this](long index) { return text_.name(index); },
                                .part = [](long n) { return "#" + std::to_string(n); }};
    List list("text", out);
    for (const StraightLine& line : straight_code(text_, texts))
      list.add(quoted((line.index < 0 ? texts.part(line.number) : text_.name(line.index)) +
                      " := " + line.right));
    list.end("");
  }

  const TargetText& text_;
  std::unordered_map<const bdd_node*, long> numbers_;
};

void put_module(const TargetJob& job) {
  const TargetText text(job.module, language, job.rules.without_told());
  JsonText(text).put(job.out);
}

const Bench bench{.language = &language,
                  .extension = ".py",
                  .run = json_bench_run,
                  .put = put_json_bench,
                  .tool = "python3 --version"};

}  // namespace

extern const Target json_target{.option = "json",
                                .help = "the whole module, .json",
                                .file = {.extension = ".json"},
                                .put = put_module,
                                .bench = &bench};

}  // namespace kiva
