#pragma once

namespace kiva {

/// Called as the compilation of each statement begins, copies included; null (the default) calls
/// nobody. For programs that show how far a long compilation has come.
inline void (*statement_begun)() = nullptr;

}  // namespace kiva
