#pragma once

#include <string>

#include "engine/drawing/layout.h"

namespace kiva {

/// The colours of a picture, as "#rrggbb".
struct DiagramColours {
  const char* paper = "#ffffff";
  const char* ink = "#1c2330";
  const char* quiet = "#5a6372";
  const char* here = "#cfe0ff";  ///< behind the state that is here
  const char* fired = "#1f5fd0";
};

/// The picture as SVG. With a light: the state of the instant filled and bold, the next one with a
/// thick edge, what fired thick and coloured, triggers that hold underlined.
std::string svg_text(const Diagram& diagram, const DiagramLayout& layout,
                     const DiagramLight* light = nullptr, const DiagramColours& colours = {});

}  // namespace kiva
