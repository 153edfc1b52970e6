#include "programs/tarn/windows.h"

#ifdef KIVA_WINDOW
#include "forms/fltk/fltk_messages.h"
#endif

namespace kiva::tarn_program {

std::unique_ptr<message_presenter> open_windows() {
#ifdef KIVA_WINDOW
  if (fltk_presenter::open_display()) return std::make_unique<fltk_presenter>();
#endif
  return nullptr;
}

}  // namespace kiva::tarn_program
