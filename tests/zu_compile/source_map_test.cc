// The lit source against the meaning of programs: statement by statement, instant by instant, what
// has started, waits, has ended and was killed is what the interpreter says, and so are the values
// of the conditions that it looked at.

#include "tarn/zu/source_map.h"

#include <gtest/gtest.h>

#include <utility>

#include "engine/diagram.h"
#include "engine/lit_source.h"
#include "engine/simulation.h"
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
/// Those with a condition, in the order of their conditions in the text.
void conditions(const Program& p, std::vector<const Program*>& all) {
  const std::string name = p.kind->name;
  const bool behind = name.ends_with("abort");
  if (name == "present" || name == "wait" || name == "sustain") all.push_back(&p);
  for (const Program& part : p.parts) conditions(part, all);
  if (behind) all.push_back(&p);
}

void standing(const State& state, std::set<const Program*>& all) {
  if (!state) return;
  all.insert(state->of.begin(), state->of.end());
  for (const State& part : state->parts) standing(part, all);
}

/// What the interpreter saw a statement do.
class Watched {
 public:
  explicit Watched(const Meaning& meaning) : meaning_(meaning) { standing(meaning.state(), was_); }

  Light light(const Program* p) const {
    std::set<const Program*> now;
    standing(meaning_.state(), now);
    const Meaning::Events events = meaning_.events(p);
    const int left = int{was_.contains(p)} + events.started - events.ended - int{now.contains(p)};
    return {events.started > 0, now.contains(p), events.ended > 0, left > 0};
  }

 private:
  const Meaning& meaning_;
  std::set<const Program*> was_;
};

std::string text(const Light& light) {
  return std::string(light.started ? "started " : "") + (light.waits ? "waits " : "") +
         (light.ended ? "ended " : "") + (light.killed ? "killed" : "");
}

/// A module as `tarn --map` makes it, being run beside its meaning.
class Lit {
 public:
  explicit Lit(const Program& program)
      : mapped_(), compiled_(module_text(program)), meaning_(program) {
    if (!compiled_.ok()) return;
    compiled_.module()->finalize(0);
    simulation_ = std::make_unique<Simulation>(compiled_.module());
    const std::string map =
        source_map_text(source_map(compiled_.module()), compiled_.module()->getName(), "");
    source_ = std::make_unique<LitSource>(map, *simulation_);
    EXPECT_EQ(source_->problem(), "");
    drawn_ = automata_of_map(map);
    if (!drawn_.empty()) lights_ = std::make_unique<DiagramLights>(drawn_[0], *simulation_);
  }
  bool ok() const { return compiled_.ok(); }
  const LitSource& source() const { return *source_; }
  const SimulationState& state() const { return simulation_->state(); }
  const Meaning& meaning() const { return meaning_; }
  const Diagram& drawn() const { return drawn_[0]; }
  DiagramLight drawn_light() const { return lights_->at(state()); }

  void step(const std::set<std::string>& present, bool first) {
    for (size_t row = 0; row < simulation_->input_names().size(); ++row)
      simulation_->choose_input(row, present.contains(simulation_->input_names()[row])
                                         ? SignalState::one
                                         : SignalState::zero);
    simulation_->step(nullptr);
    ASSERT_TRUE(meaning_.step(present, first, false));
  }

 private:
  struct Mapped {
    Mapped() : rules(std::exchange(Compilation::rules(), Rules::sound())) {
      Compilation::MapFlag() = Compilation::KeepWiresFlag() = true;
    }
    ~Mapped() {
      Compilation::MapFlag() = Compilation::KeepWiresFlag() = false;
      Compilation::rules() = rules;
    }
    Rules rules;
  } mapped_;
  Compiled compiled_;
  Meaning meaning_;
  std::unique_ptr<Simulation> simulation_;
  std::unique_ptr<LitSource> source_;
  std::vector<Diagram> drawn_;
  std::unique_ptr<DiagramLights> lights_;
};

struct Counts {
  long instants = 0, started = 0, waits = 0, ended = 0, killed = 0, looked = 0;
};

/// One text and the instance of it that is lit.
struct Shown {
  const Program& program;
  size_t instance;
};

/// False where the text has other leaves: some statements are written as others are.
bool compare(const Lit& lit, const Shown& shown, const Watched& watched, Counts& counts) {
  std::vector<const Program*> in_text, looking;
  leaves(shown.program, in_text);
  conditions(shown.program, looking);
  const std::vector<LitSource::Lit> told = lit.source().leaves(shown.instance, lit.state());
  if (told.size() != in_text.size()) return false;
  for (size_t leaf = 0; leaf < told.size(); ++leaf) {
    const Light& light = told[leaf].light;
    EXPECT_EQ(text(light), text(watched.light(in_text[leaf])))
        << "line " << told[leaf].place.first_line << " column " << told[leaf].place.first_column;
    counts.started += light.started;
    counts.waits += light.waits;
    counts.ended += light.ended;
    counts.killed += light.killed;
  }
  std::vector<bool> meant, seen;
  for (const Program* p : looking)
    if (lit.meaning().has_looked(p)) meant.push_back(p->condition.holds(lit.meaning().present()));
  for (const LitSource::Looked& looked : lit.source().looked_at(shown.instance, lit.state()))
    seen.push_back(looked.holds);
  EXPECT_EQ(seen, meant) << "conditions of instance " << shown.instance;
  counts.looked += static_cast<long>(seen.size());
  return true;
}

/// Of an automaton, being in state `was` before the instant and `is` behind it; -1 for none.
void compare_states(const Lit& lit, const Program& automaton, int was, int is) {
  const std::vector<LitSource::Lit> told = lit.source().states(0, lit.state());
  ASSERT_EQ(told.size(), automaton.states.size());
  bool in_final = false;
  for (int i = 0; i < static_cast<int>(told.size()); ++i) {
    const Light& light = told[static_cast<size_t>(i)].light;
    if (automaton.states[static_cast<size_t>(i)].final_state)
      in_final = in_final || light.any();
    else
      EXPECT_EQ(text(light), text({is == i && was != i, is == i, was == i && is != i, false}))
          << "state " << i;
  }
  EXPECT_EQ(in_final, lit.meaning().ended());
}

/// The drawn automaton is in the states that the text is in, and what fires leads from one to the
/// other.
void compare_drawn(const Lit& lit, const Program& automaton, int was, int is) {
  const Diagram& drawn = lit.drawn();
  const DiagramLight light = lit.drawn_light();
  const std::vector<LitSource::Lit> told = lit.source().states(0, lit.state());
  ASSERT_EQ(drawn.nodes.size(), told.size());
  const auto state_of = [&](size_t node) {
    for (size_t i = 0; i < told.size(); ++i)
      if (told[i].place == drawn.nodes[node].place) return static_cast<int>(i);
    return -1;
  };
  for (size_t node = 0; node < drawn.nodes.size(); ++node) {
    const int state = state_of(node);
    ASSERT_GE(state, 0);
    if (automaton.states[static_cast<size_t>(state)].final_state) continue;
    EXPECT_EQ(light.is[node], state == was) << drawn.nodes[node].name;
    EXPECT_EQ(light.next[node], state == is) << drawn.nodes[node].name;
  }
  bool moved = false;
  for (size_t n = 0; n < drawn.arcs.size(); ++n) {
    const Diagram::Arc& arc = drawn.arcs[n];
    if (!light.fired[n]) continue;
    EXPECT_TRUE(light.triggered[n]) << arc.label;
    EXPECT_TRUE(arc.from == Diagram::nowhere || state_of(arc.from) == was) << arc.label;
    const bool ends = automaton.states[static_cast<size_t>(state_of(arc.to))].final_state;
    EXPECT_TRUE(ends || state_of(arc.to) == is) << arc.label;
    moved = true;
  }
  EXPECT_TRUE(moved || was == is) << was << " to " << is;
}

void compare_automaton(const Lit& lit, const Program& automaton, int was, int is) {
  compare_states(lit, automaton, was, is);
  compare_drawn(lit, automaton, was, is);
}

/// Runs a program for twelve instants, all its texts lit.
void compare(const Program& program, std::mt19937& random, Counts& counts) {
  Lit lit(program);
  if (!lit.ok()) return;
  const bool automaton = !program.states.empty();
  std::vector<Shown> all;
  for (size_t i = 0; i < lit.source().instances().size(); ++i) {
    if (!automaton) all.push_back({program, i});
    const std::string& module = lit.source().instances()[i].module;
    if (module.starts_with("run"))
      all.push_back({program.states[std::stoul(module.substr(3))].run[0], i});
  }
  const auto state = [&] { return lit.meaning().runs() ? lit.meaning().state()->at : -1; };
  for (int i = 0; i < 12 && !testing::Test::HasFailure(); ++i) {
    std::set<std::string> present;
    for (const std::string& name : input_names)
      if (random() % 3 == 0) present.insert(name);
    const Watched watched(lit.meaning());
    const int was = state();
    lit.step(present, i == 0);
    if (lit.meaning().contradicted()) return;
    for (const Shown& shown : all)
      if (!compare(lit, shown, watched, counts)) return;
    if (automaton) compare_automaton(lit, program, was, state());
    ++counts.instants;
    if (testing::Test::HasFailure()) ADD_FAILURE() << "instant " << i + 1;
  }
}

TEST(SourceMaps, LightWhatStatementsDo) {
  const long seed = setting("KIVA_SEED", 77);
  const long programs = setting("KIVA_PROGRAMS", 2000);
  Counts counts;
  for (long number = 0; number < programs && !HasFailure(); ++number) {
    std::mt19937 random(static_cast<unsigned>(seed + number));
    const int size = 2 + static_cast<int>(random() % 14);
    const Program program =
        (seed + number) % 5 == 4 ? random_automaton(random, size) : random_program(random, size);
    compare(program, random, counts);
    if (HasFailure())
      ADD_FAILURE() << "KIVA_SEED=" << seed + number << '\n' << module_text(program);
  }
  for (const long count :
       {counts.instants, counts.started, counts.waits, counts.ended, counts.looked})
    EXPECT_GT(count, 2 * programs);
  EXPECT_GT(counts.killed, programs / 8);
}

}  // namespace
}  // namespace kiva::test
