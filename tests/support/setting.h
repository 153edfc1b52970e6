#pragma once

#include <cstdlib>

namespace kiva::test {

/// A number of the environment; `standard` where it is not set.
inline long setting(const char* name, long standard) {
  const char* text = std::getenv(name);
  return text == nullptr ? standard : std::strtol(text, nullptr, 10);
}

}  // namespace kiva::test
