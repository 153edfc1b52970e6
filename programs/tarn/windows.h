#pragma once

#include <memory>

#include "forms/forms.h"

namespace kiva::tarn_program {

/// The windows of messages; null where no display can be opened, or where the program was built
/// without windows.
std::unique_ptr<message_presenter> open_windows();

}  // namespace kiva::tarn_program
