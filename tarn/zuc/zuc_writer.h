#pragma once

#include <iosfwd>

namespace kiva {

class Module;

// The text of a compiled module.

/// Writes it. `forget_locals` writes "V" and a number for the name of a local. A signal without
/// reference ends the process; IllegalOperationException for a constant whose value is no literal.
/// An expression keeps the line it got: once in a process.
void write_zuc(Module* module, std::ostream& os, bool forget_locals);
/// The bindings and their evaluation table; `map` gives the file's number of each variable.
void write_zuc_bindings(Module* module, std::ostream& os, long* map);
/// Writes OutputDir, "/", the file: OutputFile or the module's name, with ".zuc".
void save_zuc(Module* module);

}  // namespace kiva
