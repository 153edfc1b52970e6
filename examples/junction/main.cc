// The crossing in a terminal. A second is a tick; c is a car in the side road, b the button, n
// turns night on and off, q ends. Keys from a pipe are taken one an instant, "." for a tick.

#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include <cstdio>

#include "junction.hpp"

namespace {

/// Keys without Return, as long as it lives; nothing where the input is no terminal.
class Keys {
 public:
  Keys() : terminal_(tcgetattr(STDIN_FILENO, &before_) == 0) {
    termios now = before_;
    now.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO);
    if (terminal_) tcsetattr(STDIN_FILENO, TCSANOW, &now);
  }
  ~Keys() {
    if (terminal_) tcsetattr(STDIN_FILENO, TCSANOW, &before_);
  }
  Keys(const Keys&) = delete;
  Keys& operator=(const Keys&) = delete;

  /// The next key; "." when none has come for a second, "q" at the end.
  char next() {
    pollfd input{STDIN_FILENO, POLLIN, 0};
    char key = 'q';
    if (poll(&input, 1, 1000) == 0) return '.';
    return read(STDIN_FILENO, &key, 1) == 1 ? key : 'q';
  }

 private:
  termios before_{};
  bool terminal_;
};

void show(const junction::out& out, bool night) {
  const auto lamp = [](bool lit, int colour, char letter) {
    if (!lit)
      std::fputs(" .", stdout);
    else if (isatty(STDOUT_FILENO))
      std::printf("\033[1;%dm o\033[0m", colour);
    else
      std::printf(" %c", letter);
  };
  std::fputs("main", stdout);
  lamp(out.main_red, 31, 'R');
  lamp(out.main_yellow, 33, 'Y');
  lamp(out.main_green, 32, 'G');
  std::fputs("   side", stdout);
  lamp(out.side_red, 31, 'R');
  lamp(out.side_yellow, 33, 'Y');
  lamp(out.side_green, 32, 'G');
  std::printf("   %-5s%-7s%s\n", out.walk ? "WALK" : "", out.please_wait ? "WAIT" : "",
              night ? "night" : "");
  std::fflush(stdout);
}

}  // namespace

int main() {
  Keys keys;
  junction lights;
  bool night = false;
  for (char key = ' '; key != 'q'; key = keys.next()) {
    if (key == '\n') continue;
    if (key == 'n') night = !night;
    show(lights.step({.tick = key == '.', .car = key == 'c', .button = key == 'b', .night = night}),
         night);
  }
}
