#include "engine/server_steps.h"

#include "base/printable_text.h"
#include "tarn/model/evaluation_service.h"
#include "tarn/session/session.h"

namespace kiva {

namespace {

// A reply in pieces looks like a reply and text behind it. The pieces of one instant come together
// as a rule; a run that ends can wait longer for what tells that its values were wrong.
constexpr Connection::Milliseconds quiet_behind_instant(2);
constexpr Connection::Milliseconds quiet_behind_run(250);

}  // namespace

ServerSteps::ServerSteps(Connection* server) : server_(server) {
  auto& service = Session::current().part<EvaluationService>();
  service.name = server_ == nullptr ? "none" : server_->name();
  service.ask = [this](const std::string& request) {
    if (server_ == nullptr)
      throw ConnectionFault("no evaluation server is given, while the reply to \"" +
                            printable(request) + "\" was awaited");
    asked_ = ever_asked_ = true;
    return server_->ask(request);
  };
}

ServerSteps::~ServerSteps() {
  Session::current().part<EvaluationService>().ask = nullptr;
}

void ServerSteps::step(Simulation& simulation) {
  if (!simulation.asks_for_data()) return simulation.step(nullptr);
  const SimulationState before = simulation.state();
  asked_ = false;
  try {
    simulation.step(nullptr);
    if (asked_) server_->check_silent(quiet_behind_instant);
  } catch (...) {
    simulation.restore(before);
    throw;
  }
}

void ServerSteps::finish() {
  if (ever_asked_) server_->check_silent(quiet_behind_run);
}

}  // namespace kiva
