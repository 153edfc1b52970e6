#pragma once

#include <string>

namespace kiva {

/// The text for a terminal: control characters, and bytes that are no UTF-8, as \n, \t, \r or \xHH.
std::string printable(const std::string& text);

}  // namespace kiva
