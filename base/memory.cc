#include "base/memory.h"

#include <unistd.h>

#include <atomic>
#include <fstream>

namespace kiva {

long used_mem() {
  std::ifstream statm("/proc/self/statm");
  long total_pages = 0, resident_pages = 0;
  if (!(statm >> total_pages >> resident_pages)) return 0;
  return resident_pages * sysconf(_SC_PAGESIZE);
}

long diff_used_mem() {
  static std::atomic<long> before = 0;
  const long now = used_mem();
  return now - before.exchange(now);
}

}  // namespace kiva
