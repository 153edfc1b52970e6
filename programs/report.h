#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "base/whole_file.h"
#include "tarn/model/fault_under_way.h"
#include "tarn/session/diagnostic.h"

namespace kiva::programs {

// Exit statuses of every program.
constexpr int unusable = 1;     ///< a file or module cannot be used, or something cannot be written
constexpr int wrong_usage = 2;  ///< of the command line

/// Prints "FILE:LINE:COLUMN: error: REASON" and a line for each note on the error stream, with the
/// program's name where no file is known; on a terminal, the source line below each. Nothing for a
/// diagnostic without sentence. False, so that a caller can return it.
bool complain(const std::string& program, const Diagnostic& diagnostic);
/// The same of a reason at a place, which may be unknown.
bool complain(const std::string& program, const Place& where, const std::string& reason);

/// While one lives, what `complain` has to print waits, and comes out at its end in the order of
/// the text: by line and column in each file, files in order of arrival, what has no place behind
/// them.
class InTextOrder {
 public:
  /// The file comes first.
  explicit InTextOrder(const std::string& file);
  ~InTextOrder();
  InTextOrder(const InTextOrder&) = delete;
  InTextOrder& operator=(const InTextOrder&) = delete;
};

/// A session of a program while it lives: the current one, with its faults thrown as
/// FatalDiagnostic, ends of the process that lower floors ask for included.
class ProgramSession {
 public:
  explicit ProgramSession(DiagnosticSink* sink = nullptr);
  ~ProgramSession();
  ProgramSession(const ProgramSession&) = delete;
  ProgramSession& operator=(const ProgramSession&) = delete;

 private:
  struct Held;
  std::unique_ptr<Held> held_;
};

/// Whether writing to `path` would replace one of the files, which has then been complained about.
bool overwrites(const std::string& program, const std::string& path,
                const std::vector<std::string>& files);

/// The file of the readers' traces, which a program writes where its user names one, and else not
/// at all.
class TraceFile {
 public:
  /// `path` is "" for none. A failure is told, and `good` false.
  TraceFile(std::string program, std::string path, const std::vector<std::string>& read);
  bool good() const { return good_; }
  /// Null for none.
  std::ostream* stream() { return file_ == nullptr ? nullptr : &file_->out(); }
  /// False, which has been told, where not all could be written.
  bool finish();

 private:
  std::string program_, path_;
  std::unique_ptr<WholeFile> file_;
  bool good_ = true;
};

/// Runs the body of a `main`: what leaves it is complained about, and gives `unusable`, and so does
/// text for the standard output that cannot be written. An interrupt leaves no half-written file.
int run_reported(const std::string& program, const std::function<int()>& body);

}  // namespace kiva::programs
