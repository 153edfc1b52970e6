#include "forms/fltk/fltk_messages.h"

#include <FL/Fl.H>
#include <FL/Fl_Browser.H>
#include <FL/Fl_Double_Window.H>
#include <FL/Fl_Return_Button.H>
#include <FL/Fl_Text_Buffer.H>
#include <FL/Fl_Text_Display.H>
#include <FL/x.H>

#include <algorithm>
#include <sstream>

namespace kiva {

namespace {

constexpr int character_width = 6;
constexpr int margin = 10;
constexpr int button_width = 80;
constexpr int button_height = 28;
constexpr int text_size = 13;

/// A window with a body above its one button. `fill(x, y, width, height)` makes the body.
template <class Fill>
void show_until_closed(const std::string& title, int width, int height, Fill fill) {
  width = std::min(width, Fl::w() - 2 * margin);
  height = std::min(height, Fl::h() - 4 * margin);
  Fl_Double_Window window((Fl::w() - width) / 2, (Fl::h() - height) / 2, width, height);
  window.copy_label(title.c_str());
  const int body_height = height - button_height - 3 * margin;
  Fl_Widget* body = fill(margin, margin, width - 2 * margin, body_height);
  Fl_Return_Button close((width - button_width) / 2, height - button_height - margin, button_width,
                         button_height, "OK");
  close.callback([](Fl_Widget*, void* shown) { static_cast<Fl_Window*>(shown)->hide(); }, &window);
  window.resizable(body);
  window.end();
  window.set_modal();
  window.show();
  close.take_focus();
  while (window.shown() != 0) Fl::wait();
  Fl::flush();
}

/// Of a window over so many lines.
int height_of(int lines) {
  return std::clamp(lines, 3, 40) * (text_size + 5) + button_height + 4 * margin;
}

int lines_of(const std::string& text) {
  return 1 + static_cast<int>(std::count(text.begin(), text.end(), '\n'));
}

/// A window over a text, wrapped where the lines are wider than the window.
void show_text(const std::string& title, const std::string& text, int width, int lines,
               Fl_Font font, bool wrap) {
  Fl_Text_Buffer buffer;
  buffer.text(text.c_str());
  show_until_closed(title, width, height_of(lines), [&](int x, int y, int w, int h) -> Fl_Widget* {
    auto* view = new Fl_Text_Display(x, y, w, h);  // the window's
    view->buffer(buffer);
    view->textfont(font);
    view->textsize(text_size);
    if (wrap) view->wrap_mode(Fl_Text_Display::WRAP_AT_BOUNDS, 0);
    return view;
  });
}

}  // namespace

bool fltk_presenter::open_display() {
  Display* display = XOpenDisplay(nullptr);
  if (display == nullptr) return false;
  fl_open_display(display);
  return true;
}

void fltk_presenter::alert(const std::string& text) {
  show_text("Alert", text, 560, lines_of(text) + 2, FL_HELVETICA, true);
}

void fltk_presenter::message(const std::string& text) {
  show_text("Message", text, 560, lines_of(text) + 2, FL_HELVETICA, true);
}

void fltk_presenter::big_message(const std::string& text, int width) {
  show_until_closed(
      "Message", width * character_width, height_of(lines_of(text)),
      [&](int x, int y, int w, int h) -> Fl_Widget* {
        auto* list = new Fl_Browser(x, y, w, h);  // the window's
        list->format_char(0);
        list->column_char(0);
        list->textsize(text_size);
        std::istringstream lines(text);
        for (std::string line; std::getline(lines, line);)
          list->add(line.empty() ? " " : line.c_str());  // an empty one shows stray text
        return list;
      });
}

void fltk_presenter::display(const std::string& title, const std::string& text, int columns) {
  const int width = columns * (character_width + 2) + 4 * margin;
  show_text(title, text, width, lines_of(text), FL_COURIER, false);
}

}  // namespace kiva
