#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>

#include "tarn/session/session.h"

namespace kiva::fuzz {

/// Where the text may be read as a file, until the next call.
std::string file_of(const std::string& text);

/// Runs the call as a program does, in a session of its own by the sound rules, and mute. What the
/// library ends or refuses ends the call alone; what else leaves it is a find.
void run(const std::function<void()>& call);

/// Ends the process with the text: a find that no sanitizer sees.
[[noreturn]] void found(const std::string& what);

/// A harness begins with this line and goes on with its body over `text`.
#define KIVA_FUZZ(text)                                                     \
  static void one_text(const std::string& text);                            \
  extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) { \
    one_text(std::string(reinterpret_cast<const char*>(data), size));       \
    return 0;                                                               \
  }                                                                         \
  static void one_text(const std::string& text)

}  // namespace kiva::fuzz
