#include "bench/module_text.h"

#include <random>
#include <vector>

namespace kiva::bench {

namespace {

constexpr long inputs = 8;

std::string names(const std::string& prefix, long count) {
  std::string text;
  for (long i = 0; i < count; ++i) text += prefix + std::to_string(i) + ' ';
  return text;
}

}  // namespace

std::string generated_module(long equations, long registers) {
  std::mt19937 random(42);
  const auto below = [&random](long n) {
    return static_cast<long>(random() % static_cast<unsigned long>(n));
  };
  // Two equations, status and value, for each local that is no register's present variable.
  const long locals = equations / 2;
  std::string text = "module: generated  0 1\ninput: " + names("I", inputs) +
                     ";\nlocal: " + names("L", locals) + names("R", registers) + ";\nregister:\n";
  for (long r = 0; r < registers; ++r)
    text += "L" + std::to_string(below(locals)) + " R" + std::to_string(r) + " 0;\n";
  text += "connexion: SETg RESETg RTLg;\nequation_def:\n";

  const auto status = [](long signal) { return 2 * signal; };
  const long first_local = inputs, first_register = inputs + locals;
  struct Line {
    long var, then_id, else_id, link;
  };
  std::vector<Line> nodes{{-1, -3, -3, 1}};
  std::string equations_text;
  const auto node = [&nodes](long var, long then_id, long else_id, long link) {
    nodes.push_back({var, then_id, else_id, link});
    return static_cast<long>(nodes.size()) - 1;
  };
  constexpr long levels = 50;
  const long width = std::max(1L, locals / levels);
  for (long l = 0; l < locals; ++l) {
    const long level = l / width;
    const auto read = [&]() -> long {
      // Mostly the level below, else an input or a register.
      if (level > 0 && below(4) != 0)
        return status(first_local + (level - 1) * width + below(width));
      if (registers > 0 && below(2) != 0) return status(first_register + below(registers));
      return status(below(inputs));
    };
    long chosen = 1 + below(3) + below(2);
    long root = node(read(), 0, 0, -1);
    for (; chosen > 1; --chosen) {
      const long var = read();
      // The reader puts the variables in order; here each new one stands above the others.
      root = below(2) != 0 ? node(var, root, 0, -1) : node(var, 0, root, 1);
    }
    const long var = status(first_local + l);
    const long own = node(var, 0, 0, -1);
    equations_text += std::to_string(level + 1) + " 0 " + std::to_string(var) + ":" +
                      std::to_string(root) + ",1,(0 )\n";
    equations_text += std::to_string(level + 2) + " 0 " + std::to_string(var + 1) + ":" +
                      std::to_string(own) + ",-1,(" + std::to_string(var) + " )\n";
  }
  text += std::to_string(nodes.size()) + "\n";
  for (size_t i = 0; i < nodes.size(); ++i)
    text += std::to_string(i) + ": " + std::to_string(nodes[i].var) + ":" +
            std::to_string(nodes[i].then_id) + ":" + std::to_string(nodes[i].else_id) + "," +
            std::to_string(nodes[i].link) + "\n";
  return text + "expressions:\n" + equations_text + "end:\n";
}

std::string generated_nodes(long nodes) {
  return generated_module(nodes / 2, nodes / 40);
}

}  // namespace kiva::bench
