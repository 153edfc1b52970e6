#include "base/check.h"

#include <cstdio>
#include <cstdlib>

namespace kiva {

void invariant_broken(const char* file, int number, const char* condition) {
  std::fprintf(stderr, "%s: invariant %d broken: %s\n", file, number, condition);
  std::abort();
}

}  // namespace kiva
