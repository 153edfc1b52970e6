#pragma once

#include <random>
#include <string>

namespace kiva::test {

/// The text of a compiled module of random equations: a few inputs (one of them valued), outputs,
/// locals and registers; functions of up to nine variables; dates that put each equation behind
/// those it reads, unless `wrong_dates`, and then at random, negative ones included. Some rails are
/// defined by nothing, unless all are to be `defined`.
std::string random_module(std::mt19937& random, bool wrong_dates = false, bool defined = false);

}  // namespace kiva::test
