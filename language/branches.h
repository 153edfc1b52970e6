#pragma once

#include <cstddef>

#include "language/names.h"

namespace kiva::language {

/// The token behind the statement that begins at a token; `no_statement` where it is not whole.
size_t statement_end(const Names& names, size_t token);
/// The token behind the condition or value that begins there.
size_t condition_end(const Names& names, size_t token);
/// Of a present or if: the token behind its first branch; `no_statement` for none.
size_t branch_end(const Names& names, size_t token);
/// The bracket that closes the one at the token; `no_statement` for none.
size_t closing(const Names& names, size_t token);

constexpr size_t no_statement = static_cast<size_t>(-1);

}  // namespace kiva::language
