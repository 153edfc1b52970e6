#pragma once

#include <iosfwd>
#include <string>

#include "tarn/readers/netlist.h"

namespace kiva {

// Readers of netlists. What is wrong with a text is a NetlistError.

/// One model of .names tables and latches.
Netlist read_blif(std::istream& in);
/// INPUT, OUTPUT, gates and DFF.
Netlist read_gates(std::istream& in);
/// The ASCII or the binary form; a bad state is a further output.
Netlist read_aiger(std::istream& in);

/// The file is one of these, by its ending.
bool is_netlist(const std::string& file);

/// Reads the file, which `is_netlist`; a module without a name of its own is named after the file.
Module* read_netlist(const std::string& file);

}  // namespace kiva
