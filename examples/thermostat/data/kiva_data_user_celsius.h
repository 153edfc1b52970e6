// Temperatures in degrees Celsius, and what the module computes with them.
#ifndef KIVA_DATA_USER_CELSIUS_H
#define KIVA_DATA_USER_CELSIUS_H

#include "number_text.h"

typedef double celsius;

inline bool check_celsius(const std::string& text) {
  return is_number(text);
}
inline celsius string_to_celsius(const std::string& text) {
  return number_of(text);
}
inline std::string celsius_to_string(celsius value) {
  return text_of(value);
}

const celsius ceiling = 25;

inline celsius lower_of(celsius a, celsius b) {
  return a < b ? a : b;
}
inline celsius factory_setting() {
  return 19;
}

#endif
