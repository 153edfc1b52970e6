// Memory: C++ takes it by `operator new`, which stands here; C code linked into this program (the
// generated scanners and parsers among it) is bound to the __wrap_ functions by the linker. Files:
// the C++ library's calls find these before the system's.

#include "tests/injected/injection.h"

#include <sys/syscall.h>
#include <sys/uio.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <new>

namespace kiva::test {
namespace {

Faulty kind_;
bool armed = false, lasts = false;
long at = 0, count = 0;

bool fails(Faulty kind) {
  if (!armed || kind != kind_) return false;
  ++count;
  return count == at || (lasts && at != 0 && count > at);
}

bool write_fails() {
  if (!fails(Faulty::write)) return false;
  errno = ENOSPC;
  return true;
}

}  // namespace

Injection::Injection(Faulty kind, long n, bool lasting) {
  kind_ = kind, at = n, lasts = lasting, count = 0, armed = true;
}

Injection::~Injection() {
  armed = false;
}

long Injection::calls() {
  return count;
}

}  // namespace kiva::test

using kiva::test::fails;
using kiva::test::Faulty;
using kiva::test::write_fails;

extern "C" {
void* __real_malloc(size_t size);
void* __real_calloc(size_t count, size_t size);
void* __real_realloc(void* old, size_t size);
void* __wrap_malloc(size_t size) {
  return fails(Faulty::memory) ? nullptr : __real_malloc(size);
}
void* __wrap_calloc(size_t count, size_t size) {
  return fails(Faulty::memory) ? nullptr : __real_calloc(count, size);
}
void* __wrap_realloc(void* old, size_t size) {
  return fails(Faulty::memory) ? nullptr : __real_realloc(old, size);
}
ssize_t write(int file, const void* text, size_t size) {
  return write_fails() ? -1 : syscall(SYS_write, file, text, size);
}
ssize_t writev(int file, const iovec* parts, int count) {
  return write_fails() ? -1 : syscall(SYS_writev, file, parts, count);
}
int fsync(int) {
  return write_fails() ? -1 : 0;  // the machine goes on
}
int rename(const char* from, const char* to) noexcept {
  return write_fails() ? -1 : static_cast<int>(syscall(SYS_rename, from, to));
}
}

void* operator new(size_t size) {
  void* memory = fails(Faulty::memory) ? nullptr : __real_malloc(size == 0 ? 1 : size);
  return memory != nullptr ? memory : throw std::bad_alloc();
}
void* operator new(size_t size, const std::nothrow_t&) noexcept {
  return fails(Faulty::memory) ? nullptr : __real_malloc(size == 0 ? 1 : size);
}
void* operator new[](size_t size) {
  return operator new(size);
}
void operator delete[](void* memory) noexcept {
  std::free(memory);
}
void operator delete[](void* memory, size_t) noexcept {
  std::free(memory);
}
void operator delete(void* memory) noexcept {
  std::free(memory);
}
void operator delete(void* memory, size_t) noexcept {
  std::free(memory);
}
