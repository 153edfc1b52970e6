#ifndef open_H
#define open_H
#include "C_data_user_open.h"

extern void open_reset_automaton();
extern void open_automaton(int _s_I, int  _v_I, int* _s_O, int* _v_O);
#endif
