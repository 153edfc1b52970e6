#include "programs/tarn/messages.h"

#include "base/translation.h"

namespace kiva::tarn_program {

bool fail(const std::string& what) {
  return fail(Place(), what);
}

bool fail(const Place& where, const std::string& what) {
  return programs::complain("tarn", where, what);
}

bool fail(const Diagnostic& fault) {
  return programs::complain("tarn", fault);
}

Messages::Messages(message_presenter* windows) : Reporter("tarn"), windows_(windows) {
  set_message_presenter(this);
}

Messages::~Messages() {
  set_message_presenter(nullptr);
}

void Messages::alert(const std::string& text) {
  if (windows_ != nullptr) windows_->alert(text);
}

void Messages::message(const std::string& text) {
  if (windows_ != nullptr) windows_->message(text);
}

void Messages::big_message(const std::string& text, int width) {
  if (windows_ != nullptr) windows_->big_message(text, width);
}

void Messages::display(const std::string& title, const std::string& text, int columns) {
  if (windows_ != nullptr) windows_->display(title, text, columns);
}

void Messages::take(const Diagnostic& diagnostic) {
  Reporter::take(diagnostic);
  if (windows_ != nullptr && diagnostic.severity == Severity::error &&
      diagnostic.manner == Manner::untold)
    windows_->alert(translated_lines(diagnostic.text("tarn")));
}

}  // namespace kiva::tarn_program
