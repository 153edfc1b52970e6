#include "tests/fuzz/fuzz.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <iostream>

#include "programs/report.h"
#include "tarn/model/compilation.h"
#include "tarn/model/rules.h"
#include "tarn/model/sexception.h"
#include "tarn/session/session_files.h"

namespace kiva::fuzz {

std::string file_of(const std::string& text) {
  static const int descriptor = memfd_create("text", 0);
  if (ftruncate(descriptor, 0) != 0 ||
      pwrite(descriptor, text.data(), text.size(), 0) != static_cast<ssize_t>(text.size()))
    std::abort();
  return "/proc/self/fd/" + std::to_string(descriptor);
}

void found(const std::string& what) {
  std::fprintf(stderr, "%s\n", what.c_str());
  std::abort();
}

void run(const std::function<void()>& call) {
  std::cerr.setstate(std::ios::failbit);
  std::cout.setstate(std::ios::failbit);
  const programs::ProgramSession session;
  SessionFiles::current().trace = nullptr;
  Compilation::rules() = Rules::sound();
  try {
    call();
  } catch (const FatalDiagnostic&) {
  } catch (const LibraryException&) {
  }
}

}  // namespace kiva::fuzz
