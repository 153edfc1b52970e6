#include "tarn/model/source_span.h"

#include <iostream>
#include <utility>

#include "tarn/session/session.h"

namespace kiva {

namespace {

struct ToldPlace {
  SourceSpan span;
};

SourceSpan& told_place() {
  return Session::current().part<ToldPlace>().span;
}

}  // namespace

void tell_place(const SourceSpan& span, const std::string& reason) {
  if (!span.known()) return;
  std::cerr << span.text() << ": " << reason << '\n';
  told_place() = span;
}

SourceSpan take_told_place() {
  return std::exchange(told_place(), SourceSpan());
}

}  // namespace kiva
