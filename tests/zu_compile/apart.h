#pragma once

#include <string>

#include "tarn/model/rules.h"
#include "tests/support/temp_dir.h"

namespace kiva::test {

/// Compiles a text by itself and writes its module `name` to the folder, as NAME.zuc. False when it
/// is refused for a cycle; any other fault fails the test.
bool compile_apart(const TempDir& dir, const std::string& name, const std::string& text,
                   bool finalised = true, const Rules& rules = Rules::sound());

}  // namespace kiva::test
