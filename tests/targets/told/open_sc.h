#ifndef open_H
#define open_H
/* Following types should be defined in file "open_typedecl.h":
;
*/
#include "open_typedecl.h"

/* global state variables */
int _s_R;
extern void open_reset_automaton();
extern void open_automaton(int _s_I, int  _v_I, int* _s_O, int* _v_O);
#endif
