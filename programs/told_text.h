#pragma once

#include <iosfwd>
#include <memory>
#include <string>

namespace kiva::programs {

/// The error stream of the process, whatever becomes of std::cerr.
std::ostream& errors();

/// While one lives, what the library tells its own callers on std::cerr is shown on the error
/// stream if `shown`, else kept back. Programs make one at a time, and write to errors().
class ToldText {
 public:
  explicit ToldText(bool shown);
  ~ToldText();
  ToldText(const ToldText&) = delete;
  ToldText& operator=(const ToldText&) = delete;

  /// The last of what the library has told since the last call, a few kilobytes at most; "" where
  /// there is no such object.
  static std::string take_last();

 private:
  class Buffer;
  std::unique_ptr<Buffer> buffer_;
  std::streambuf* before_;
};

}  // namespace kiva::programs
