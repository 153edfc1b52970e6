#include "programs/report.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <exception>
#include <filesystem>
#include <iostream>
#include <new>
#include <tuple>
#include <utility>

#include "base/process_end.h"
#include "base/translation.h"
#include "programs/sarif.h"
#include "programs/told_text.h"
#include "tarn/session/session.h"
#include "tarn/session/source_excerpt.h"

namespace kiva::programs {

namespace {

constexpr const char* out_of_memory = "out of memory";

class Silent : public DiagnosticSink {
  void take(const Diagnostic&) override {}
};

/// What the ends of lower floors that users can bring about mean, by words of what they tell.
struct ToldEnd {
  const char* told;
  const char* sentence;
};
constexpr std::array<ToldEnd, 5> told_ends{{
    {"Nb bdd vars reached", "more variables than a module can have"},
    {"detected self-dependance", "a signal depends on itself in one instant"},
    {"number of products exceeds limit", "an equation has more products than can be written"},
    {"Bdd_sop", "an equation has more products than can be written"},
    {"Bdd_implicants", "an equation has more products than can be written"},
}};

[[noreturn]] void throw_end(int) {
  const std::string told = ToldText::take_last();
  Diagnostic fault;
  fault.sentence = "internal fault; --verbose shows what the library tells";
  for (const ToldEnd& end : told_ends)
    if (told.find(end.told) != std::string::npos) fault.sentence = end.sentence;
  throw FatalDiagnostic(std::move(fault));
}

/// On a terminal the source line stands below, with a mark.
std::string excerpt(const Place& where) {
  return isatty(STDERR_FILENO) == 0 ? "" : source_excerpt(where);
}

}  // namespace

namespace {

/// In the language of whoever runs the program. Where no person looks on, the head of the lines
/// stays as tools know it.
void print(const std::string& program, const Diagnostic& diagnostic) {
  Sarif::keep(diagnostic);
  const bool terminal = isatty(STDERR_FILENO) != 0;
  const auto in_language = [&](auto said) {
    said.sentence = translated(said.sentence);
    return said;
  };
  const auto shown = [&](const std::string& line) {
    return terminal ? translated_lines(line) : line;
  };
  // On a terminal a line of progress may stand there.
  std::string text = terminal ? "\r\033[K" : "";
  text += shown(in_language(diagnostic).line(program)) + excerpt(diagnostic.where);
  for (const Diagnostic::Note& note : diagnostic.notes)
    text += shown(Diagnostic::line(in_language(note), program));
  errors() << text << std::flush;
}

/// What waits, and the files in order of arrival.
struct Waiting {
  std::vector<std::pair<std::string, Diagnostic>> lines;
  std::vector<std::string> files;

  auto place(const Diagnostic& d) const {
    const auto file = std::find(files.begin(), files.end(), d.where.file);
    return std::tuple(file - files.begin(), d.where.line, d.where.column);
  }
};
std::unique_ptr<Waiting> waiting;

}  // namespace

InTextOrder::InTextOrder(const std::string& file) {
  waiting = std::make_unique<Waiting>();
  waiting->files.push_back(file);
}

InTextOrder::~InTextOrder() {
  const std::unique_ptr<Waiting> all = std::move(waiting);
  std::stable_sort(all->lines.begin(), all->lines.end(), [&](const auto& a, const auto& b) {
    return all->place(a.second) < all->place(b.second);
  });
  for (const auto& [program, diagnostic] : all->lines) print(program, diagnostic);
}

bool complain(const std::string& program, const Diagnostic& diagnostic) {
  if (diagnostic.sentence.empty()) return false;
  if (waiting == nullptr) {
    print(program, diagnostic);
    return false;
  }
  const std::string& file = diagnostic.where.file;
  std::vector<std::string>& files = waiting->files;
  if (!file.empty() && std::find(files.begin(), files.end(), file) == files.end())
    files.push_back(file);
  waiting->lines.emplace_back(program, diagnostic);
  return false;
}

bool complain(const std::string& program, const Place& where, const std::string& reason) {
  Diagnostic diagnostic;
  diagnostic.where = where;
  diagnostic.sentence = reason;
  return complain(program, diagnostic);
}

struct ProgramSession::Held {
  Silent silent;
  Session session;
  Session::Use use{session};
  process_end_handler before = set_process_end_handler(throw_end);
};

ProgramSession::ProgramSession(DiagnosticSink* sink) : held_(std::make_unique<Held>()) {
  held_->session.set_sink(sink != nullptr ? sink : &held_->silent);
  // The standard output is the program's own.
  held_->session.set_told_text(std::cerr);
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

std::string terminated_program;

/// Where an exception can go nowhere: a library's destructor that ran out of memory, say.
[[noreturn]] void end_unreported() {
  remove_unfinished_files();
  const char* reason = "stopped by an unknown fault";
  try {
    if (std::current_exception() != nullptr) throw;
  } catch (const std::bad_alloc&) {
    reason = out_of_memory;
  } catch (...) {
  }
  errors() << terminated_program << ": error: " << reason << std::endl;
  _exit(unusable);
}

}  // namespace

int run_reported(const std::string& program, const std::function<int()>& body) {
  hold_standard_descriptors();
  remove_unfinished_files_on_interrupt();
  terminated_program = program;
  std::set_terminate(end_unreported);
  int status = unusable;
  try {
    try {
      status = body();
    } catch (...) {
      complain(program, fault_under_way());
    }
  } catch (...) {
    // Not even the memory for a message is left.
    errors() << program << ": error: " << out_of_memory << std::endl;
  }
  if (!std::cout.flush()) {
    if (status == 0) complain(program, Place(), "the standard output cannot be written");
    if (status == 0) status = unusable;
  }
  return status;
}

}  // namespace kiva::programs
