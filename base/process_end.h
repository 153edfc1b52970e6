#pragma once

namespace kiva {

/// Called in place of the exit of the process; must not return.
using process_end_handler = void (*)(int status);

/// The one way in which a process of this system ends on a fatal error: writes nothing, and exits
/// with `status`. A test replaces the exit by a throw.
[[noreturn]] void end_process(int status = 1);

/// Replaces what `end_process` does in this thread; null puts the exit back. Gives the handler that
/// stood before.
process_end_handler set_process_end_handler(process_end_handler handler);

}  // namespace kiva
