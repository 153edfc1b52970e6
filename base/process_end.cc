#include "base/process_end.h"

#include <cstdlib>
#include <iostream>

namespace kiva {

namespace {
thread_local process_end_handler current_handler = nullptr;
}  // namespace

void end_process(int status) {
  std::cout.flush();
  std::cerr.flush();
  if (current_handler != nullptr) current_handler(status);
  std::exit(status);
}

process_end_handler set_process_end_handler(process_end_handler handler) {
  process_end_handler before = current_handler;
  current_handler = handler;
  return before;
}

}  // namespace kiva
