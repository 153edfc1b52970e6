#pragma once

#include <cstdint>

namespace kiva {

struct socket_type;
using Sock = socket_type*;

}  // namespace kiva
