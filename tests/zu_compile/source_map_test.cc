// The map of a source text against the meaning of programs: what waits, by the registers that the
// map names, is what the interpreter has waiting.

#include "tarn/zu/source_map.h"

#include <gtest/gtest.h>

#include <map>

#include "tarn/model/compilation.h"
#include "tests/support/setting.h"
#include "tests/zu_compile/compiled.h"
#include "tests/zu_compile/meaning.h"

namespace kiva::test {
namespace {

/// The statements without parts that a text holds, in its order.
void leaves(const Program& p, std::vector<const Program*>& all) {
  if (p.parts.empty()) all.push_back(&p);
  for (const Program& part : p.parts) leaves(part, all);
}

void running(const State& state, std::set<const Program*>& all) {
  if (!state) return;
  all.insert(state->of.begin(), state->of.end());
  for (const State& part : state->parts) running(part, all);
}

TEST(SourceMaps, SayWhatWaits) {
  const long seed = setting("KIVA_SEED", 77);
  const long programs = setting("KIVA_PROGRAMS", 1500);
  long compared = 0, waiting = 0;
  for (long number = 0; number < programs; ++number) {
    std::mt19937 random(static_cast<unsigned>(seed + number));
    const Program program = random_program(random, 2 + static_cast<int>(random() % 14));
    const Compiled compiled(module_text(program));
    if (!compiled.ok()) continue;
    std::vector<const Program*> in_text;
    leaves(program, in_text);
    using Place = std::pair<int, int>;
    std::map<Place, std::vector<std::string>> registers;
    const SourceMap map = source_map(compiled.module());
    for (const SourceMap::Part& part : map.instances.at(0).parts) {
      if (!part.leaf) continue;
      std::vector<std::string>& of = registers[{part.span.first_line, part.span.first_column}];
      of.insert(of.end(), part.active_next.begin(), part.active_next.end());
    }
    // Some statements are written as others are: then the text has other leaves.
    if (registers.size() != in_text.size()) continue;
    Instants machine(compiled);
    Meaning meaning(program);
    for (int i = 0; i < 12; ++i) {
      Stimulus stimulus;
      for (const std::string& name : input_names)
        if (random() % 3 == 0) stimulus.present.insert(name);
      stimulus.set = !meaning.runs() && random() % 2 == 0;
      stimulus.reset = i > 0 && random() % 12 == 0;
      machine.step(stimulus);
      ASSERT_TRUE(meaning.step(stimulus.present, stimulus.set, stimulus.reset));
      if (meaning.contradicted()) break;
      std::set<const Program*> now;
      running(meaning.state(), now);
      auto leaf = in_text.begin();
      for (const auto& [place, names] : registers) {
        bool waits = false;
        for (const std::string& name : names) waits = waits || machine.state(name) == '1';
        // What halts has no register.
        if (!names.empty()) {
          ASSERT_EQ(waits, now.contains(*leaf)) << "KIVA_SEED=" << seed + number << " instant "
                                                << i + 1 << " column " << place.second << '\n'
                                                << module_text(program);
        }
        waiting += waits;
        ++leaf;
      }
      ++compared;
    }
  }
  EXPECT_GT(compared, 6 * programs);
  EXPECT_GT(waiting, 4 * programs);
}

}  // namespace
}  // namespace kiva::test
