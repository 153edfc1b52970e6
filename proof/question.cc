#include "proof/question.h"

#include "engine/expectations.h"
#include "engine/recording.h"
#include "engine/stimuli.h"

namespace kiva::proof {

Question::Question(Simulation& simulation, bool with_reset)
    : simulation_(simulation), module_(simulation, with_reset) {}

void Question::assume(const std::string& expression) {
  std::vector<SignalPlace> named;
  assumed_.push_back(expression_literal(module_, SignalNames(simulation_), expression, named));
}

Machine Question::machine(const Property& property) {
  named_.clear();
  const Literal holds =
      expression_literal(module_, SignalNames(simulation_), property.text, named_);
  Machine machine = module_.machine;
  set_bad(machine, negated_if(holds, property.kind == Property::always), assumed_);
  if (const std::string reason = module_.undefined(machine); !reason.empty())
    throw MachineError{reason};
  return machine;
}

std::string Question::shown(const Property& property, const Run& run) {
  const Machine machine = this->machine(property);
  std::vector<NamedLiteral> named;
  for (SignalPlace place : named_) named.push_back({place, module_.is_one(place)});
  return shown_run(simulation_, machine, named, run);
}

std::string run_instant(Simulation& simulation, const std::vector<bool>& inputs) {
  const size_t rows = simulation.input_rows().size();
  for (size_t row = 0; row < rows; ++row)
    simulation.choose_input(row, inputs[row] ? SignalState::one : SignalState::zero);
  simulation.raise_reset(inputs.size() > rows && inputs[rows]);
  Choices choices = choices_of(simulation.state());
  choices.set = false;  // raised by itself
  const std::string line = stimulus_line(choices, simulation);
  simulation.step(nullptr);
  return line;
}

std::string shown_run(Simulation& simulation, const Machine& machine,
                      const std::vector<NamedLiteral>& named, const Run& run) {
  Stepper stepper(machine);
  simulation.load();
  std::string text;
  for (size_t instant = 0; instant < run.size(); ++instant) {
    const std::vector<bool>& inputs = run[instant];
    text += (instant == 0 ? "" : "\n") + run_instant(simulation, inputs);
    if (instant > 0) stepper.move();
    stepper.look(words_of(inputs));
  }
  bool agree = (stepper.word(machine.bad) & 1) != 0;
  std::vector<Expectation> awaited;
  for (const NamedLiteral& signal : named) {
    const bool is_one = shown_state(simulation.state(), signal.place) == SignalState::one;
    agree = agree && is_one == ((stepper.word(signal.is_one) & 1) != 0);
    if (signal.place.list == SignalPlace::input) continue;
    Expectation& expectation = awaited.emplace_back();
    expectation.place = signal.place;
  }
  if (!agree) throw MachineError{"internal fault: the module does not run as was found"};
  if (!awaited.empty())
    text += (text.empty() || text.back() == '\n' ? "-> " : " -> ") +
            seen(awaited, simulation.state(), simulation);
  return text + '\n';
}

}  // namespace kiva::proof
