#ifndef toggle_H
#define toggle_H
/* Following types should be defined in file "toggle_typedecl.h":
;
*/
#include "toggle_typedecl.h"

/* global state variables */
int _s_R;
extern void toggle_reset_automaton();
extern void toggle_automaton(int _s_T, int* _s_Q);
#endif
