#include "tarn/model/source_span.h"

#include <iostream>

#include "forms/forms.h"
#include "tarn/session/session.h"

namespace kiva {

Place place_of(const SourceSpan& span) {
  if (!span.known()) return {};
  return {*span.file, span.first_line, span.first_column, span.last_line, span.last_column};
}

void tell_place(const SourceSpan& span, const std::string& reason) {
  if (!span.known()) return;
  std::cerr << span.text() << ": " << reason << '\n';
  Session::current().told_place = place_of(span);
}

void end_at(const SourceSpan& span, const std::string& told, const std::string& sentence) {
  Diagnostic fault = Diagnostic::of_told(told, Manner::untold, place_of(span));
  fault.sentence = sentence;
  fl_show_Smessages(told);
  tell_place(span, "in this text");
  end_with(std::move(fault));
}

}  // namespace kiva
