#pragma once

#include <cstring>
#include <new>
#include <stdexcept>

namespace kiva {

/// What a generated scanner does where it would end the process.
[[noreturn]] inline void throw_scanner_error(const char* told) {
  if (std::strstr(told, "memory") != nullptr) throw std::bad_alloc();
  throw std::runtime_error(told);
}

}  // namespace kiva
