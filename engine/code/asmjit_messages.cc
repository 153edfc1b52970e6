// AsmJit's own messages, in a shared library. Its archive may be a part of one but for the member
// that prints them, which reaches the error stream by an address that only a program can have.
// These take that member's place.

#ifdef KIVA_ASMJIT_ARCHIVE

#include <asmjit/core/globals.h>

#include <cstdio>
#include <cstdlib>

#pragma GCC visibility push(hidden)
ASMJIT_BEGIN_SUB_NAMESPACE(DebugUtils)

const char* errorAsString(Error) noexcept {
  return "AsmJit reports an error";
}

void debugOutput(const char* text) noexcept {
  std::fputs(text, stderr);
}

void assertionFailed(const char* file, int line, const char* text) noexcept {
  std::fprintf(stderr, "%s:%d: %s\n", file, line, text);
  std::abort();
}

ASMJIT_END_SUB_NAMESPACE
#pragma GCC visibility pop

#endif
