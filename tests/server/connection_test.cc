// Servers that are late, leave, or say what nobody asked for: the instant has not taken place.

#include <thread>

#include "base/connection.h"
#include "engine/server_steps.h"
#include "tests/server/valued_module.h"

namespace kiva::test {
namespace {

using std::chrono::milliseconds;
using testing::HasSubstr;

class Connecting : public ValuedModule {
 protected:
  void SetUp() override { load(test_is(5) + x_by_t1(6), "5: %1(0);\n6: %1(0);\n"); }

  /// What the step throws; "" when the instant has taken place.
  std::string step(ServerSteps& steps) {
    std::string fault;
    run_captured([&] {
      try {
        steps.step(*simulation);
      } catch (const ConnectionFault& thrown) {
        fault = thrown.what();
      }
    });
    return fault;
  }
};

TEST_F(Connecting, AnInstantHasAllItsValuesOrHasNotTakenPlace) {
  const auto slowly = [](const std::string& text, int pause) {
    std::this_thread::sleep_for(milliseconds(pause));
    return std::optional<std::string>(text);
  };
  const struct {
    const char* name;
    std::function<std::optional<std::string>(int request)> answer;
    const char* fault;  ///< "" for none; what stands behind the server's name
  } cases[] = {
      {"ready", [](int) { return "true"; }, ""},
      {"slow", [&](int) { return slowly("true", 30); }, ""},
      {"leaves", [](int n) { return n == 1 ? std::optional<std::string>("true") : std::nullopt; },
       ": the connection is closed, while the reply to \"MC,neg,3\" was awaited"},
      {"late", [&](int) { return slowly("true", 400); },
       ": nothing within 0.2 s, while the reply to \"MC,neg,3\" was awaited"},
      {"no truth", [](int) { return "\x1b[m"; },
       ": \"\\x1b[m\" came, while true or false was awaited"},
  };
  for (const auto& c : cases) {
    int number = 0;
    FakeServer server([&](const std::string&) { return c.answer(++number); });
    Connection connection("127.0.0.1", server.port(), milliseconds(200));
    connection.open();
    ServerSteps steps(&connection);
    simulation->load();
    simulation->choose_input(0, SignalState::one);
    simulation->type_input(0, "3");
    const SimulationState before = simulation->state();
    const std::string fault = step(steps);
    if (*c.fault == '\0') {
      EXPECT_EQ(fault, "") << c.name;
      EXPECT_EQ(x_text(), "true") << c.name;
      continue;
    }
    EXPECT_EQ(fault, "server " + connection.name() + c.fault) << c.name;
    EXPECT_TRUE(simulation->state() == before) << c.name;
  }
}

TEST_F(Connecting, WhatNobodyAskedForEndsTheConnection) {
  FakeServer server([](const std::string&) { return "true"; });
  Connection connection("127.0.0.1", server.port(), milliseconds(5000));
  connection.open();
  EXPECT_EQ(connection.ask("a"), "true");
  server.say("more");
  EXPECT_THROW(connection.check_silent(milliseconds(5000)), ConnectionFault);
  EXPECT_EQ(connection.state(), Connection::State::lost);
  EXPECT_THROW(connection.ask("b"), ConnectionFault) << "until it is opened again";
}

}  // namespace
}  // namespace kiva::test
