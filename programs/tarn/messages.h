#pragma once

#include <string>

#include "forms/forms.h"
#include "programs/report.h"
#include "programs/reporter.h"

namespace kiva::tarn_program {

using programs::unusable;
using programs::wrong_usage;

/// Tells a fault in one line of the error stream; false, so that a caller can return it.
bool fail(const std::string& what);
bool fail(const Place& where, const std::string& what);
bool fail(const Diagnostic& fault);

/// Prints the library's messages while it lives, and hands their told texts on to windows where
/// there are some.
class Messages : public message_presenter, public programs::Reporter {
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
  /// An error that has no told text comes as an alert of its own.
  void take(const Diagnostic& diagnostic) override;

 private:
  message_presenter* windows_;
};

}  // namespace kiva::tarn_program
