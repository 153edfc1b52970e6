#include "SIMULATOR_ZUC/scope/scope_look.h"

namespace kiva {

namespace {
bool dark_in_use = false;
bool safe_in_use = false;

ScopeLook safe(ScopeLook look, bool dark) {
  look.one = dark ? QColor(0x56, 0xb4, 0xe9) : QColor(0x00, 0x5a, 0x8f);
  look.one_fill = dark ? QColor(0x1d, 0x3f, 0x52) : QColor(0xd3, 0xe8, 0xf4);
  look.accent = dark ? QColor(0xe6, 0x9f, 0x00) : QColor(0x9a, 0x62, 0x00);
  look.top = dark ? QColor(0xf0, 0xe4, 0x42) : QColor(0x8a, 0x4f, 0x7d);
  look.unknown = dark ? QColor(0xcc, 0x79, 0xa7) : QColor(0x99, 0x3d, 0x6f);
  return look;
}
}  // namespace

const ScopeLook& ScopeLook::light() {
  static const ScopeLook look{QColor(0xf6, 0xf7, 0xf9), QColor(0xff, 0xff, 0xff),
                              QColor(0xe3, 0xe6, 0xeb), QColor(0x16, 0x1b, 0x26),
                              QColor(0x5c, 0x66, 0x78), QColor(0xb4, 0x5c, 0x0c),
                              QColor(0x1f, 0x5f, 0xd8), QColor(0xdb, 0xe7, 0xfb),
                              QColor(0x1c, 0x7c, 0x3c), QColor(0xb3, 0x26, 0x1e)};
  return look;
}

const ScopeLook& ScopeLook::dark() {
  static const ScopeLook look{QColor(0x14, 0x17, 0x1c), QColor(0x1c, 0x20, 0x27),
                              QColor(0x33, 0x3a, 0x45), QColor(0xec, 0xef, 0xf4),
                              QColor(0xa9, 0xb3, 0xc2), QColor(0xf0, 0x9a, 0x45),
                              QColor(0x6e, 0xa8, 0xff), QColor(0x22, 0x3b, 0x63),
                              QColor(0x6f, 0xd8, 0x8f), QColor(0xff, 0x8a, 0x80)};
  return look;
}

const ScopeLook& ScopeLook::current() {
  static const ScopeLook safe_light = safe(light(), false), safe_dark = safe(dark(), true);
  if (safe_in_use) return dark_in_use ? safe_dark : safe_light;
  return dark_in_use ? dark() : light();
}

void ScopeLook::use_dark(bool dark) {
  dark_in_use = dark;
}

void ScopeLook::use_safe_colours(bool safe) {
  safe_in_use = safe;
}

}  // namespace kiva
