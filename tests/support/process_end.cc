#include "tests/support/process_end.h"

#include <iostream>
#include <sstream>

#include "base/process_end.h"

namespace kiva::test {

namespace {

struct ProcessEnded {
  int status;
};

class Redirect {
 public:
  Redirect(std::ostream& stream, std::ostream& to)
      : stream_(stream), old_(stream.rdbuf(to.rdbuf())) {}
  ~Redirect() { stream_.rdbuf(old_); }
  Redirect(const Redirect&) = delete;
  Redirect& operator=(const Redirect&) = delete;

 private:
  std::ostream& stream_;
  std::streambuf* old_;
};

class EndByThrow {
 public:
  EndByThrow() : before_(set_process_end_handler([](int status) { throw ProcessEnded{status}; })) {}
  ~EndByThrow() { set_process_end_handler(before_); }
  EndByThrow(const EndByThrow&) = delete;
  EndByThrow& operator=(const EndByThrow&) = delete;

 private:
  process_end_handler before_;
};

}  // namespace

Outcome run_captured(const std::function<void()>& call) {
  std::ostringstream out, err;
  Outcome outcome;
  {
    Redirect to_out(std::cout, out), to_err(std::cerr, err);
    EndByThrow end_by_throw;
    try {
      call();
    } catch (const ProcessEnded& end) {
      outcome.ended = true;
      outcome.exit_status = end.status;
    }
  }
  outcome.out = out.str();
  outcome.err = err.str();
  return outcome;
}

}  // namespace kiva::test
