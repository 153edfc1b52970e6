#pragma once

#include <string>

#include "forms/forms.h"

namespace kiva::tarn_program {

/// Tells a fault in one line of the error stream; false, so that a caller can return it.
bool fail(const std::string& what);

/// The end of the process that the library asked for, after a report: thrown in its place, so that
/// the program can name the file and go on to the next one.
struct ToldEnd {};

/// Takes the library's messages while it lives, hands them on to windows where there are some, and
/// turns a told end of the process into a ToldEnd.
class Messages : public message_presenter {
 public:
  /// `windows` may be null.
  explicit Messages(message_presenter* windows);
  ~Messages() override;
  Messages(const Messages&) = delete;
  Messages& operator=(const Messages&) = delete;

  void alert(const std::string& text) override;
  void message(const std::string& text) override;
  void big_message(const std::string& text, int width) override;
  void display(const std::string& title, const std::string& text, int columns) override;

  /// Messages so far.
  int count() const { return count_; }
  /// The last message in a line: the place in `file` that it names, or the file, then its first
  /// line.
  std::string last_in_a_line(const std::string& file) const;

 private:
  void note(const std::string& text);

  message_presenter* windows_;
  int count_ = 0;
  std::string last_;
};

}  // namespace kiva::tarn_program
