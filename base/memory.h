#pragma once

namespace kiva {

/// Resident memory of the process in bytes; 0 where the system does not tell.
long used_mem();
/// Growth of used_mem() since the last call of this function.
long diff_used_mem();

}  // namespace kiva
