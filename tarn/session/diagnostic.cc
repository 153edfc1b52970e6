// Two ways out of the library: the text for its own callers, and the diagnostic for the sink.

#include "tarn/session/diagnostic.h"

#include <iostream>
#include <utility>

#include "base/printable_text.h"
#include "base/process_end.h"
#include "forms/forms.h"
#include "tarn/session/session.h"
#include "tarn/session/told_texts.h"

namespace kiva {

namespace {

constexpr int width_of_big_messages = 300;

void tell(const Diagnostic& diagnostic) {
  if (!Session::current().part<ToldTexts>().written) return;
  switch (diagnostic.manner) {
    case Manner::stream:
      std::cerr << diagnostic.told << '\n';
      break;
    case Manner::alert:
      fl_show_Salert(diagnostic.told);
      break;
    case Manner::message:
      fl_show_Smessages(diagnostic.told);
      break;
    case Manner::big_message:
      fl_show_Sbigmessages(diagnostic.told, width_of_big_messages);
      break;
    case Manner::untold:
      break;
  }
}

const char* word(Severity severity) {
  switch (severity) {
    case Severity::error:
      return "error: ";
    case Severity::warning:
      return "warning: ";
    default:
      return "note: ";
  }
}

std::string line_of(const Place& where, Severity severity, const std::string& sentence,
                    const std::string& anywhere) {
  return printable((where.known() ? where.text() : anywhere) + ": " + word(severity) + sentence) +
         '\n';
}

}  // namespace

std::string Place::text() const {
  std::string text = file;
  if (line > 0) text += ':' + std::to_string(line);
  if (column > 0) text += ':' + std::to_string(column);
  return text;
}

Diagnostic Diagnostic::of_told(std::string told, Manner manner, Place where) {
  Diagnostic fault;
  const size_t begin = told.find_first_not_of('\n');
  fault.sentence =
      begin == std::string::npos ? "refused" : told.substr(begin, told.find('\n', begin) - begin);
  while (fault.sentence.ends_with(':') || fault.sentence.ends_with(' ')) fault.sentence.pop_back();
  fault.told = std::move(told);
  fault.manner = manner;
  fault.where = std::move(where);
  return fault;
}

std::string Diagnostic::line(const std::string& anywhere) const {
  return line_of(where, severity, sentence, anywhere);
}

std::string Diagnostic::line(const Note& note, const std::string& anywhere) {
  return line_of(note.where, Severity::note, note.sentence, anywhere);
}

std::string Diagnostic::text(const std::string& anywhere) const {
  std::string text = line(anywhere);
  for (const Note& note : notes) text += line(note, anywhere);
  return text;
}

void report(const Diagnostic& diagnostic) {
  tell(diagnostic);
  if (DiagnosticSink* sink = Session::current().sink()) sink->take(diagnostic);
}

void report(const std::string& told, Manner manner, Severity severity) {
  Diagnostic diagnostic = Diagnostic::of_told(told, manner);
  diagnostic.severity = severity;
  diagnostic.for_callers = severity != Severity::error;
  report(diagnostic);
}

void report_file(const std::string& path, const std::string& sentence, const std::string& told) {
  Diagnostic diagnostic = Diagnostic::of_told(told, Manner::message, {path, 0, 0, 0, 0});
  diagnostic.sentence = sentence;
  report(diagnostic);
}

void remark(Severity severity, const std::string& sentence, const std::string& told) {
  Diagnostic diagnostic = Diagnostic::of_told(told);
  diagnostic.severity = severity;
  diagnostic.sentence = sentence;
  report(diagnostic);
}

void end_with(Diagnostic fault) {
  Session& session = Session::current();
  tell(fault);
  const Place told = std::exchange(session.told_place, Place());
  if (!fault.where.known()) fault.where = told;
  if (session.sink() == nullptr) end_process();
  throw FatalDiagnostic(std::move(fault));
}

void end_with(const std::string& told, Manner manner) {
  end_with(Diagnostic::of_told(told, manner));
}

}  // namespace kiva
