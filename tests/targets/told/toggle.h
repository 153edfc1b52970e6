#ifndef toggle_H
#define toggle_H
#include "C_data_user_toggle.h"

extern void toggle_reset_automaton();
extern void toggle_automaton(int _s_T, int* _s_Q);
#endif
