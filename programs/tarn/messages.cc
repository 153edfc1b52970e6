#include "programs/tarn/messages.h"

#include <iostream>

#include "base/process_end.h"
#include "tarn/model/source_span.h"

namespace kiva::tarn_program {

bool fail(const std::string& what) {
  std::cerr << "tarn: " << what << '\n';
  return false;
}

Messages::Messages(message_presenter* windows) : windows_(windows) {
  set_message_presenter(this);
  set_process_end_handler([](int) { throw ToldEnd(); });
}

Messages::~Messages() {
  set_process_end_handler(nullptr);
  set_message_presenter(nullptr);
}

void Messages::note(const std::string& text) {
  ++count_;
  last_ = text;
}

void Messages::alert(const std::string& text) {
  note(text);
  if (windows_ != nullptr) windows_->alert(text);
}

void Messages::message(const std::string& text) {
  note(text);
  if (windows_ != nullptr) windows_->message(text);
}

void Messages::big_message(const std::string& text, int width) {
  note(text);
  if (windows_ != nullptr) windows_->big_message(text, width);
}

void Messages::display(const std::string& title, const std::string& text, int columns) {
  if (windows_ != nullptr) windows_->display(title, text, columns);
}

std::string Messages::last_in_a_line(const std::string& file) const {
  const SourceSpan told = take_told_place();
  std::string place = told.known() ? told.text() : file;
  const size_t named = last_.find("\n" + file + ":");
  if (named != std::string::npos) {
    const size_t number = named + 1 + file.size() + 1;
    const size_t end = last_.find_first_not_of("0123456789", number);
    if (end != number) place += ":" + last_.substr(number, end - number);
  }
  const size_t begin = last_.find_first_not_of('\n');
  if (begin == std::string::npos) return place + ": refused";
  std::string line = last_.substr(begin, last_.find('\n', begin) - begin);
  while (!line.empty() && (line.back() == ':' || line.back() == ' ')) line.pop_back();
  return place + ": " + line;
}

}  // namespace kiva::tarn_program
