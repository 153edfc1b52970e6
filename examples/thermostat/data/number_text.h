// Numbers as the text that the simulator shows.
#ifndef NUMBER_TEXT_H
#define NUMBER_TEXT_H

#include <cstdlib>
#include <sstream>
#include <string>

/// A number from the first character to the last; blanks may stand in front.
inline bool is_number(const std::string& text) {
  char* end = 0;
  std::strtod(text.c_str(), &end);
  return end != text.c_str() && *end == 0;
}

inline double number_of(const std::string& text) {
  return std::strtod(text.c_str(), 0);
}

inline std::string text_of(double value) {
  std::ostringstream text;
  text << value;
  return text.str();
}

#endif
