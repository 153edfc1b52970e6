#include "tarn/model/sexception.h"

namespace kiva {

std::string LibraryException::text() const {
  std::string text = name();
  text += ':';
  if (!first_.empty()) text += ' ' + first_;
  if (!second_.empty()) text += ' ' + second_;
  return text;
}

}  // namespace kiva
