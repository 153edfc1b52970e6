// The line of the evaluation server: connected, waiting, lost; Cancel and Reconnect.

#include "SIMULATOR_ZUC/server_line.h"

#include <QLabel>
#include <QTest>
#include <QToolButton>

#include "SIMULATOR_ZUC/application.h"
#include "tests/server/valued_module.h"
#include "tests/window/window_test.h"

namespace kiva::test {
namespace {

class ServerState : public WindowTest {
 protected:
  ServerState() {
    open(write("m.zuc", ValuedModule::text(ValuedModule::x_by_t1(5), "5: %1(0);\n")));
    run_captured([&] { connect_to_server(*window, "127.0.0.1", std::to_string(server_->port())); });
    click_row(0);
    pick(debugger()->one);
    QTest::keyClicks(window->inputs_value[0], "3");
  }
  /// The server's client goes first.
  ~ServerState() override {
    holds_ = false;
    window.reset();
    server_.reset();
  }
  bool shows(const QString& text) {
    const auto* label = window->server_line()->findChild<QLabel*>();
    return QTest::qWaitFor([&] { return label->text().startsWith(text); });
  }
  QToolButton* button(const QString& text) {
    for (auto* found : window->server_line()->findChildren<QToolButton*>())
      if (found->text() == text) return found;
    return nullptr;
  }
  bool reaches(long instant) {
    return QTest::qWaitFor([&] { return !window->time()->busy(); }) &&
           window->running()->state().instant == instant && shows(name_ + "connected");
  }

  std::atomic<bool> holds_ = false;
  std::unique_ptr<FakeServer> server_ =
      std::make_unique<FakeServer>([&](const std::string&) -> std::optional<std::string> {
        while (holds_) std::this_thread::sleep_for(std::chrono::milliseconds(5));
        return "7";
      });
  const QString name_ = QString("Server 127.0.0.1:%1: ").arg(server_->port());
};

TEST_F(ServerState, IsShownAndAWaitCanBeCancelled) {
  QToolButton *cancel = button("Cancel"), *reconnect = button("Reconnect");
  EXPECT_TRUE(shows(name_ + "connected"));
  EXPECT_FALSE(cancel->isEnabled());
  press_go();
  ASSERT_TRUE(reaches(1));
  EXPECT_EQ(window->running()->state().output_values[0], "7");

  holds_ = true;
  press_go();
  ASSERT_TRUE(shows(name_ + "waiting"));
  EXPECT_TRUE(cancel->isEnabled());
  EXPECT_FALSE(reconnect->isEnabled());
  QTest::mouseClick(cancel, Qt::LeftButton);
  ASSERT_TRUE(shows("Lost: "));
  EXPECT_TRUE(QTest::qWaitFor([&] { return !window->time()->busy(); }));
  EXPECT_EQ(window->running()->state().instant, 1) << "the instant has not taken place";
  EXPECT_EQ(messages.size(), 1);
  holds_ = false;

  press_go();
  EXPECT_TRUE(QTest::qWaitFor([&] { return !window->time()->busy(); }));
  EXPECT_EQ(messages.size(), 2) << "no server, no instant";
  EXPECT_EQ(window->running()->state().instant, 1);
  QTest::mouseClick(reconnect, Qt::LeftButton);
  EXPECT_TRUE(shows(name_ + "connected"));
  press_go();
  EXPECT_TRUE(reaches(2));

  server_.reset();
  EXPECT_TRUE(shows("Lost: ")) << "a server that leaves between two instants";
}

}  // namespace
}  // namespace kiva::test
