// While a program works, what the library tells its own callers goes into a buffer in place of
// std::cerr; the program's own lines go past it.

#include "programs/told_text.h"

#include <iostream>
#include <streambuf>
#include <utility>

namespace kiva::programs {

namespace {

constexpr size_t most_kept = 4096;
std::string* kept = nullptr;

}  // namespace

std::ostream& errors() {
  static std::ostream stream(std::cerr.rdbuf());
  return stream;
}

class ToldText::Buffer : public std::streambuf {
 public:
  explicit Buffer(bool shown) : shown_(shown) { kept = &text_; }
  ~Buffer() override { kept = nullptr; }

 protected:
  int_type overflow(int_type c) override {
    if (!traits_type::eq_int_type(c, traits_type::eof())) {
      const char byte = traits_type::to_char_type(c);
      xsputn(&byte, 1);
    }
    return traits_type::not_eof(c);
  }
  std::streamsize xsputn(const char* text, std::streamsize length) override {
    if (shown_) errors().write(text, length);
    if (text_.size() > most_kept) text_.erase(0, text_.size() - most_kept / 2);
    text_.append(text, static_cast<size_t>(length));
    return length;
  }
  int sync() override {
    if (shown_) errors().flush();
    return 0;
  }

 private:
  bool shown_;
  std::string text_;
};

ToldText::ToldText(bool shown) {
  errors();
  buffer_ = std::make_unique<Buffer>(shown);
  before_ = std::cerr.rdbuf(buffer_.get());
}

ToldText::~ToldText() {
  std::cerr.rdbuf(before_);
}

std::string ToldText::take_last() {
  return kept == nullptr ? "" : std::exchange(*kept, "");
}

}  // namespace kiva::programs
