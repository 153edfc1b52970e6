#pragma once

#include <string>

#include "forms/forms.h"

namespace kiva {

/// Shows messages in modal windows on the X display; each call returns when the window is closed,
/// by its button, Return or Escape.
class fltk_presenter : public message_presenter {
 public:
  /// Connects with the display, once, before the first window; false where there is none.
  static bool open_display();

  void alert(const std::string& text) override;
  void message(const std::string& text) override;
  void big_message(const std::string& text, int width) override;
  void display(const std::string& title, const std::string& text, int columns) override;
};

}  // namespace kiva
