#pragma once

#include <array>
#include <functional>
#include <streambuf>

namespace kiva {

/// The standard input, read as far as it has come. Before it is waited for, `before` is called:
/// whoever gives lines one by one has the answers to all of them by then. Throws
/// std::ios_base::failure where it cannot be read.
class PromptInput : public std::streambuf {
 public:
  explicit PromptInput(std::function<void()> before) : before_(std::move(before)) {}

 protected:
  int_type underflow() override;

 private:
  std::function<void()> before_;
  std::array<char, 65536> text_;
};

}  // namespace kiva
