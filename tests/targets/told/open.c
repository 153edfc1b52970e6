#include "open.h"
#define false 0
#define true (!false)

/* global state variables */
int _s_R;
void open_reset_automaton()
{
  _s_R= 1;
}
void open_automaton(int _s_I, int _v_I, int* _s_O, int* _v_O)
{
  int _s_RN;
  int _v_RN;
  int _s_SETopen;
  int _s_RTLopen;
  int _v_RTLopen;
  int open_node[22];
   /* outputs computing */
  open_node[6]= _s_R;
   open_node[1]= !0;
  open_node[16]= _s_I && open_node[6] || !_s_I && !open_node[1];
  *_s_O= open_node[16];
  *_v_O= !open_node[16];
  open_node[10]= _s_SETopen;
  open_node[18]= _s_R && open_node[1] || !_s_R && open_node[10];
  open_node[21]= _s_I && open_node[10] || !_s_I && open_node[18];
  _s_RN= open_node[21];
  _v_RN= !open_node[21];
  _s_RTLopen= _s_O;
  open_node[4]= _s_O;
  _v_RTLopen= !open_node[4];
  /* refresh registers */
  _s_R= _s_RN;
}
