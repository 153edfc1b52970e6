#pragma once

namespace kiva::test {

/// What a user writes for the values of the thermostat, in C.
inline constexpr const char* thermostat_types = R"(typedef double celsius;
typedef double fahrenheit;
)";
inline constexpr const char* thermostat_functions = R"(
const celsius zero_celsius = 0, ceiling = 25;
const fahrenheit zero_fahrenheit = 0;
celsius lower_of(celsius a, celsius b) { return a < b ? a : b; }
celsius factory_setting(void) { return 19; }
fahrenheit to_fahrenheit(celsius value) { return value * 9 / 5 + 32; }
)";

}  // namespace kiva::test
