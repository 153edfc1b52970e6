// Finalised modules: what always holds of them, and that they run as the modules that they come
// from.

#include <gmock/gmock.h>

#include <filesystem>
#include <iostream>
#include <sstream>

#include "engine/simulation.h"
#include "engine/stimuli.h"
#include "engine/trace.h"
#include "tarn/model/compilation.h"
#include "tarn/zuc/zuc_reader.h"
#include "tests/support/process_end.h"
#include "tests/support/temp_dir.h"
#include "tests/zu_compile/compiled.h"
#include "tests/zu_compile/program.h"

namespace kiva::test {
namespace {

using testing::HasSubstr;

struct Finalised : Compiled {
  explicit Finalised(const std::string& text, const Rules& rules = Rules::sound(),
                     bool keep_wires = false, int keep_rtl = 0)
      : Compiled(text, rules), before_(std::exchange(Compilation::rules(), rules)) {
    if (!ok()) return;
    Compilation::KeepWiresFlag() = keep_wires;
    told = run_captured([&] { module()->finalize(keep_rtl); }).err;
    Compilation::KeepWiresFlag() = false;
  }
  /// The rules hold as long as it lives.
  ~Finalised() { Compilation::rules() = before_; }
  const Bddexpression* at(long id) const { return wood()->exp_by_index(id); }
  bool defines(const Signal* signal) const {
    return at(signal->getInitialBddStatusId(module(), wood())) != nullptr;
  }
  std::string name(long id) const { return wood()->Name_var_by_index(id); }
  std::string told;

 private:
  Rules before_;
};

std::string probe(const std::string& name) {
  return std::string(KIVA_RULE_PROBES) + "/" + name;
}

/// Runs lines of stimuli, in the form of the console, and gives one line an instant.
std::string run(Module* module, const std::string& stimuli) {
  Simulation simulation(module);
  JsonTrace trace(simulation);
  std::istringstream in(stimuli);
  StimuliReader reader(in, simulation);
  std::ostringstream out;
  run_captured([&] {
    while (const auto stimulus = reader.next()) {
      apply(*stimulus, simulation);
      simulation.step(nullptr);
      trace.write(out, simulation.state());
    }
  });
  return out.str();
}

/// The lines of a trace as they stand in a probe's file: instant and outputs alone, no blanks.
std::string outputs_only(const std::string& trace) {
  std::istringstream lines(trace);
  std::string all;
  for (std::string line; std::getline(lines, line);) {
    const size_t end = line.find("}");
    all += line.substr(0, end) + "}}\n";
  }
  return all;
}

std::string written(Module* module, int forget_locals) {
  std::ostringstream os;
  module->ZUC_put(os, 2, 1, forget_locals);
  return os.str();
}

/// The module that is read from the text of another; null, and a failed test, when there is none.
Module* read_back(const TempDir& dir, const std::string& text) {
  ZucRead result;
  const std::string file = dir.write("m.zuc", text);
  run_captured([&] { result = read_zuc_file(file, "", ""); });
  EXPECT_NE(result.module, nullptr) << result.problem;
  return result.module;
}

/// The programs that tell the two sets of rules apart. An empty trace: the program is refused.
TEST(Finalisation, ProbesOfTheRulesShowTheirWholeTraces) {
  const TempDir dir;
  int probes = 0;
  for (const auto& entry : std::filesystem::directory_iterator(KIVA_RULE_PROBES)) {
    if (entry.path().extension() != ".zu") continue;
    const std::string name = entry.path().stem().string();
    const std::string text = read_text(probe(name + ".zu")),
                      stimuli = read_text(probe(name + ".stim"));
    for (const bool sound : {false, true})
      for (const bool keep_wires : {false, true}) {
        SCOPED_TRACE(name + (sound ? " sound " : " classic ") + std::to_string(keep_wires));
        std::string expected = read_text(probe(name + (sound ? ".sound.json" : ".classic.json")));
        std::erase(expected, ' ');
        const Finalised made(text, sound ? Rules::sound() : Rules::classic(), keep_wires);
        ASSERT_EQ(made.ok(), !expected.empty()) << made.report();
        if (!made.ok()) continue;
        const std::unique_ptr<Module> read(read_back(dir, written(made.module(), 0)));
        ASSERT_NE(read, nullptr);
        EXPECT_EQ(outputs_only(run(read.get(), stimuli)), expected);
      }
    ++probes;
  }
  EXPECT_EQ(probes, 18);
}

/// Names that the compiler makes step aside, whatever is declared first.
TEST(Finalisation, NoMadeNameMeetsOneOfTheUsers) {
  const TempDir dir;
  const std::vector<std::vector<std::string>> hostile{{"boot", "led", "led_1", "led_2"},
                                                      {"RESETmain", "RTLmain", "SETmain", "V8"},
                                                      {"ACTIFmainPn_00", "SETmainPn_0", "o", "o_1"},
                                                      {"bootplus", "o", "o_1", "o_1_bis"}};
  for (std::vector<std::string> n : hostile) do {
      const std::string text = "module main: Input: " + n[0] + "; Output: " + n[1] + ", " + n[2] +
                               "; Local: " + n[3] + "; wait " + n[0] + " >> emit " + n[1] +
                               " >> pause >> emit " + n[3] + " >> pause >> {emit " + n[1] +
                               " || present not " + n[3] + " emit " + n[2] + "} end\n";
      SCOPED_TRACE(text);
      const Finalised made(text);
      ASSERT_TRUE(made.ok()) << made.report();
      for (const int forget_locals : {0, 1}) {
        const std::unique_ptr<Module> read(read_back(dir, written(made.module(), forget_locals)));
        ASSERT_NE(read, nullptr);
        std::string expected;
        int instant = 0;
        for (const char* states : {"__", "1_", "__", "11"}) {
          const auto state = [&](int i) { return states[i] == '1' ? "one" : "bottom"; };
          expected += "{\"instant\":" + std::to_string(++instant) + ",\"outputs\":{\"" + n[1] +
                      "\":[\"" + state(0) + "\",\"--\"],\"" + n[2] + "\":[\"" + state(1) +
                      "\",\"--\"]}}\n";
        }
        EXPECT_EQ(outputs_only(run(read.get(), "\n" + n[0] + "\n\n\n")), expected);
      }
    } while (std::next_permutation(n.begin(), n.end()));
}

/// A local that is listed has both rails.
void expect_whole_locals(const Finalised& made) {
  for (const Signal* local : made.module()->getLocalSignalList()) {
    if (local->isRegister()) continue;
    bool known = false;
    const std::list<long> rails = local->getAllBddId(made.module(), made.wood());
    for (auto at = rails.begin(); at != rails.end(); ++at) {
      const bool has_status = made.at(*at) != nullptr;
      EXPECT_EQ(has_status, made.at(*++at) != nullptr) << made.name(*at);
      known = known || has_status;
    }
    EXPECT_TRUE(known) << local->getInternalName();
  }
}

/// What holds of every finalised module.
void expect_invariants(const Finalised& made) {
  Module* const module = made.module();
  Bddexpressionwood* const wood = made.wood();
  EXPECT_EQ(module->getFinalised(), 1);
  for (const Signal* input : module->getInputSignalList()) {
    const long status = input->getBddStatusId(module, wood);
    const Bddexpression* value = made.at(input->getBddValueId(module, wood));
    EXPECT_EQ(made.at(status), nullptr);
    EXPECT_EQ(made.name(status), input->getOriginalName());
    ASSERT_NE(value, nullptr);
    EXPECT_EQ(value->my_bdd_exp(), wood->Bdd_not(wood->Bdd_var_by_index(status)));
    EXPECT_EQ(value->getUserType(), Compilation::VINPUT);
  }
  for (const Signal* output : module->getOutputSignalList()) {
    const long status = output->getInitialBddStatusId(module, wood);
    EXPECT_EQ(made.name(status), output->getOriginalName());
    ASSERT_NE(made.at(status), nullptr) << output->getOriginalName();
    ASSERT_NE(made.at(output->getInitialBddValueId(module, wood)), nullptr);
  }
  expect_whole_locals(made);
  ASSERT_FALSE(module->getRegisterList().empty());
  const regclass* start = module->getRegisterList().back();
  EXPECT_EQ(start->actual_var()->getOriginalName(), "boot");
  EXPECT_EQ(start->next_var()->getOriginalName(), "bootplus");
  EXPECT_EQ(start->is_initialy_true(), 1);
  for (const regclass* reg : module->getRegisterList()) {
    EXPECT_TRUE(reg->actual_var()->isRegister() && reg->next_var()->isRegister());
    EXPECT_TRUE(reg->actual_var()->isWire() && reg->next_var()->isWire());
    const Bddexpression* next = made.at(reg->next_var()->getBddStatusId(module, wood));
    ASSERT_NE(next, nullptr);
    EXPECT_EQ(next->getUserType(), Compilation::SREG);
  }
  const long boot = start->actual_var()->getBddStatusId(module, wood);
  ASSERT_TRUE(made.defines(module->getSet()));
  EXPECT_EQ(made.at(module->getSet()->getBddStatusId(module, wood))->my_bdd_exp(),
            wood->Bdd_var_by_index(boot));
  ASSERT_TRUE(made.defines(module->getReset()));
  EXPECT_TRUE(wood->Bdd_is_tautology(
      made.at(module->getReset()->getBddStatusId(module, wood))->my_bdd_exp(), 0));
  EXPECT_TRUE(wood->Bdd_is_tautology(
      made.at(module->getReset()->getBddValueId(module, wood))->my_bdd_exp(), 1));
  for (long id : wood->Set_of_exp()) {
    EXPECT_EQ(made.name(id).find('@'), std::string::npos);
    EXPECT_NE(made.name(id).front(), '_');
    // An order of evaluation.
    if (made.at(id)->getAbstraction() != 0) continue;
    for (long dep : made.at(id)->set_of_var_dependances()) {
      if (made.at(dep) == nullptr) continue;
      EXPECT_LT(std::pair(made.at(dep)->getEarlyDate(), dep),
                std::pair(made.at(id)->getEarlyDate(), id))
          << made.name(id);
    }
  }
}

const char* const reflex =
    "module main: Input: go, stop, r; Output: ready, hit, never; Local: L;\n"
    "loop { weak abort { { wait go >> emit L >> emit ready } || { wait stop >> emit hit } }"
    " when r }\nend\n";

TEST(Finalisation, CompletesSignalsAndAddsTheStart) {
  const Finalised made(reflex);
  ASSERT_TRUE(made.ok()) << made.report();
  expect_invariants(made);
  EXPECT_THAT(made.told, testing::Not(HasSubstr("eaffectation")));
  Module* const module = made.module();
  const Signal* never = module->getSignal("never");
  EXPECT_TRUE(made.wood()->Bdd_is_tautology(
      made.at(never->getInitialBddStatusId(module, made.wood()))->my_bdd_exp(), 0));
  EXPECT_TRUE(made.wood()->Bdd_is_tautology(
      made.at(never->getInitialBddValueId(module, made.wood()))->my_bdd_exp(), 1));
  EXPECT_EQ(made.name(never->getInitialBddValueId(module, made.wood())), "v_v_never");
  const std::string trace = run(module, "\ngo\nstop\n");
  EXPECT_THAT(trace, HasSubstr("\"instant\":2,\"outputs\":{\"ready\":[\"one\""));
  EXPECT_THAT(trace, HasSubstr("\"never\":[\"zero\""));
}

TEST(Finalisation, HoldsForAModuleOfNothing) {
  const Finalised made("module main: nothing end\n");
  ASSERT_TRUE(made.ok()) << made.report();
  expect_invariants(made);
  EXPECT_EQ(made.module()->getRegisterList().size(), 1u);
}

TEST(Finalisation, KeepsTheEndOnlyWhereAsked) {
  const std::string text = "module main: Input: x; Output: o; nothing end\n";
  const Finalised dropped(text), kept(text, Rules::sound(), false, 1);
  ASSERT_TRUE(dropped.ok() && kept.ok()) << dropped.report() << kept.report();
  EXPECT_TRUE(kept.defines(kept.module()->getRtl()));
  expect_invariants(kept);
  // Where the end reads nothing that is left, it goes.
  const Finalised halts("module main: Input: x; halt end\n");
  ASSERT_TRUE(halts.ok()) << halts.report();
  EXPECT_FALSE(halts.defines(halts.module()->getRtl()));
}

/// A register that never leaves its initial value, read by an output.
TEST(Finalisation, TakesOutARegisterThatNeverChanges) {
  for (const int initial : {0, 1}) {
    const Compiled compiled(
        "module main: Input: x; Output: o; loop { present x { emit o } >> pause } end\n");
    ASSERT_TRUE(compiled.ok()) << compiled.report();
    Module* const module = compiled.module();
    Bddexpressionwood* const wood = compiled.wood();
    module->addRegisterDecl("held", initial, "held.next");
    Signal* const held = module->getLocalSignal("held");
    Signal* const next = module->getLocalSignal("held.next");
    const auto define = [&](const bdd& left, const bdd& right) {
      const std::unique_ptr<Bddexpression> old(wood->exp_by_index(wood->Bdd_if_index(left)));
      new Bddexpression(wood, left, right, 0, 0);
    };
    const bdd constant = initial != 0 ? wood->Bdd_one() : wood->Bdd_zero();
    define(next->getBddStatus(module, wood), constant);
    define(next->getBddValue(module, wood), wood->Bdd_not(constant));
    const Signal* o = module->getSignal("o");
    const bdd x = wood->Bdd_var_by_index(module->getSignal("x")->getBddStatusId(module, wood));
    define(wood->Bdd_var_by_index(o->getInitialBddStatusId(module, wood)),
           wood->Bdd_and(x, held->getBddStatus(module, wood)));
    const Outcome outcome = run_captured([&] { module->finalize(0); });
    EXPECT_THAT(outcome.err, HasSubstr("detecting useless register held\n"));
    EXPECT_THAT(outcome.err, HasSubstr("Warning: reaffectation _s_held.next with SREG"));
    EXPECT_EQ(module->getRegisterList().size(), 2u) << "that of the pause, and the start";
    EXPECT_EQ(module->getLocalSignalList().size(), 9u) << "of 21 those that something still reads";
    EXPECT_EQ(wood->exp_by_index(o->getInitialBddStatusId(module, wood))->my_bdd_exp(),
              initial != 0 ? x : wood->Bdd_zero());
    for (long id : wood->Set_of_exp())
      EXPECT_FALSE(wood->exp_by_index(id)->set_of_var_dependances().contains(
          held->getBddStatusId(module, wood)));
  }
}

TEST(Finalisation, TellsOfOutputsInTop) {
  for (const bool asked : {false, true}) {
    const Compiled compiled(
        "module main: Input: x; Output: o, p; loop { present x { emit o } >> pause } end\n");
    ASSERT_TRUE(compiled.ok()) << compiled.report();
    Module* const module = compiled.module();
    Bddexpressionwood* const wood = compiled.wood();
    const Signal *x = module->getSignal("x"), *p = module->getSignal("p");
    for (long id : {p->getInitialBddStatusId(module, wood), p->getInitialBddValueId(module, wood)})
      wood->exp_by_index(id)->setBddExp(wood->Bdd_var_by_index(x->getBddStatusId(module, wood)));
    if (asked) module->check_over_knowledge();
    run_captured([&] { module->finalize(0); });
    const std::string trace = run(module, "\nx\n");
    if (!asked) {
      EXPECT_EQ(module->getSignal("OverKnowledgeError"), nullptr);
      continue;
    }
    EXPECT_THAT(trace, HasSubstr("\"p\":[\"top\",\"--\"],\"OverKnowledgeError\":[\"one\""));
    EXPECT_THAT(trace, HasSubstr("\"OverKnowledgeError\":[\"zero\""));
  }
}

/// Outputs One, by instant.
std::string ones(const Compiled& compiled, const std::vector<Stimulus>& history) {
  Instants instants(compiled);
  std::string all;
  for (const Stimulus& stimulus : history) {
    instants.step(stimulus);
    for (const std::string& output : output_names) all += instants.state(output) == '1' ? '1' : '.';
    all += ' ';
  }
  return all;
}

/// The same of a trace in the console's form.
std::string ones(const std::string& trace) {
  std::istringstream lines(trace);
  std::string all;
  for (std::string line; std::getline(lines, line); all += ' ')
    for (const std::string& output : output_names)
      all += line.find("\"" + output + "\":[\"one\"") != std::string::npos ? '1' : '.';
  return all;
}

/// A random program shows, finalised, what it showed before, and so does its text. The variables of
/// a file stand in its own order, so the first text read may bring other nodes; from then on
/// nothing changes.
TEST(Finalisation, KeepsWhatRandomProgramsShow) {
  const TempDir dir;
  int compared = 0, with_ones = 0;
  for (unsigned seed = 0; seed < 300 && !testing::Test::HasFailure(); ++seed) {
    std::mt19937 random(seed);
    const int size = 2 + static_cast<int>(random() % 16);
    const std::string text = module_text(seed % 8 == 1   ? random_mealy(random, size)
                                         : seed % 4 == 3 ? random_automaton(random, size)
                                                         : random_program(random, size));
    // The variables of a run's signals have names of their own now, which only a reader knows.
    if (text.find(" run ") != std::string::npos) continue;
    SCOPED_TRACE(text);
    std::vector<Stimulus> history(12);
    history.front().set = true;
    std::string stimuli;
    for (Stimulus& stimulus : history) {
      for (const std::string& name : input_names)
        if (random() % 3 == 0) stimulus.present.insert(name);
      for (const std::string& name : stimulus.present) stimuli += name + " ";
      stimuli += "\n";
    }
    const Compiled compiled(text);
    if (!compiled.ok()) continue;
    const std::string expected = ones(compiled, history);
    for (const bool wires : {false, true}) {
      const Finalised made(text, Rules::sound(), wires, wires ? 1 : 0);
      expect_invariants(made);
      const std::string shown = outputs_only(run(made.module(), stimuli));
      EXPECT_EQ(ones(shown), expected);
      const int forget_locals = wires ? 1 : 0;
      const std::unique_ptr<Module> second(read_back(dir, written(made.module(), forget_locals)));
      ASSERT_NE(second, nullptr);
      EXPECT_EQ(second->getFinalised(), 1);
      EXPECT_EQ(second->getReincarnate(), made.module()->getReincarnate());
      EXPECT_EQ(second->getRegisterList().size(), made.module()->getRegisterList().size());
      EXPECT_EQ(outputs_only(run(second.get(), stimuli)), shown);
      const std::string once = written(second.get(), forget_locals);
      const std::unique_ptr<Module> third(read_back(dir, once));
      ASSERT_NE(third, nullptr);
      EXPECT_EQ(written(third.get(), forget_locals), once);
      EXPECT_EQ(outputs_only(run(third.get(), stimuli)), shown);
    }
    ++compared;
    with_ones += expected.find('1') != std::string::npos;
  }
  EXPECT_GT(compared, 150);
  EXPECT_GT(with_ones, 45);
}

TEST(Finalise, AllWiresTakenAsPresent) {
  Compiled compiled(
      "module main: Input: a, b; Output: o;\n"
      "strong abort {wait a >> emit o} when b\nend");
  ASSERT_TRUE(compiled.ok()) << compiled.report();
  Bddexpressionwood* wood = compiled.wood();
  std::map<long, bdd> expected;
  for (long id : wood->Set_of_exp()) expected[id] = wood->exp_by_index(id)->my_bdd_exp();
  for (const Signal* local : compiled.module()->getLocalSignalList()) {
    if (!local->isWire()) continue;
    const bdd present = wood->Bdd_var_by_index(local->getBddStatusId(compiled.module(), wood));
    for (auto& [id, f] : expected) f = wood->my_bdd_manager()->Bdd_cube_reduce(f, present);
  }
  run_captured([&] { compiled.module()->learnStatusWireAssertion(); });
  for (const auto& [id, f] : expected)
    EXPECT_EQ(wood->exp_by_index(id)->my_bdd_exp(), f) << wood->Name_var_by_index(id);
}

}  // namespace
}  // namespace kiva::test
