#pragma once

#include <string>
#include <vector>

namespace kiva {

/// Plain text for an XML or HTML document, attributes included.
std::string xml_text(const std::string& plain);

/// Plain text in UTF-8 for a LaTeX document outside formulas. What its oldest fonts do not have
/// becomes what comes closest, or "?".
std::string latex_text(const std::string& plain);

/// The text cut where its long words may be broken: behind "_", else in the middle.
std::vector<std::string> breakable_pieces(const std::string& plain);

}  // namespace kiva
