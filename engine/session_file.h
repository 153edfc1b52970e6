#pragma once

#include <string>
#include <utility>
#include <vector>

#include "base/sock.h"
#include "engine/recording.h"

namespace kiva {

/// Instants that a person has named.
using Marks = std::vector<std::pair<Recording::Position, std::string>>;

/// The recording as JSON: each branch with where it departs and its instants as lines of stimuli,
/// the position that is shown, and the marks.
std::string session_text(Recording& recording, const Marks& marks);

/// Runs what such a text holds, onto a recording at its start. What a server answered is not in the
/// text: it is asked again. Why the text cannot be used, empty if it could; the recording then
/// holds what ran until there.
[[nodiscard]] std::string open_session(const std::string& text, Recording& recording, Sock socket,
                                       Marks& marks);

/// The instants of the branch that is shown, from its start on, as stimuli with what was seen.
std::string stimuli_text(Recording& recording);

}  // namespace kiva
