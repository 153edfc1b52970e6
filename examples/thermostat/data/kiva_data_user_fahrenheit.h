// Temperatures in degrees Fahrenheit, for the display.
#ifndef KIVA_DATA_USER_FAHRENHEIT_H
#define KIVA_DATA_USER_FAHRENHEIT_H

#include "kiva_data_user_celsius.h"
#include "number_text.h"

typedef double fahrenheit;

inline bool check_fahrenheit(const std::string& text) {
  return is_number(text);
}
inline fahrenheit string_to_fahrenheit(const std::string& text) {
  return number_of(text);
}
inline std::string fahrenheit_to_string(fahrenheit value) {
  return text_of(value);
}

inline fahrenheit to_fahrenheit(celsius value) {
  return value * 9 / 5 + 32;
}

#endif
