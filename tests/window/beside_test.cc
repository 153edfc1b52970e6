// What stands beside the window: plugins, the two threads, the command line, the connection.

#include <QDir>
#include <QFile>
#include <QPluginLoader>
#include <QRegularExpression>
#include <QStyle>
#include <iostream>
#include <mutex>

#include "SIMULATOR_ZUC/application.h"
#include "SIMULATOR_ZUC/classic/calculvalue.h"
#include "SIMULATOR_ZUC/classic/mythread.h"
#include "SIMULATOR_ZUC/classic/pluginmanager.h"
#include "forms/forms.h"
#include "tests/window/window_test.h"

namespace kiva::test {

namespace {

QStringList debug_lines;

void keep_debug_line(QtMsgType, const QMessageLogContext&, const QString& text) {
  debug_lines << text.trimmed();
}

}  // namespace

/// Works in a folder of its own, with the toolkit's debug output kept.
class Plugins : public WindowTest {
 protected:
  Plugins() : home_(QDir::currentPath()) {
    QDir::setCurrent(folder.path());
    debug_lines.clear();
    before_ = qInstallMessageHandler(keep_debug_line);
  }
  ~Plugins() override {
    qInstallMessageHandler(before_);
    QDir::setCurrent(home_);
  }
  void add_plugin(const char* file, const QString& name) {
    QDir().mkpath("plugins");
    ASSERT_TRUE(QFile::copy(file, "plugins/" + name));
  }
  static bool told(const QString& beginning) {
    for (const QString& line : debug_lines)
      if (line.startsWith(beginning)) return true;
    return false;
  }

 private:
  QString home_;
  QtMessageHandler before_;
};

TEST_F(Plugins, NoFolderAndAnEmptyOneLoadNothing) {
  for (int round = 0; round < 2; ++round) {
    PluginManager manager;
    manager.LoadAllPlugins();
    EXPECT_EQ(manager.plugin, nullptr);
    EXPECT_FALSE(told("loading :"));
    EXPECT_TRUE(told("current path is : \""));
    EXPECT_TRUE(told("absolute path is : \""));
    QDir().mkpath("plugins");
  }
}

TEST_F(Plugins, APluginThatAnswersIsKept) {
  add_plugin(KIVA_GOOD_PLUGIN, "good.so");
  PluginManager manager;
  manager.LoadAllPlugins();
  ASSERT_NE(manager.plugin, nullptr);
  EXPECT_EQ(manager.plugin->name(), "good");
  EXPECT_TRUE(told("file Name: \"good.so\""));
  EXPECT_TRUE(told("pluging is loaded..."));
  EXPECT_FALSE(told("Not a plugin :"));
}

TEST_F(Plugins, APluginWithoutTheInterfaceIsToldAndClearsTheField) {
  add_plugin(KIVA_GOOD_PLUGIN, "good.so");
  add_plugin(KIVA_OTHER_PLUGIN, "other.so");
  PluginManager manager;
  manager.LoadPlugin(QDir("plugins").absoluteFilePath("good.so"));
  EXPECT_NE(manager.plugin, nullptr);
  manager.LoadPlugin(QDir("plugins").absoluteFilePath("other.so"));
  EXPECT_EQ(manager.plugin, nullptr);
  EXPECT_TRUE(told("Not a plugin : \"" + QDir("plugins").absoluteFilePath("other.so") + "\" ="));
}

TEST_F(Plugins, AFileThatIsNoLibraryPassesInSilence) {
  QDir().mkpath("plugins");
  write("plugins/note.txt", "no library");
  PluginManager manager;
  manager.LoadAllPlugins();
  EXPECT_EQ(manager.plugin, nullptr);
  ASSERT_TRUE(told("loading :"));
  EXPECT_TRUE(debug_lines.last().startsWith("loading :"));
}

TEST_F(Plugins, TheThreadEvaluatesAndCallsThePlugin) {
  add_plugin(KIVA_GOOD_PLUGIN, "good.so");
  open(example("rails"));
  std::vector<int> context = *window->context();
  for (int entry = 0; entry < 4; ++entry) context[entry] = entry % 2;  // A and B Zero
  CalculValue thread;
  thread.get_Module(window->pautom);
  thread.get_Context(context.data());
  const Outcome outcome = run_captured([&] {
    thread.start();
    thread.wait();
  });
  EXPECT_EQ(thread.context_after(), context.data());
  EXPECT_EQ(state_of(context[4], context[5]), SignalState::zero) << "JOIN of two absent inputs";
  EXPECT_EQ(outcome.out.rfind("i'm in bdds_evaluate()\n", 0), 0u);
  ASSERT_NE(thread.plugins()->plugin, nullptr);
  QPluginLoader loader(QDir("plugins").absoluteFilePath("good.so"));
  EXPECT_TRUE(loader.instance()->property("called_with_nothing").toBool());
}

TEST_F(Plugins, TheThreadWithoutAPluginReportsAndEnds) {
  open(example("rails"));
  std::vector<int> context = *window->context();
  CalculValue thread;
  thread.get_Module(window->pautom);
  thread.get_Context(context.data());
  const Outcome outcome = run_captured([&] {
    thread.start();
    EXPECT_TRUE(thread.wait());
  });
  EXPECT_EQ(outcome.err, "***error:CalculValue:run: no plugin loaded\n");
}

TEST_F(Plugins, TheThreadWaitsWhileAnInstantRuns) {
  open(example("rails"));
  std::vector<int> context = *window->context();
  CalculValue thread;
  thread.get_Module(window->pautom);
  thread.get_Context(context.data());
  run_captured([&] {
    {
      const std::lock_guard<std::mutex> instant(CalculValue::evaluation_mutex());
      thread.start();
      EXPECT_FALSE(thread.wait(50));
    }
    EXPECT_TRUE(thread.wait());
  });
}

TEST(MyThread, KeepsTheNameOfTheFile) {
  MyThread thread;
  const Outcome outcome = run_captured([&] { thread.FileUploaded("a b.zuc"); });
  EXPECT_EQ(outcome.out, "fname :a b.zuc\n");
  EXPECT_EQ(thread.fname, "a b.zuc");
}

TEST(StartArguments, AreThreeOrNone) {
  const char* argv[] = {"kiva", "f.zuc", "host", "4000", "more"};
  const auto read = [&](int argc) {
    StartArguments arguments;
    const Outcome outcome = run_captured([&] { arguments = read_start_arguments(argc, argv); });
    return std::make_pair(arguments.complete, outcome.err);
  };
  EXPECT_EQ(read(1), std::make_pair(false, std::string()));
  for (int argc : {2, 3, 5}) {
    EXPECT_FALSE(read(argc).first);
    EXPECT_NE(read(argc).second.find("FILE HOST PORT"), std::string::npos);
  }
  EXPECT_TRUE(read(4).first);
  const StartArguments arguments = read_start_arguments(4, argv);
  EXPECT_EQ(arguments.file + arguments.host + arguments.port, "f.zuchost4000");
}

class Connection : public WindowTest {
 protected:
  std::string connect(const std::string& host, const std::string& port) {
    return run_captured([&] { connect_to_server(*window, host, port); }).err;
  }
};

TEST_F(Connection, ReachesAServerAndTellsTheHandle) {
  open_empty();
  const Sock server = SOCK_make_server(0);
  ASSERT_NE(server, nullptr);
  const std::string port = std::to_string(server->portnum);
  const QString told = QString::fromStdString(connect("localhost", port));
  EXPECT_TRUE(QRegularExpression("^hostname choisi: localhost\nadresse socket: [0-9a-f]+\n$")
                  .match(told)
                  .hasMatch())
      << told.toStdString();
  EXPECT_EQ(window->numsocket, server->portnum);
  ASSERT_NE(window->socket_client, nullptr);
  SOCK_shutdown(server, 1);
}

TEST_F(Connection, NobodyThereIsNoSocket) {
  open_empty();
  const Sock server = SOCK_make_server(0);
  ASSERT_NE(server, nullptr);
  const std::string port = std::to_string(server->portnum);
  SOCK_shutdown(server, 1);
  const std::string told = connect("localhost", port);
  EXPECT_EQ(window->socket_client, nullptr);
  EXPECT_NE(told.find("adresse socket: 0\n"), std::string::npos) << told;
}

TEST_F(Connection, AnOverlongHostAndAWrongPortAreRefused) {
  open_empty();
  EXPECT_NE(connect(std::string(81, 'h'), "4000").find("80 characters"), std::string::npos);
  EXPECT_EQ(messages.size(), 1);
  for (const char* port : {"-1", "65536", "99999999999999999999"}) {
    messages.clear();
    EXPECT_NE(connect("localhost", port).find("outside 1 to 65535"), std::string::npos) << port;
    EXPECT_EQ(messages.size(), 1);
  }
  messages.clear();
  EXPECT_NE(connect("localhost", "0").find("no connection"), std::string::npos);
  EXPECT_TRUE(messages.isEmpty()) << "port 0 says that no server is wanted";
  EXPECT_EQ(window->socket_client, nullptr);
  EXPECT_EQ(window->numsocket, 0);
}

TEST_F(Connection, MessagesOfTheLibraryAreShownInTheWindow) {
  open_empty();
  show_library_messages();
  const Outcome outcome = run_captured([] { fl_show_Smessages("read this"); });
  set_message_presenter(nullptr);
  EXPECT_EQ(messages, QStringList{"read this"});
  EXPECT_EQ(outcome.err, "read this\n");
}

}  // namespace kiva::test
