#ifndef thermostat_H
#define thermostat_H
#include "C_data_user_thermostat.h"

extern const celsius zero_celsius;
extern const fahrenheit zero_fahrenheit;
extern celsius lower_of(celsius, celsius);
extern celsius factory_setting();
extern fahrenheit to_fahrenheit(celsius);
extern const celsius ceiling;
extern void thermostat_reset_automaton();
extern void thermostat_automaton(int _s_measured, celsius _s_measured_val, int  _s_wanted, celsius _s_wanted_val, int* _s_heat, int* _s_display, fahrenheit* _s_display_val);
#endif
