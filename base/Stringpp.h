#pragma once

#include <string>

#include "base/number_text.h"

namespace kiva {

// Text helpers. Strings are plain bytes, positions count from 0; each operation that edits gives a
// new string.

// Characters and names.
/// ASCII letters and the accented ones of ISO 8859-1 (181, 192-214, 217-246, 249-253, 255).
bool check_ISO_8859_1_alphabetical_letter(char c);
/// A character of an identifier: digit, letter, '_' or '@'.
[[nodiscard]] bool est_lc(char c);
/// First a letter, last a letter or digit, between them letters, digits and '_'.
[[nodiscard]] bool checkvarname(const std::string& s);
/// The same, but the first character may be '_'.
[[nodiscard]] bool checkvarname_with_pre_underscore(const std::string& s);

// Parts and tests.
/// The characters from `from` up to, not including, `to`; what lies outside s is left out.
std::string my_at(const std::string& s, long from, long to);
std::string my_after(const std::string& s, long from);
std::string my_before(const std::string& s, long to);
/// Position of the first t in s, or -1.
long find(const std::string& s, const std::string& t);
[[nodiscard]] bool contains(const std::string& s, const std::string& t);
/// t occurs and no identifier character follows it; accented letters count as such.
[[nodiscard]] bool contains_token(const std::string& s, const std::string& t);
long char_occurences(const std::string& s, char c);

// Editing.
std::string upcase(std::string s);
std::string downcase(std::string s);
/// Accented letters of ISO 8859-1 included.
std::string upcase_accent(std::string s);
std::string cancel_begin_end_spaces(const std::string& s);
/// Trims blanks at both ends; each blank left becomes c.
std::string clever_substitute_space(const std::string& s, char c);
std::string substitute_string(const std::string& s, const std::string& a, const std::string& b);
std::string substitute_char(std::string s, char c, char d);
std::string substitute_char(const std::string& s, char c, const std::string& t);
/// Replaces the occurrences that have no identifier character beside them.
std::string substitute_token(const std::string& s, const std::string& token,
                             const std::string& replacement);
/// Without the first and the last character; "" for fewer than three.
std::string bdelete(const std::string& s);
/// Each "_" as "\_".
std::string latex_String_filter(const std::string& s);

// Cutting. `rest` receives what follows; it may be the text itself.
/// Skips `sep`, then takes a run of identifier characters or one other character. A text of
/// nothing but `sep` gives one `sep`.
std::string next_Stringtoken(const std::string& s, char sep, std::string& rest);
/// The text before the first `sep`; all of s when there is none.
std::string next_record(const std::string& s, char sep, std::string& rest);
/// Before the first of several separators; `found` is that separator, or 0.
std::string next_record(const std::string& s, const char* seps, std::string& rest, char& found);
/// The text before the last `sep`.
std::string last_record(const std::string& s, char sep, std::string& rest);

// Paths.
/// Drops the part from the last "." of the file name; not where a dot stands right before it and
/// text follows.
std::string supress_filename_extension(const std::string& s);
/// The way from the directory `to` (the working directory if empty) to `from`; traced on the error
/// stream.
std::string relative_directory_path(const std::string& from, const std::string& to);
std::string my_current_directory();

}  // namespace kiva
