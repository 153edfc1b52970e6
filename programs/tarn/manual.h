#pragma once

#include "programs/command_pages.h"

namespace kiva::tarn_program {

/// What the manual says beyond the options.
const programs::CommandNotes& manual_notes();

}  // namespace kiva::tarn_program
