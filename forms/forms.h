#pragma once

#include <iosfwd>
#include <string>

namespace kiva {

/// What shows messages to a person besides the error stream. The text itself stands on the error
/// stream already when a presenter is called; each call returns when the person has read it.
class message_presenter {
 public:
  virtual ~message_presenter() = default;
  virtual void alert(const std::string& text) = 0;
  virtual void message(const std::string& text) = 0;
  /// `width` is the width of the list, in characters of 6 pixels.
  virtual void big_message(const std::string& text, int width) = 0;
  /// A long text under a title; `columns` is the width of its page in characters.
  virtual void display(const std::string& title, const std::string& text, int columns) = 0;
};

/// Chooses the presenter of this thread, which the caller keeps alive; null (the default) leaves
/// messages to the error stream. Gives the presenter that stood before.
message_presenter* set_message_presenter(message_presenter* presenter);

/// Each writes its text and a newline to the error stream, then hands it to the presenter.
void fl_show_Salert(const std::string& text);
/// The three texts on lines of their own; the last argument has no effect.
void fl_show_alert(const std::string& first, const std::string& second, const std::string& third,
                   int centered);
void fl_show_Smessages(const std::string& text);
void fl_show_Sbigmessages(const std::string& text, int width);
/// Shows a text file under a title. The error stream gets the title and the name of the file, or
/// the reason why it cannot be read. Lines of the file that begin with '#' are the display's own:
/// "#COLONNE n " sets its width, which is 80 characters otherwise; others are left out.
void OFD_afficheur(const std::string& file, const std::string& title);
/// The same of a text with directives, which belongs to that file.
void OFD_afficheur(std::istream& text, const std::string& file, const std::string& title);

}  // namespace kiva
