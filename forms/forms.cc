// The text goes to the error stream first, whoever presents it then.

#include "forms/forms.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <string_view>

namespace kiva {

namespace {

thread_local message_presenter* current_presenter = nullptr;

/// The text on the error stream, closed by exactly one newline of its own or ours.
void write_text(const std::string& text) {
  std::cerr << text << '\n' << std::flush;
}

}  // namespace

message_presenter* set_message_presenter(message_presenter* presenter) {
  message_presenter* before = current_presenter;
  current_presenter = presenter;
  return before;
}

void fl_show_Salert(const std::string& text) {
  write_text(text);
  if (current_presenter != nullptr) current_presenter->alert(text);
}

void fl_show_alert(const std::string& first, const std::string& second, const std::string& third,
                   int /*centered*/) {
  fl_show_Salert(first + "\n" + second + "\n" + third);
}

void fl_show_Smessages(const std::string& text) {
  write_text(text);
  if (current_presenter != nullptr) current_presenter->message(text);
}

void fl_show_Sbigmessages(const std::string& text, int width) {
  write_text(text);
  if (current_presenter != nullptr) current_presenter->big_message(text, width);
}

void OFD_afficheur(const std::string& file, const std::string& title) {
  std::ifstream in(file);
  if (!in) {
    write_text(title + ": cannot open " + file);
    return;
  }
  OFD_afficheur(in, file, title);
}

void OFD_afficheur(std::istream& in, const std::string& file, const std::string& title) {
  write_text(title + ": " + file);
  if (current_presenter == nullptr) return;
  constexpr std::string_view width_directive = "#COLONNE ";
  int columns = 80;
  std::string text;
  for (std::string line; std::getline(in, line);) {
    if (line.starts_with(width_directive)) {
      const int told = std::atoi(line.c_str() + width_directive.size());
      if (told > 0) columns = std::min(told, 1000);
    } else if (!line.starts_with('#')) {
      text += line + '\n';
    }
  }
  current_presenter->display(title, text, columns);
}

}  // namespace kiva
