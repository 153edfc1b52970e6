#pragma once

#include <exception>
#include <string>

#include "tarn/model/source_span.h"

namespace kiva {

/// Base of the library's exceptions: up to two texts, told by whoever throws.
class LibraryException : public std::exception {
 public:
  explicit LibraryException(std::string first = "", std::string second = "")
      : first_(std::move(first)), second_(std::move(second)) {}
  const std::string& first() const { return first_; }
  const std::string& second() const { return second_; }
  /// Name of the class, for a program's report.
  virtual const char* name() const noexcept = 0;
  /// "NAME: first second", as programs print it.
  std::string text() const;

  /// What the complaint says to whoever wrote the text: the sentence given to it, else one for its
  /// class.
  std::string sentence() const { return sentence_.empty() ? usual_sentence() : sentence_; }
  void set_sentence(std::string sentence) { sentence_ = std::move(sentence); }

  /// The source text that the complaint is about; unknown unless a reader of source has set it.
  const SourceSpan& where() const { return where_; }
  void set_where(const SourceSpan& span) { where_ = span; }

 private:
  std::string usual_sentence() const;

  std::string first_;
  std::string second_;
  std::string sentence_;
  SourceSpan where_;
};

/// The exception, with a sentence for whoever wrote the text.
template <class Exception>
Exception explained(Exception exception, std::string sentence) {
  exception.set_sentence(std::move(sentence));
  return exception;
}

/// The exception as a diagnostic, of its class's name.
Diagnostic diagnostic_of(const LibraryException& exception);

#define KIVA_EXCEPTION(NAME)                                     \
  class NAME : public LibraryException {                         \
   public:                                                       \
    using LibraryException::LibraryException;                    \
    const char* name() const noexcept override { return #NAME; } \
  }

/// Complaint, then the name or number concerned.
KIVA_EXCEPTION(IllegalOperationException);
/// Class, then method.
KIVA_EXCEPTION(AbstractMethodCallException);
/// Key, then the operation of the table.
KIVA_EXCEPTION(HashTableAddException);
KIVA_EXCEPTION(ModulePertFailureException);
/// Constant, then where it was sought.
KIVA_EXCEPTION(ModuleUndefinedConstantException);
/// Signal.
KIVA_EXCEPTION(ModuleUnknownSignalException);
/// Type.
KIVA_EXCEPTION(UndefinedTypeException);
/// The word "method", then the method.
KIVA_EXCEPTION(UndefinedMethodException);
/// Name, then complaint.
KIVA_EXCEPTION(AlreadyDefinedException);
/// Complaint, then signal.
KIVA_EXCEPTION(RunUnknownSignalException);
/// Signal or complaint.
KIVA_EXCEPTION(StatementSignalException);
/// "set", "reset" or "rtl".
KIVA_EXCEPTION(StatementWireException);

#undef KIVA_EXCEPTION

/// A count that `wait` cannot take.
class BadValueNumberWaitException : public LibraryException {
 public:
  explicit BadValueNumberWaitException(int count)
      : LibraryException("is a bad number for wait", std::to_string(count)), count_(count) {}
  const char* name() const noexcept override { return "BadValueNumberWaitException"; }
  int count() const { return count_; }

 private:
  int count_;
};

}  // namespace kiva
