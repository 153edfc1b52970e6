#pragma once

#include <string>

#include "tarn/session/diagnostic.h"

namespace kiva {

/// The line of the text at which the place begins, and below it a line with a mark under the place;
/// of a long line what stands around the mark. "" for a place without line.
std::string source_excerpt(const std::string& text, const Place& where);
/// The same of the file that the place names; "" where it cannot be read.
std::string source_excerpt(const Place& where);

}  // namespace kiva
