// Names for a language: its letters, none of its words, none twice in its own sense of equal.

#include "tarn/targets/frame/target_names.h"
#include "tarn/session/diagnostic.h"

#include <algorithm>
#include <cctype>
#include <cstring>
#include <iostream>

namespace kiva {

namespace {

bool is_digit(char c) {
  return c >= '0' && c <= '9';
}
bool is_letter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

}  // namespace

std::string TargetNames::folded(const std::string& name) const {
  std::string key = name;
  if (!shape_->case_matters)
    for (char& c : key) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return key;
}

bool TargetNames::is_keyword(const std::string& name) const {
  const std::string key = folded(name);
  return std::any_of(shape_->keywords.begin(), shape_->keywords.end(),
                     [&](const char* keyword) { return key == keyword; });
}

bool TargetNames::may_stand(char c) const {
  return is_letter(c) || is_digit(c) || c == '_' ||
         (c != '\0' && std::strchr(shape_->more_characters, c) != nullptr);
}

bool TargetNames::may_begin(char c) const {
  if (is_letter(c)) return true;
  if (c == '_') return shape_->may_begin_with_underscore;
  return !is_digit(c) || shape_->may_begin_with_digit;
}

std::string TargetNames::legal(const std::string& name) const {
  std::string text;
  for (char c : name) {
    const char next = may_stand(c) ? c : '_';
    if (next == '_' && text.ends_with('_') && !shape_->may_double_underscore) continue;
    text += next;
  }
  if (!shape_->may_end_with_underscore)
    while (text.ends_with('_')) text.pop_back();
  if (!text.empty() && may_begin(text.front())) return text;
  return (text.empty() || text.starts_with('_') ? "v" : "v_") + text;
}

bool TargetNames::is_taken(const std::string& name) const {
  const std::string key = folded(name);
  const auto is_numbered = [&](const std::string& prefix) {
    return key.size() > prefix.size() && key.starts_with(prefix) &&
           std::all_of(key.begin() + static_cast<std::ptrdiff_t>(prefix.size()), key.end(),
                       is_digit);
  };
  return taken_.contains(key) || std::any_of(numbered_.begin(), numbered_.end(), is_numbered);
}

std::string TargetNames::give(const std::string& wanted, const std::string& what,
                              const std::string& original) {
  if (!check_) return wanted;
  const std::string base = legal(wanted);
  const bool keyword = is_keyword(base);
  std::string stem = base + (base.ends_with('_') ? "" : "_");
  // All numbers behind this one may be taken.
  if (std::find(numbered_.begin(), numbered_.end(), folded(stem)) != numbered_.end()) stem += 'v';
  std::string name = base;
  for (int i = 1; is_keyword(name) || is_taken(name); ++i) name = stem + std::to_string(i);
  taken_.insert(folded(name));
  if (name != wanted && !what.empty())
    tell(what, original, name,
         base != wanted ? "no name there"
         : keyword      ? "a keyword there"
                        : "the name is taken");
  return name;
}

void TargetNames::tell(const std::string& what, const std::string& original,
                       const std::string& name, const char* reason) const {
  if (!tells_) return;
  const std::string text = std::string(shape_->target) + ": " + what + " \"" + original +
                           "\" is written as \"" + name + "\": " + reason;
  remark(Severity::note, text, text);
}

}  // namespace kiva
