#include "engine/bench_stimuli.h"

namespace kiva {

namespace {

struct Rails {
  long status, value;
};

Rails rails_of(const Signal* signal, Module* module) {
  Bddexpressionwood* wood = module->getBddWood();
  if (signal->isOutput())
    return {signal->getInitialBddStatusId(module, wood),
            signal->getInitialBddValueId(module, wood)};
  return {signal->getBddStatusId(module, wood), signal->getBddValueId(module, wood)};
}

void put(std::unordered_map<long, bool>& bits, const Rails& rails, SignalState state) {
  bits[rails.status] = pair_of(state).status != 0;
  bits[rails.value] = pair_of(state).value != 0;
}

}  // namespace

BenchInstant BenchStimuli::given() const {
  Module* module = simulation_.module();
  const SimulationState& state = simulation_.state();
  BenchInstant instant;
  for (size_t row = 0; row < state.inputs.size(); ++row) {
    const Rails rails = rails_of(simulation_.input_rows()[row], module);
    put(instant.given, rails, state.inputs[row]);
    if (state.inputs[row] == SignalState::one && state.input_texts[row] != "--")
      instant.given_values[rails.status] = state.input_texts[row];
  }
  const auto put_wire = [&](const Signal* wire, bool raised) {
    if (wire != nullptr)
      put(instant.given, rails_of(wire, module), raised ? SignalState::one : SignalState::zero);
  };
  put_wire(module->getSet(), state.set);
  put_wire(module->getReset(), state.reset);
  return instant;
}

void BenchStimuli::await_output(BenchInstant& instant, size_t row, SignalState state) const {
  const Rails rails = rails_of(simulation_.output_rows()[row], simulation_.module());
  const std::vector<int>& context = simulation_.state().context;
  if (state != SignalState::unknown) return put(instant.awaited, rails, state);
  // One of the two rails may be known.
  for (long rail : {rails.status, rails.value})
    if (const int bit = context[static_cast<size_t>(rail)]; bit < 2)
      instant.awaited[rail] = bit != 0;
}

void BenchStimuli::await_all(BenchInstant& instant) const {
  for (size_t row = 0; row < simulation_.output_rows().size(); ++row)
    await_output(instant, row, simulation_.state().shown_outputs[row]);
}

void BenchStimuli::await(BenchInstant& instant, const Expectation& expectation) {
  Module* module = simulation_.module();
  const SignalState now = shown_state(simulation_.state(), expectation.place);
  SignalState wanted = expectation.state;
  // Not One is several states: the one that is here, if it is one of them.
  if (expectation.absent) wanted = now == SignalState::one ? SignalState::zero : now;
  const SignalPlace place = expectation.place;
  if (place.list == SignalPlace::output) {
    if (expectation.absent && now == SignalState::unknown) wanted = SignalState::zero;
    await_output(instant, place.row, wanted);
    if (expectation.value)
      instant.awaited_values[rails_of(simulation_.output_rows()[place.row], module).status] =
          *expectation.value;
    return;
  }
  const Bddexpression* equation = nullptr;
  if (place.list == SignalPlace::local) {
    const Signal* local =
        *std::next(module->getLocalSignalList().begin(), static_cast<std::ptrdiff_t>(place.row));
    equation = module->getBddWood()->exp_by_index(rails_of(local, module).status);
    if (equation != nullptr && equation->getAbstraction() != 0)
      return put(instant.given, rails_of(local, module),
                 expectation.absent ? SignalState::zero : wanted);
  }
  unseen_.insert(SignalNames(simulation_).name(place));
}

void BenchStimuli::add(const std::vector<Expectation>& expectations) {
  BenchInstant instant = given();
  simulation_.step(nullptr);
  for (const Expectation& expectation : expectations) await(instant, expectation);
  if (expectations.empty()) await_all(instant);
  instants_.push_back(std::move(instant));
}

void BenchStimuli::read(std::istream& in) {
  StimuliReader reader(in, simulation_);
  while (const auto stimulus = reader.next()) {
    apply(*stimulus, simulation_);
    add(stimulus->expectations);
  }
}

}  // namespace kiva
