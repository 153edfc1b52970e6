#include "tarn/model/sexception.h"

namespace kiva {

std::string LibraryException::text() const {
  std::string text = name();
  text += ':';
  if (!first_.empty()) text += ' ' + first_;
  if (!second_.empty()) text += ' ' + second_;
  return text;
}

Diagnostic diagnostic_of(const LibraryException& exception, const std::string& in) {
  Diagnostic fault = Diagnostic::of_told(exception.text(), Manner::untold);
  fault.name = exception.name();
  fault.where = place_of(exception.where());
  fault.sentence = in + exception.text();
  return fault;
}

}  // namespace kiva
