#pragma once

#include <list>
#include <ostream>
#include <string>

namespace kiva::tarn_program {

/// The names that a shell can complete, one a line: of the modules of source files, and of the
/// inputs, outputs, locals and registers of compiled ones. Of a file that cannot be used, nothing.
void put_names(const std::list<std::string>& files, std::ostream& out);

}  // namespace kiva::tarn_program
