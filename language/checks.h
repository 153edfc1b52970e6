#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "tarn/session/diagnostic.h"

namespace kiva::language {

using Tell = std::function<void(const std::vector<Diagnostic>&)>;

/// What the compiler says of a source text by the sound rules: `tell` gets what reading finds, and
/// then, where no error is among that, what compiling adds; a cycle that takes long to judge is a
/// warning meanwhile. `texts` are the open ones, by path, the
/// one of `path` among them; other source files of its folder may hold modules that it runs. What
/// `guard` throws, now and then in long compilations, comes out.
void check_text(const std::string& path, const std::map<std::string, std::string>& texts,
                const std::function<void()>& guard, const Tell& tell);

}  // namespace kiva::language
