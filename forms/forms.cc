#include "forms/forms.h"

#include <iostream>

namespace kiva {

namespace {

message_presenter* current_presenter = nullptr;

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

}  // namespace kiva
