#pragma once

namespace kiva {

/// Reads the modules of a source file, or of the open text in its place (OpenTexts), into the
/// session's table. A file that cannot be opened, a
/// syntax error and some faults end the work with a message; others come out as exceptions of the
/// library, which know where in the file they arose. The tables keep what had been read before.
void read_zu_file(const char* file);

}  // namespace kiva
