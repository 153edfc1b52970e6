// Servers that are not there, die or talk nonsense: each is an ordinary instant, and the next one
// runs.

#include "tests/server/valued_module.h"

namespace kiva::test {
namespace {

class Faults : public ValuedModule {
 protected:
  void SetUp() override { load(test_is(5) + x_by_t1(5), "5: %1(0);\n"); }
  /// The module's own state goes on whatever the server does.
  void expect_register_follows(Sock socket) {
    for (const bool present : {true, false, true}) {
      instant(socket, present ? std::optional<std::string>("3") : std::nullopt);
      EXPECT_FALSE(outcome.ended);
      EXPECT_EQ(register_state(), present ? SignalState::one : SignalState::zero);
    }
  }
};

TEST_F(Faults, NoServer) {
  instant(nullptr, "3");
  EXPECT_EQ(test_state(), SignalState::bottom);
  EXPECT_EQ(x_text(), "");
  EXPECT_EQ(outcome.err, "");
  expect_register_follows(nullptr);
}

TEST_F(Faults, ServerThatDiesBetweenRequestAndReply) {
  FakeServer server([](const std::string&) { return std::nullopt; });
  instant(server.client(), "3");
  EXPECT_EQ(outcome.out.substr(0, 28), "connexion stopped by client ");
  EXPECT_EQ(test_state(), SignalState::bottom);
  EXPECT_EQ(x_text(), "");
  // Writes now meet a closed connection: no signal, no end.
  expect_register_follows(server.client());
  EXPECT_EQ(server.take_requests().size(), 1u);
}

TEST_F(Faults, ServerThatTalksNonsense) {
  const std::string nonsense("\x01\xff\0;;\n", 6);
  FakeServer server([&](const std::string&) { return nonsense; });
  instant(server.client(), "3");
  EXPECT_EQ(test_state(), SignalState::bottom);
  EXPECT_EQ(x_text(), nonsense);
  expect_register_follows(server.client());
}

TEST_F(Faults, ServerThatComesBackBetweenInstants) {
  instant(nullptr, "3");
  FakeServer server([](const std::string&) { return "false"; });
  instant(server.client(), "3");
  EXPECT_EQ(test_state(), SignalState::zero);
}

}  // namespace
}  // namespace kiva::test
