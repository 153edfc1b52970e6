#pragma once

namespace kiva {

/// A part of a session: whether texts for the library's own callers are written as told, or its
/// sink alone hears of them.
struct ToldTexts {
  bool written = true;
};

}  // namespace kiva
