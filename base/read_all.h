#pragma once

#include <istream>
#include <string>

namespace kiva {

/// All that is left in the stream.
[[nodiscard]] std::string read_all(std::istream& in);

}  // namespace kiva
