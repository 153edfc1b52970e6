#pragma once

#include <string>

namespace kiva {

/// `capacity` (at least 1) doubled until it holds `count` variables. Ends the process with a report
/// in the name of `who` where a capacity above 536,870,911 would have to double.
long doubled_capacity(long capacity, long count, const std::string& who);

}  // namespace kiva
