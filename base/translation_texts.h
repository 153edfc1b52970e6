#pragma once

#include <span>
#include <string_view>

namespace kiva {

/// A file of translations, as it stands in the source.
struct TranslationText {
  std::string_view language;  ///< "fr"
  std::string_view text;
};
std::span<const TranslationText> translation_texts();

}  // namespace kiva
