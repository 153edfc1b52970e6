#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kiva {

/// Of the candidates, the first that differs least from the name: by letters replaced, left out, put
/// in or exchanged with the next, at most a third of the name's. "" where none is that near, and for
/// long names. Case counts as no difference.
std::string nearest(std::string_view name, const std::vector<std::string>& candidates);

}  // namespace kiva
