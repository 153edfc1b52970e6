#pragma once

#include <exception>
#include <string>
#include <vector>

namespace kiva {

enum class Severity { error, warning, note };

/// Where in a text something stands, by a name of its own: it outlives what it was told of. Lines
/// and columns count from 1, columns in bytes; 0 where nothing is known.
struct Place {
  std::string file;
  int line = 0;
  int column = 0;
  int last_line = 0;
  int last_column = 0;

  bool known() const { return !file.empty(); }
  /// "FILE:LINE:COLUMN", as far as known.
  std::string text() const;
};

/// How the library tells its own callers: on the error stream as it stands, or through forms.
enum class Manner { stream, alert, message, big_message, untold };

/// What there is to say about a text, for programs to show and for people to read. One without
/// sentence ends work of which the sink has heard all there is to say.
struct Diagnostic {
  struct Note {
    Place where;
    std::string sentence;
  };

  Severity severity = Severity::error;
  std::string name;  ///< of the kind of fault: the class of an exception, or ""
  Place where;
  std::string sentence;
  std::vector<Note> notes;
  std::string told;  ///< the library's own text, which may have many lines
  Manner manner = Manner::stream;
  bool for_callers = false;  ///< only the library's own callers are told: programs do not show it

  /// A fault that is known by its told text alone: the sentence is its first line.
  static Diagnostic of_told(std::string told, Manner manner = Manner::stream, Place where = {});
  /// "PLACE: error: SENTENCE" and a newline; `anywhere` stands for an unknown place.
  std::string line(const std::string& anywhere) const;
  static std::string line(const Note& note, const std::string& anywhere);
  /// That line, then one for each note.
  std::string text(const std::string& anywhere) const;
};

/// Takes what is worth saying while work goes on.
class DiagnosticSink {
 public:
  virtual ~DiagnosticSink() = default;
  virtual void take(const Diagnostic& diagnostic) = 0;
};

/// The fault that ends the work of a session that has a sink.
class FatalDiagnostic : public std::exception {
 public:
  explicit FatalDiagnostic(Diagnostic diagnostic) : diagnostic_(std::move(diagnostic)) {}
  const Diagnostic& diagnostic() const { return diagnostic_; }
  const char* what() const noexcept override { return diagnostic_.sentence.c_str(); }

 private:
  Diagnostic diagnostic_;
};

/// Tells the text in its manner, and hands the diagnostic to the current session's sink.
void report(const Diagnostic& diagnostic);
/// A told text alone; one that is no error is for the library's own callers.
void report(const std::string& told, Manner manner, Severity severity = Severity::error);
/// The same of a file, with a sentence for programs.
void report_file(const std::string& path, const std::string& sentence, const std::string& told);
/// A told text, and what it says to whoever uses a program.
void remark(Severity severity, const std::string& sentence, const std::string& told);
/// Tells the text, and ends the work: by a FatalDiagnostic where the current session has a sink,
/// else by the end of the process. A fault without place gets the place told last.
[[noreturn]] void end_with(Diagnostic fault);
[[noreturn]] void end_with(const std::string& told, Manner manner = Manner::stream);

}  // namespace kiva
