#pragma once

#include <string>

namespace kiva::bench {

/// A module of `registers` registers and `equations` boolean equations in all, as a file: a mix of
/// one- to four-input functions in levels about fifty deep. The same numbers give the same text.
std::string generated_module(long equations, long registers);

/// A module whose equations share one diagram of about `nodes` nodes.
std::string generated_nodes(long nodes);

}  // namespace kiva::bench
