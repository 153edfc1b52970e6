#include "tests/zu_compile/judge.h"

#include "tests/zu_compile/meaning.h"

namespace kiva::test {

std::string History::text() const {
  std::string all;
  for (const Stimulus& stimulus : stimuli) {
    std::string names = stimulus.set ? "!set" : ".";
    if (stimulus.reset) names += "+!reset";
    for (const std::string& name : stimulus.present) names += "+" + name;
    all += names + " ";
  }
  return all;
}

History random_history(std::mt19937& random) {
  History run;
  const unsigned density = 2 + random() % 4;
  for (int i = 0; i < instants_of_history; ++i) {
    Stimulus stimulus;
    for (const std::string& name : input_names)
      if (random() % density == 0) stimulus.present.insert(name);
    stimulus.set = random() % 3 <= (i == 0 ? 1 : 0);
    stimulus.reset = i > 0 && random() % 10 == 0;
    run.stimuli.push_back(stimulus);
  }
  return run;
}

namespace {

/// Of states and values of outputs and locals; empty for none.
std::string signal_difference(const Instants& machine, const Meaning& meaning) {
  for (const auto* names : {&output_names, &local_names})
    for (const std::string& name : *names) {
      // Where nobody says anything, Zero shows for what nobody ever emits.
      const char state = machine.state(name), said = meaning.said(name);
      if (state != said && !(state == '0' && said == '_'))
        return name + " is " + state + ", meant " + said;
      if (state == 'T') continue;
      const int value = meaning.value(name);
      const std::vector<std::string> values = machine.values(name);
      if (value == 0 ? !values.empty() : values != std::vector{std::to_string(value)})
        return "value of " + name + " is " + (values.empty() ? "none" : values[0]) + ", meant " +
               std::to_string(value);
    }
  return "";
}

}  // namespace

Verdict compare(const Program& program, const std::vector<History>& runs, std::string& difference,
                const Rules& rules) {
  const Compiled compiled(module_text(program), rules);
  if (!compiled.ok()) {
    difference = compiled.report();
    for (const char* refusal : {"dependance cycle", "no signal binding"})
      if (difference.find(refusal) != std::string::npos) return Verdict::refused;
    return Verdict::differs;
  }
  for (History run : runs) {
    Instants machine(compiled);
    Meaning meaning(program);
    for (size_t i = 0; i < run.stimuli.size(); ++i) {
      Stimulus& stimulus = run.stimuli[i];
      stimulus.set = stimulus.set && !meaning.runs();
      machine.step(stimulus);
      const auto differs = [&](const std::string& what) {
        difference = what + " at instant " + std::to_string(i + 1) + " of " + run.text();
        return Verdict::differs;
      };
      if (!meaning.step(stimulus.present, stimulus.set, stimulus.reset))
        return differs("no meaning");
      if (meaning.contradicted()) break;
      if (const std::string what = signal_difference(machine, meaning); !what.empty())
        return differs(what);
      if ((machine.state("RTL") == '1') != meaning.ended())
        return differs(std::string("the end is ") + machine.state("RTL"));
    }
  }
  return Verdict::agrees;
}

}  // namespace kiva::test
