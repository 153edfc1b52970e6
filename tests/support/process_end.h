#pragma once

#include <functional>
#include <string>

namespace kiva::test {

/// What a call left on the two output streams, and how it ended.
struct Outcome {
  std::string out;
  std::string err;
  int exit_status = 0;  ///< what the process would have exited with; 0 when it did not end
  bool ended = false;   ///< the call reached `end_process`
};

/// Runs `call` with std::cout and std::cerr captured and the end of the process turned into a
/// return from here. Exceptions of the call itself pass through.
Outcome run_captured(const std::function<void()>& call);

}  // namespace kiva::test
