// Servers that are late, leave, or say what nobody asked for: the instant has not taken place.

#include <poll.h>

#include <thread>

#include "base/connection.h"
#include "engine/recording.h"
#include "engine/server_steps.h"
#include "tarn/model/evaluation_service.h"
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

TEST_F(Connecting, AnInstantWithTextBehindItHasNotTakenPlace) {
  load(x_by_t1(5), "5: %1(0);\n");
  FakeServer server([](const std::string&) { return "4"; });
  Connection connection("127.0.0.1", server.port(), milliseconds(5000));
  connection.open();
  ServerSteps steps(&connection);
  auto& ask = Session::current().part<EvaluationService>().ask;
  ask = [&, asked = ask](const std::string& request) {
    const std::string reply = asked(request);
    server.say("2");
    pollfd more{connection.handle()->fd, POLLIN, 0};
    poll(&more, 1, 5000);
    return reply;
  };
  EXPECT_EQ(step(steps), "") << "nothing is asked";
  simulation->choose_input(0, SignalState::one);
  const SimulationState before = simulation->state();
  EXPECT_THAT(step(steps), HasSubstr("text that belongs to no request"));
  EXPECT_TRUE(simulation->state() == before);
  EXPECT_THROW(connection.ask("b"), ConnectionFault) << "until it is opened again";
}

TEST_F(Connecting, ThePastAsksNobodyAndABranchAsksAgain) {
  load(x_by_t1(5), "5: %1(0);\n");
  int number = 0;
  bool leaves = false;
  FakeServer server([&](const std::string&) {
    return leaves ? std::nullopt : std::optional(std::to_string(++number));
  });
  Connection connection("127.0.0.1", server.port(), milliseconds(5000));
  connection.open();
  const ServerSteps steps(&connection);
  Recording recording(simulation.get());
  const auto go = [&](const std::string& a) {
    simulation->choose_input(0, SignalState::one);
    simulation->type_input(0, a);
    run_captured([&] { recording.go(nullptr); });
  };
  std::vector<SimulationState> shown{simulation->state()};
  for (const char* a : {"3", "4", "5"}) {
    go(a);
    shown.push_back(simulation->state());
    EXPECT_EQ(x_text(), std::to_string(number));
  }
  EXPECT_EQ(server.take_requests().size(), 3u);
  for (const long instant : {2L, 3L, 0L, 1L}) {
    EXPECT_TRUE(recording.to({0, instant}));
    EXPECT_EQ(simulation->state(), shown[static_cast<size_t>(instant)]) << instant;
  }
  go("4");  // as it was
  EXPECT_EQ(simulation->state(), shown[2]);
  recording.init();
  EXPECT_TRUE(recording.to({0, 1}));
  EXPECT_THAT(server.take_requests(), testing::IsEmpty());

  go("9");
  EXPECT_EQ(x_text(), "4");
  EXPECT_THAT(server.take_requests(), testing::ElementsAre("MC,neg,9"));
  const Recording::Position branch = recording.position();
  const SimulationState last = simulation->state();
  leaves = true;
  EXPECT_THROW(go("7"), ConnectionFault);
  EXPECT_EQ(recording.position(), branch);
  EXPECT_EQ(x_text(), "4");
  EXPECT_TRUE(recording.back() && recording.forward());
  EXPECT_EQ(simulation->state(), last);
}

}  // namespace
}  // namespace kiva::test
