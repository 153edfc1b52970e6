#include "tests/support/random_module.h"

#include <algorithm>
#include <vector>

namespace kiva::test {

namespace {

struct Names {
  std::string text;
  int count;
};

Names names(const char* prefix, int count) {
  std::string text;
  for (int i = 0; i < count; ++i) text += prefix + std::to_string(i) + " ";
  return {text, count};
}

}  // namespace

std::string random_module(std::mt19937& random, bool wrong_dates,
                          bool defined) {  // house: one text
  const auto below = [&random](int n) {
    return static_cast<int>(random() % static_cast<unsigned>(n));
  };
  const Names inputs = names("I", 1 + below(4)), outputs = names("O", 1 + below(3)),
              locals = names("L", 1 + below(6)), actual = names("R", below(4)),
              next = names("N", actual.count);
  std::string text = "module: random  0 " + std::to_string(below(2)) + "\ninput: " + inputs.text +
                     "V:int ;\noutput: " + outputs.text + ";\nlocal: " + locals.text + actual.text +
                     next.text + ";\n";
  if (actual.count > 0) text += "register:\n";
  for (int r = 0; r < actual.count; ++r)
    text +=
        "N" + std::to_string(r) + " R" + std::to_string(r) + " " + std::to_string(below(2)) + ";\n";
  text += "connexion: SET RESET RTL;\nequation_def:\n";

  // Signals by number: inputs, V, outputs, locals, registers, next variables, set, reset, rtl.
  const int first_output = inputs.count + 1, first_local = first_output + outputs.count,
            first_register = first_local + locals.count, first_next = first_register + actual.count,
            set = first_next + next.count;
  // Equations in an order of evaluation: locals, then next variables and outputs.
  std::vector<int> written;
  for (int i = 0; i < locals.count; ++i) written.push_back(first_local + i);
  for (int i = 0; i < next.count; ++i) written.push_back(first_next + i);
  for (int i = 0; i < outputs.count; ++i) written.push_back(first_output + i);
  std::vector<int> readable{set, set + 1};
  for (int i = 0; i < first_output; ++i) readable.push_back(i);
  for (int i = 0; i < actual.count; ++i) readable.push_back(first_register + i);

  std::string nodes, equations;
  int node_count = 1, date = 1;
  const auto variable_of = [&](int signal) { return 2 * signal + below(2); };
  for (int signal : written) {
    for (int rail = 0; rail < 2; ++rail, ++date) {
      if (below(8) == 0 && !defined) continue;  // a rail that nothing defines
      int root = 0;
      for (int steps = below(10); steps >= 0; --steps) {
        const int variable =
            variable_of(readable[static_cast<size_t>(below(static_cast<int>(readable.size())))]);
        const int other = below(node_count);
        // Children may be any earlier nodes: shared diagrams of many shapes.
        nodes += std::to_string(node_count) + ": " + std::to_string(variable) + ":" +
                 std::to_string(root) + ":" + std::to_string(below(3) == 0 ? other : 0) + "," +
                 (below(2) == 0 ? "1" : "-1") + "\n";
        // The polarity of a node whose function is negative at one cannot be written: its then
        // edge is direct, so every node is one where all its variables hold.
        root = node_count++;
      }
      const int early = wrong_dates ? below(7) - 2 : date;
      equations += std::to_string(early) + " 0 " + std::to_string(2 * signal + rail) + ":" +
                   std::to_string(root) + "," + (below(2) == 0 ? "1" : "-1") + ",( )\n";
    }
    readable.push_back(signal);
  }
  return text + std::to_string(node_count) + "\n0: -1:-3:-3,1\n" + nodes + "expressions:\n" +
         equations + "end:\n";
}

}  // namespace kiva::test
