#include "programs/console/prompt_input.h"

#include <unistd.h>

#include <cerrno>
#include <ios>

namespace kiva {

PromptInput::int_type PromptInput::underflow() {
  before_();
  ssize_t count = 0;
  do {
    count = read(STDIN_FILENO, text_.data(), text_.size());
  } while (count < 0 && errno == EINTR);
  if (count < 0) throw std::ios_base::failure("read");
  if (count == 0) return traits_type::eof();
  setg(text_.data(), text_.data(), text_.data() + count);
  return traits_type::to_int_type(text_[0]);
}

}  // namespace kiva
