#include "programs/report.h"

#include <iostream>
#include <new>

#include "base/process_end.h"
#include "tarn/model/sexception.h"
#include "tarn/session/session.h"

namespace kiva::programs {

namespace {

class Silent : public DiagnosticSink {
  void take(const Diagnostic&) override {}
};

[[noreturn]] void throw_end(int) {
  Diagnostic fault;
  fault.sentence = "stopped, for the reason above";
  throw FatalDiagnostic(std::move(fault));
}

}  // namespace

bool complain(const std::string& program, const Diagnostic& diagnostic) {
  std::cerr << diagnostic.text(program) << std::flush;
  return false;
}

bool complain(const std::string& program, const Place& where, const std::string& reason) {
  Diagnostic diagnostic;
  diagnostic.where = where;
  diagnostic.sentence = reason;
  return complain(program, diagnostic);
}

Diagnostic fault_under_way(const std::string& file, const std::string& in) {
  Diagnostic fault;
  try {
    throw;
  } catch (const FatalDiagnostic& fatal) {
    fault = fatal.diagnostic();
  } catch (const LibraryException& exception) {
    fault = diagnostic_of(exception, in);
  } catch (const std::bad_alloc&) {
    fault.sentence = in + "out of memory";
  } catch (const std::exception& exception) {
    fault.sentence = in + exception.what();
  } catch (...) {
    fault.sentence = in + "stopped by an unknown fault";
  }
  if (!fault.where.known()) fault.where.file = file;
  return fault;
}

struct ProgramSession::Held {
  Silent silent;
  Session session;
  Session::Use use{session};
  process_end_handler before = set_process_end_handler(throw_end);
};

ProgramSession::ProgramSession(DiagnosticSink* sink) : held_(std::make_unique<Held>()) {
  held_->session.set_sink(sink != nullptr ? sink : &held_->silent);
}

ProgramSession::~ProgramSession() {
  set_process_end_handler(held_->before);
}

int run_reported(const std::string& program, const std::function<int()>& body) {
  try {
    return body();
  } catch (...) {
    complain(program, fault_under_way());
    return unusable;
  }
}

}  // namespace kiva::programs
