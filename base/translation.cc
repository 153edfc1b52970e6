// Sentences are recognised by patterns: texts with holes, %1 for a name or a number and %L1 for a
// part that is translated itself. A hole takes as little as it can, and something; so the first
// place of each piece between holes will do, and a sentence is walked over once a pattern. Of the
// patterns that fit, the one with most text of its own is meant, so that the order of the file does
// not matter. What frames a whole sentence (the context "frames") is taken off first; what stands
// for a part alone (the context "parts") is not looked for elsewhere.

#include "base/translation.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <optional>
#include <vector>

#include "base/translation_texts.h"

namespace kiva {

namespace {

struct Hole {
  size_t number;
  bool translated;
};

using Fillings = std::vector<std::string_view>;  ///< of holes, by their place

/// Text around holes: one piece more than holes.
struct Pattern {
  std::vector<std::string> pieces{""};
  std::vector<Hole> holes;

  explicit Pattern(const std::string& text) {
    for (size_t at = 0; at < text.size(); ++at) {
      const size_t digit = at + (text[at] == '%' && text.substr(at + 1, 1) == "L" ? 2 : 1);
      if (text[at] != '%' || digit >= text.size() || text[digit] < '1' || text[digit] > '9') {
        pieces.back() += text[at];
        continue;
      }
      holes.push_back({static_cast<size_t>(text[digit] - '1'), digit == at + 2});
      pieces.emplace_back();
      at = digit;
    }
  }

  size_t weight() const {
    size_t length = 0;
    for (const std::string& piece : pieces) length += piece.size();
    return length;
  }

  /// Nothing where the text does not fit.
  std::optional<Fillings> fit(std::string_view text) const {
    Fillings fillings;
    if (!text.starts_with(pieces.front())) return {};
    text.remove_prefix(pieces.front().size());
    if (holes.empty()) return text.empty() ? std::optional(fillings) : std::nullopt;
    for (size_t hole = 0; hole + 1 < holes.size(); ++hole) {
      const size_t end = text.find(pieces[hole + 1], 1);
      if (end == std::string_view::npos) return {};
      fillings.push_back(text.substr(0, end));
      text.remove_prefix(end + pieces[hole + 1].size());
    }
    if (text.size() <= pieces.back().size() || !text.ends_with(pieces.back())) return {};
    fillings.push_back(text.substr(0, text.size() - pieces.back().size()));
    return fillings;
  }
};

enum Context { frames, sentences, parts };

struct Entry {
  Pattern english, other;
  Context context;
};

std::string plain(std::string_view xml) {
  static constexpr std::array<std::pair<std::string_view, char>, 5> entities{
      {{"&quot;", '"'}, {"&apos;", '\''}, {"&lt;", '<'}, {"&gt;", '>'}, {"&amp;", '&'}}};
  std::string text;
  while (!xml.empty()) {
    const auto* const entity = std::find_if(
        entities.begin(), entities.end(), [&](const auto& e) { return xml.starts_with(e.first); });
    text += entity == entities.end() ? xml.front() : entity->second;
    xml.remove_prefix(entity == entities.end() ? 1 : entity->first.size());
  }
  return text;
}

/// Takes what stands before the next such element away, and gives its text.
std::optional<std::string_view> element(std::string_view& xml, const std::string& name) {
  const std::string head = '<' + name + '>';
  const size_t begin = xml.find(head);
  const size_t end = xml.find("</" + name + '>', begin);
  if (begin == std::string_view::npos || end == std::string_view::npos) return {};
  const std::string_view text = xml.substr(begin + head.size(), end - begin - head.size());
  xml.remove_prefix(end);
  return text;
}

class Texts : public PhraseBook {
 public:
  explicit Texts(std::string_view xml) {
    while (std::optional<std::string_view> context = element(xml, "context")) {
      const std::string name = plain(element(*context, "name").value_or(""));
      const Context kind = name == "frames" ? frames : name == "parts" ? parts : sentences;
      while (std::optional<std::string_view> message = element(*context, "message")) {
        const std::string english = plain(element(*message, "source").value_or(""));
        // One that is not finished has an attribute, and stays English.
        if (const auto other = element(*message, "translation"); other && !other->empty())
          entries_.push_back({Pattern(english), Pattern(plain(*other)), kind});
      }
    }
    std::stable_sort(entries_.begin(), entries_.end(), [](const Entry& a, const Entry& b) {
      if ((a.context == frames) != (b.context == frames)) return a.context == frames;
      return a.english.weight() > b.english.weight();
    });
  }

  std::string sentence(const std::string& english) const override {
    return in_language(english, false, 0);
  }
  bool knows(const std::string& english) const override { return known(english, 0); }

 private:
  /// The entry that the text fits, and what fills its holes; null for none.
  std::pair<const Entry*, Fillings> found(std::string_view english, bool part) const {
    for (const Entry& entry : entries_) {
      if (entry.context == parts && !part) continue;
      if (auto fillings = entry.english.fit(english)) return {&entry, *fillings};
    }
    return {};
  }

  std::string in_language(std::string_view english, bool part, int depth) const {
    const auto [entry, fillings] = found(english, part);
    if (entry == nullptr || depth > most_parts) return std::string(english);
    std::array<std::string, 9> by_number;
    for (size_t at = 0; at < fillings.size(); ++at) {
      const Hole& hole = entry->english.holes[at];
      by_number[hole.number] =
          hole.translated ? in_language(fillings[at], true, depth + 1) : std::string(fillings[at]);
    }
    std::string text = entry->other.pieces.front();
    for (size_t at = 0; at < entry->other.holes.size(); ++at)
      text += by_number[entry->other.holes[at].number] + entry->other.pieces[at + 1];
    return text;
  }

  /// What a frame holds must be known, too; a part of a sentence may be a name.
  bool known(std::string_view english, int depth) const {
    const auto [entry, fillings] = found(english, depth > 0);
    if (entry == nullptr || depth > most_parts) return false;
    for (size_t at = 0; at < fillings.size(); ++at)
      if (entry->context == frames && entry->english.holes[at].translated &&
          !known(fillings[at], depth + 1))
        return false;
    return true;
  }

  static constexpr int most_parts = 8;
  std::vector<Entry> entries_;  ///< frames first, and what has most text first
};

/// "fr" of "fr_FR.UTF-8@euro".
std::string language_part(const std::string& locale) {
  return locale.substr(0, locale.find_first_of("_.@"));
}

bool is_utf8(const std::string& locale) {
  const size_t dot = locale.find('.');
  if (dot == std::string::npos) return true;
  std::string codeset;
  for (char c : locale.substr(dot + 1, locale.find('@') - dot - 1))
    if (c != '-') codeset += static_cast<char>(c | 0x20);
  return codeset == "utf8";
}

}  // namespace

std::unique_ptr<PhraseBook> PhraseBook::of(const std::string& language) {
  for (const TranslationText& file : translation_texts())
    if (file.language == language) return std::make_unique<Texts>(file.text);
  return nullptr;
}

std::string language_of(const char* (*variable)(const char* name)) {
  const auto text = [&](const char* name) {
    const char* value = variable(name);
    return std::string(value == nullptr ? "" : value);
  };
  std::string locale;
  for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"})
    if (locale.empty()) locale = text(name);
  std::string language = language_part(locale);
  if (language.empty() || language == "C" || language == "POSIX" || !is_utf8(locale)) return "";
  // The first language of the list that there is; where there is none, that of the locale.
  std::string list = text("LANGUAGE");
  while (!list.empty()) {
    const std::string first = language_part(list.substr(0, list.find(':')));
    const auto texts = translation_texts();
    if (first == "en" || first == "C" || first == "POSIX") return "";
    if (std::any_of(texts.begin(), texts.end(), [&](const auto& t) { return t.language == first; }))
      return first;
    list.erase(0, list.find(':') == std::string::npos ? list.size() : list.find(':') + 1);
  }
  return language == "en" ? "" : language;
}

std::string translated(const std::string& english) {
  static const std::unique_ptr<PhraseBook> translation = PhraseBook::of(
      language_of([](const char* name) -> const char* { return std::getenv(name); }));
  return translation == nullptr ? english : translation->sentence(english);
}

std::string translated_lines(std::string_view english) {
  std::string text;
  while (!english.empty()) {
    const size_t begin = std::min(english.find_first_not_of("# "), english.size());
    const size_t end = std::min(english.find('\n', begin), english.size());
    text += english.substr(0, begin);
    text += translated(std::string(english.substr(begin, end - begin)));
    if (end < english.size()) text += '\n';
    english.remove_prefix(std::min(end + 1, english.size()));
  }
  return text;
}

}  // namespace kiva
