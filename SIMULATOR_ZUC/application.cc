// The start of the window: arguments, style, the connection to a server, the event loop.

#include "SIMULATOR_ZUC/application.h"

#include <QApplication>
#include <QFile>
#include <QLibraryInfo>
#include <QLocale>
#include <QScreen>
#include <QStyle>
#include <QStyleFactory>
#include <QTranslator>
#include <algorithm>
#include <csignal>
#include <iostream>
#include <memory>

#include "SIMULATOR_ZUC/dialogs.h"
#include "SIMULATOR_ZUC/fenetrepricipale.h"
#include "SIMULATOR_ZUC/ressource.h"
#include "SIMULATOR_ZUC/scaled_style.h"
#include "SIMULATOR_ZUC/scope/scope_window.h"
#include "SIMULATOR_ZUC/window_look.h"
#include "base/number_text.h"
#include "engine/server_steps.h"

namespace kiva {

namespace {

constexpr size_t kLongestHost = 80;
constexpr long kLastPort = 65535;

void choose_style(std::ostream& errors) {
  if (QStyle* style = QStyleFactory::create("plastique")) {
    auto* scaled = new ScaledStyle(style);
    scaled->setObjectName("plastique");
    QApplication::setStyle(scaled);
    return;
  }
  static bool told = false;
  if (!told) errors << "The style plastique is not installed; the window uses Fusion.\n";
  told = true;
  auto* fusion = new ScaledStyle("Fusion");
  fusion->setObjectName("fusion");
  QApplication::setStyle(fusion);
}

}  // namespace

StartArguments read_start_arguments(int argc, const char* const* argv, std::ostream& errors) {
  StartArguments arguments;
  std::vector<std::string> plain;
  for (int i = 1; i < argc; ++i) {
    const std::string argument = argv[i];
    if (argument == "--scope")
      arguments.scope = true;
    else if (argument == "--beside")
      arguments.beside = true;
    else if (argument == "--first")
      arguments.first = true;
    else
      plain.push_back(argument);
  }
  if (plain.size() == 3) {
    arguments.complete = true;
    arguments.file = plain[0], arguments.host = plain[1], arguments.port = plain[2];
    return arguments;
  }
  if (plain.size() == 2 && plain[0] == "--open") {
    arguments.open = plain[1];
    return arguments;
  }
  if (!plain.empty())
    errors << "usage: kiva [FILE HOST PORT]: the window opens empty, for it wants all three "
              "arguments or none\n";
  return arguments;
}

void dress_window(FenPrincipale& window, std::ostream& errors) {
  choose_style(errors);
  window.dress();
  QObject::connect(&WindowLook::current(), &WindowLook::changed, &window, &FenPrincipale::dress);
}

void connect_to_server(FenPrincipale& window, const std::string& host, const std::string& port,
                       std::ostream& errors) {
  const auto refuse = [&](const std::string& text) {
    errors << text << std::endl;
    dialogs().show_message(&window, QString::fromStdString(text));
  };
  if (host.size() > kLongestHost) {
    refuse("The host name is longer than 80 characters; no connection is made.");
    return;
  }
  std::cerr << "hostname choisi: " << host << std::endl;
  const long number = Stol(port);
  if (number == 0) {
    std::cerr << "No port is given; no connection is made." << std::endl;
    return;
  }
  if (number < 1 || number > kLastPort) {
    refuse("The port " + port + " is outside 1 to 65535; no connection is made.");
    return;
  }
  window.numsocket = static_cast<int>(number);
  window.connect_server(host, static_cast<unsigned short>(number));
  std::cerr << "adresse socket: " << std::hex
            << reinterpret_cast<std::uintptr_t>(window.socket_client) << std::dec << std::endl;
}

bool place_beside(const QRect& screen, const QSize& window, QRect& place) {
  constexpr int least = 640;
  const int left = screen.left() + window.width() + 8;
  if (screen.right() - left < least) return false;
  place = QRect(left, screen.top() + 24, std::min(screen.right() - left, 1180),
                std::min(screen.height() - 64, 900));
  return true;
}

namespace {

/// The two windows side by side, where the screen has room for both.
void show_beside(FenPrincipale& window) {
  const QRect screen = window.screen()->availableGeometry();
  QRect place;
  if (window.empty() || !place_beside(screen, window.frameGeometry().size(), place)) return;
  window.move(screen.topLeft());
  window.show_scope();
  window.scope()->setGeometry(place);
}

/// No window becomes larger than the screen that it opens on.
void follow_screen() {
  const QScreen* screen = QGuiApplication::primaryScreen();
  const auto follow = [screen] {
    WindowLook::current().set_room(screen->availableGeometry().size());
  };
  follow();
  QObject::connect(screen, &QScreen::availableGeometryChanged, &WindowLook::current(), follow);
}

/// The user's language, where the window has it; with the toolkit's own texts, where those are
/// there.
void speak(QTranslator& window, QTranslator& toolkit) {
  const QLocale user;
  if (!window.load(user, "kiva", "_", ":/translations")) return;
  QCoreApplication::installTranslator(&window);
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
  const QString shared = QLibraryInfo::location(QLibraryInfo::TranslationsPath);
#else
  const QString shared = QLibraryInfo::path(QLibraryInfo::TranslationsPath);
#endif
  if (toolkit.load(user, "qtbase", "_", shared)) QCoreApplication::installTranslator(&toolkit);
}

}  // namespace

int run_window(int argc, char** argv, std::ostream& errors) {
  register_resources();
  // A server that has gone must not take the window with it.
  std::signal(SIGPIPE, SIG_IGN);
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)  // always so since
  QApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
  QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
#endif
  QApplication application(argc, argv);
  QApplication::setApplicationName("KIVA");
  QTranslator window_texts, toolkit_texts;
  speak(window_texts, toolkit_texts);
  show_library_messages();
  const StartArguments arguments = read_start_arguments(argc, argv, errors);
  follow_screen();
  // Without a server, values are missing and not empty.
  const ServerSteps no_server(nullptr);
  const std::unique_ptr<FenPrincipale> window =
      arguments.complete ? std::make_unique<FenPrincipale>(arguments.file)
                         : std::make_unique<FenPrincipale>();
  dress_window(*window, errors);
  window->show();
  if (arguments.complete) connect_to_server(*window, arguments.host, arguments.port, errors);
  if (!window->isVisible()) return 0;  // closed while the server was waited for
  if (!arguments.open.empty()) window->open_file(QFile::decodeName(arguments.open.c_str()));
  if (arguments.first && !window->empty()) {
    window->time()->go();
    window->time()->set_saved(true);  // nobody's work yet
  }
  if (arguments.beside) show_beside(*window);
  if (arguments.scope) window->show_scope();
  return QApplication::exec();
}

}  // namespace kiva
