#include "toggle_sc.h"
#define false 0
#define true (!false)

void toggle_reset_automaton()
{
  _s_R= 0;
}
void toggle_automaton(int _s_T, int* _s_Q)
{
  int _v_Q;
  int _s_RN;
  int _v_RN;
  int toggle_node[19];
  /* outputs computing */
  toggle_node[6]= _s_R;
  toggle_node[18]= _s_T && toggle_node[6] || !_s_T && !toggle_node[6];
  *_s_Q= !toggle_node[18];
  _v_Q= toggle_node[18];
  _s_RN= !toggle_node[18];
  _v_RN= toggle_node[18];
  /* refresh registers */
  _s_R= _s_RN;
}
