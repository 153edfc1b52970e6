#pragma once

namespace kiva::console {

/// Serves a debugger over standard input and output (Debug Adapter Protocol): an instant is a step,
/// forth and back; what the source's statements do in it are the frames. Gives the exit status.
int serve_debugger();

}  // namespace kiva::console
