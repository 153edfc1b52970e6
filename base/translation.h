#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace kiva {

/// What a person is told, in another language than English: the texts of
/// translations/programs_*.ts.
///
/// Sentences are made, compared and kept in English; where one is printed, it is recognised by the
/// pattern that it fits, and the pattern's translation gets its names and numbers.
class PhraseBook {
 public:
  virtual ~PhraseBook() = default;

  /// The sentence in that language; as it is, where no pattern fits.
  virtual std::string sentence(const std::string& english) const = 0;
  /// Whether a pattern fits.
  virtual bool knows(const std::string& english) const = 0;

  /// Null for English and for what has no texts. `language` is "fr", say.
  static std::unique_ptr<PhraseBook> of(const std::string& language);
};

/// "fr" for LANG=fr_FR.UTF-8; "" for English, for what is no UTF-8, and where nothing is set.
/// `variable` gives a variable of the environment, or null.
std::string language_of(const char* (*variable)(const char* name));

/// The sentence in the language that the environment asks for: LC_ALL, LC_MESSAGES or LANG, and the
/// list LANGUAGE.
std::string translated(const std::string& english);
/// The same of each line by itself; blanks and "# " in front stay.
std::string translated_lines(std::string_view english);

}  // namespace kiva
