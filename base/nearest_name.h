#pragma once

#include <string>
#include <vector>

namespace kiva {

/// The name that a person may have meant: of those at most a third of whose letters must be added,
/// dropped, changed or swapped with their neighbour, the one with the fewest (Damerau's distance,
/// in its restricted form); the first of equals. Empty where none is so near, and for a
/// text of more than 100 letters.
std::string nearest_name(const std::string& written, const std::vector<std::string>& names);

}  // namespace kiva
