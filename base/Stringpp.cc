// Text as the system's names know it. Positions count from 0; a place outside the text is cut to
// it, never an error.

#include "base/Stringpp.h"

#include <algorithm>
#include <filesystem>
#include <iostream>

namespace kiva {

namespace {

bool is_ascii_letter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}
bool is_digit(char c) {
  return c >= '0' && c <= '9';
}

/// All characters between the first and the last.
bool inner_name_characters(const std::string& s) {
  return s.size() < 3 || std::all_of(s.begin() + 1, s.end() - 1, [](char c) {
           return is_ascii_letter(c) || is_digit(c) || c == '_';
         });
}

/// Replaces each t of s, left to right, for which accept(position) holds.
template <class Accept>
std::string replace_where(const std::string& s, const std::string& t,
                          const std::string& replacement, Accept accept) {
  if (t.empty()) return s;
  std::string result;
  std::size_t done = 0;
  for (std::size_t at = s.find(t); at != std::string::npos;) {
    if (accept(at)) {
      result.append(s, done, at - done).append(replacement);
      done = at + t.size();
      at = s.find(t, done);
    } else {
      at = s.find(t, at + 1);
    }
  }
  return result.append(s, done);
}

/// Gives the text before position `at` and puts what follows that character into rest.
std::string cut(const std::string& s, std::size_t at, std::string& rest) {
  std::string head = s.substr(0, at);
  rest = at == std::string::npos ? std::string() : s.substr(at + 1);
  return head;
}

}  // namespace

bool check_ISO_8859_1_alphabetical_letter(char c) {
  const int code = static_cast<unsigned char>(c);
  return is_ascii_letter(c) || code == 181 || (code >= 192 && code <= 214) ||
         (code >= 217 && code <= 246) || (code >= 249 && code <= 253) || code == 255;
}

bool est_lc(char c) {
  return is_digit(c) || is_ascii_letter(c) || c == '_' || c == '@';
}

bool checkvarname(const std::string& s) {
  return !s.empty() && is_ascii_letter(s.front()) && checkvarname_with_pre_underscore(s);
}

bool checkvarname_with_pre_underscore(const std::string& s) {
  return !s.empty() && (is_ascii_letter(s.front()) || s.front() == '_') &&
         (is_ascii_letter(s.back()) || is_digit(s.back())) && inner_name_characters(s);
}

std::string my_at(const std::string& s, long from, long to) {
  from = std::max(from, 0l);
  to = std::min(to, static_cast<long>(s.size()));
  return from < to ? s.substr(from, to - from) : std::string();
}

std::string my_after(const std::string& s, long from) {
  return my_at(s, from, static_cast<long>(s.size()));
}

std::string my_before(const std::string& s, long to) {
  return my_at(s, 0, to);
}

long find(const std::string& s, const std::string& t) {
  const std::size_t at = s.find(t);
  return at == std::string::npos ? -1 : static_cast<long>(at);
}

bool contains(const std::string& s, const std::string& t) {
  return find(s, t) >= 0;
}

bool contains_token(const std::string& s, const std::string& t) {
  if (t.empty()) return false;
  for (std::size_t at = s.find(t); at != std::string::npos; at = s.find(t, at + 1)) {
    const std::size_t end = at + t.size();
    if (end == s.size()) return true;
    if (!est_lc(s[end]) && !check_ISO_8859_1_alphabetical_letter(s[end])) return true;
  }
  return false;
}

long char_occurences(const std::string& s, char c) {
  return std::count(s.begin(), s.end(), c);
}

std::string upcase(std::string s) {
  for (char& c : s) {
    if (c >= 'a' && c <= 'z') c -= 'a' - 'A';
  }
  return s;
}

std::string downcase(std::string s) {
  for (char& c : s) {
    if (c >= 'A' && c <= 'Z') c += 'a' - 'A';
  }
  return s;
}

std::string upcase_accent(std::string s) {
  s = upcase(std::move(s));
  for (char& c : s) {
    const int code = static_cast<unsigned char>(c);
    if ((code >= 224 && code <= 246) || (code >= 249 && code <= 253))
      c = static_cast<char>(code - 32);
  }
  return s;
}

std::string cancel_begin_end_spaces(const std::string& s) {
  const std::size_t first = s.find_first_not_of(' ');
  if (first == std::string::npos) return "";
  return s.substr(first, s.find_last_not_of(' ') - first + 1);
}

std::string clever_substitute_space(const std::string& s, char c) {
  return substitute_char(cancel_begin_end_spaces(s), ' ', c);
}

std::string substitute_string(const std::string& s, const std::string& a, const std::string& b) {
  return replace_where(s, a, b, [](std::size_t) { return true; });
}

std::string substitute_char(std::string s, char c, char d) {
  std::replace(s.begin(), s.end(), c, d);
  return s;
}

std::string substitute_char(const std::string& s, char c, const std::string& t) {
  return substitute_string(s, std::string(1, c), t);
}

std::string substitute_token(const std::string& s, const std::string& token,
                             const std::string& replacement) {
  return replace_where(s, token, replacement, [&](std::size_t at) {
    const std::size_t end = at + token.size();
    return (at == 0 || !est_lc(s[at - 1])) && (end == s.size() || !est_lc(s[end]));
  });
}

std::string bdelete(const std::string& s) {
  return s.size() < 3 ? std::string() : s.substr(1, s.size() - 2);
}

std::string latex_String_filter(const std::string& s) {
  return substitute_char(s, '_', "\\_");
}

std::string next_Stringtoken(const std::string& s, char sep, std::string& rest) {
  std::size_t begin = s.find_first_not_of(sep);
  if (begin == std::string::npos) {
    std::string token = s.substr(0, 1);
    rest.clear();
    return token;
  }
  std::size_t end = begin;
  while (end < s.size() && s[end] != sep && est_lc(s[end])) ++end;
  if (end == begin) ++end;
  std::string token = s.substr(begin, end - begin);
  rest = s.substr(end);
  return token;
}

std::string next_record(const std::string& s, char sep, std::string& rest) {
  return cut(s, s.find(sep), rest);
}

std::string next_record(const std::string& s, const char* seps, std::string& rest, char& found) {
  const std::size_t at = s.find_first_of(seps);
  found = at == std::string::npos ? '\0' : s[at];
  return cut(s, at, rest);
}

std::string last_record(const std::string& s, char sep, std::string& rest) {
  return cut(s, s.rfind(sep), rest);
}

std::string supress_filename_extension(const std::string& s) {
  const std::size_t slash = s.rfind('/');
  const std::size_t dot = s.rfind('.');
  if (dot == std::string::npos || (slash != std::string::npos && dot < slash)) return s;
  if (dot > 0 && s[dot - 1] == '.' && dot + 1 < s.size()) return s;
  return s.substr(0, dot);
}

std::string relative_directory_path(const std::string& from, const std::string& to) {
  std::string from_rest = from;
  std::string to_rest = to.empty() ? my_current_directory() : to;
  std::cerr << "demarrage " << from_rest << ' ' << to_rest << '\n';
  if (from_rest == to_rest) {
    std::cerr << "--> .\n";
    return ".";
  }
  while (!from_rest.empty() && !to_rest.empty()) {
    std::string from_next, to_next;
    if (next_record(from_rest, '/', from_next) != next_record(to_rest, '/', to_next)) break;
    from_rest = from_next;
    to_rest = to_next;
  }
  std::cerr << "intermediaire: " << from_rest << ' ' << to_rest << '\n';
  std::string path;
  while (!to_rest.empty()) {
    if (!next_record(to_rest, '/', to_rest).empty()) path += "../";
  }
  path += from_rest;
  if (path.empty()) path = ".";
  std::cerr << "--> " << path << '\n';
  return path;
}

std::string my_current_directory() {
  std::error_code failure;
  return std::filesystem::current_path(failure).string();
}

}  // namespace kiva
