#pragma once

#include <QRect>
#include <iostream>
#include <string>

namespace kiva {

class FenPrincipale;

/// What the command line of the window asks for.
struct StartArguments {
  bool complete = false;  ///< file, host and port are given
  bool scope = false;     ///< --scope: the second window opens, too
  bool beside = false;    ///< --beside: it opens beside the first, where there is room
  bool first = false;     ///< --first: the first instant is run
  std::string open;       ///< --open FILE
  std::string file;
  std::string host;
  std::string port;
};

/// Exactly three arguments are a file, a host and a port; "--open" and a file open it without a
/// server; "--scope", "--beside" and "--first" may stand anywhere. Any other number but none gets a
/// line on the error stream.
StartArguments read_start_arguments(int argc, const char* const* argv,
                                    std::ostream& errors = std::cerr);

/// Fixed size, style and style sheet. Without the style "plastique" the window takes "Fusion", and
/// says so on the error stream the first time.
void dress_window(FenPrincipale& window, std::ostream& errors = std::cerr);

/// Connects the window to the evaluation server. A host name over 80 characters and a port outside
/// 1 to 65535 get a message and no connection; port 0, as one writes it for "no server", a line on
/// the error stream only.
void connect_to_server(FenPrincipale& window, const std::string& host, const std::string& port,
                       std::ostream& errors = std::cerr);

/// Where the scope goes on a screen on whose left edge a window of that size stands; false where
/// there is no room for it.
bool place_beside(const QRect& screen, const QSize& window, QRect& place);

/// The program: gives its exit status. What its user has to know goes to `errors`; the told lines
/// go to std::cerr.
int run_window(int argc, char** argv, std::ostream& errors);

}  // namespace kiva
