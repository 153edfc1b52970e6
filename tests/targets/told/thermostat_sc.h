#ifndef thermostat_H
#define thermostat_H
/* Following types should be defined in file "thermostat_typedecl.h":
celsius, fahrenheit;
*/
#include "thermostat_typedecl.h"

extern const celsius zero_celsius;
extern const fahrenheit zero_fahrenheit;
extern celsius lower_of(celsius, celsius);
extern celsius factory_setting();
extern fahrenheit to_fahrenheit(celsius);
extern const celsius ceiling;
/* global state variables */
int _s_on;
extern void thermostat_reset_automaton();
extern void thermostat_automaton(int _s_measured, celsius _s_measured_val, int  _s_wanted, celsius _s_wanted_val, int* _s_heat, int* _s_display, fahrenheit* _s_display_val);
#endif
