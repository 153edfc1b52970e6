#include "programs/report.h"

#include <fcntl.h>
#include <unistd.h>

#include <filesystem>
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

bool overwrites(const std::string& program, const std::string& path,
                const std::vector<std::string>& files) {
  for (const std::string& file : files) {
    std::error_code none;
    if (!std::filesystem::equivalent(path, file, none)) continue;
    complain(program, {path, 0, 0, 0, 0}, "is read here, and would be overwritten");
    return true;
  }
  return false;
}

TraceFile::TraceFile(std::string program, std::string path, const std::vector<std::string>& read)
    : program_(std::move(program)), path_(std::move(path)) {
  if (path_.empty()) return;
  good_ = !overwrites(program_, path_, read);
  if (!good_) return;
  file_ = std::make_unique<WholeFile>(path_);
  good_ = file_->opened() || complain(program_, {path_, 0, 0, 0, 0}, "cannot be written");
}

bool TraceFile::finish() {
  return file_ == nullptr || file_->finish() ||
         complain(program_, {path_, 0, 0, 0, 0}, "cannot be written");
}

namespace {

/// Gives the standard descriptors that are closed to nobody, so that no file of ours gets one.
void hold_standard_descriptors() {
  for (int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
    if (fcntl(descriptor, F_GETFD) < 0)
      static_cast<void>(open("/dev/null", descriptor == STDIN_FILENO ? O_WRONLY : O_RDONLY));
}

}  // namespace

int run_reported(const std::string& program, const std::function<int()>& body) {
  hold_standard_descriptors();
  remove_unfinished_files_on_interrupt();
  int status = unusable;
  try {
    status = body();
  } catch (...) {
    complain(program, fault_under_way());
  }
  if (!std::cout.flush()) {
    if (status == 0) complain(program, Place(), "the standard output cannot be written");
    if (status == 0) status = unusable;
  }
  return status;
}

}  // namespace kiva::programs
