#include "thermostat.h"
#define false 0
#define true (!false)

const celsius margin = 0.5;
/* global state variables */
int _s_on;
void thermostat_reset_automaton()
{
  _s_on= 0;
}
void thermostat_automaton(int _s_measured, celsius _s_measured_val, int _s_wanted, celsius _s_wanted_val, int* _s_heat, int* _s_display, fahrenheit* _s_display_val)
{
  int _v_measured;
  int _v_heat;
  int _v_display;
  int _s_aim;
  int _v_aim;
  int _s_given;
  int _v_given;
  int _s_default;
  int _v_default;
  int _s_cold;
  int _v_cold;
  int _s_hot;
  int _v_hot;
  int _s_on.next;
  int _v_on.next;
  int _s_showmeasured;
  int _v_showmeasured;
  int _s_showaim;
  int _v_showaim;
  celsius  _s_aim_val = zero_celsius;
  int thermostat_node[40];
   /* outputs computing */
   thermostat_node[1]= !0;
  _s_aim= thermostat_node[1];
  _v_aim= !thermostat_node[1];
  thermostat_node[4]= _s_wanted;
  thermostat_node[39]= _s_measured && thermostat_node[1] || !_s_measured && thermostat_node[4];
  *_s_display= thermostat_node[39];
  _v_display= !thermostat_node[39];
  _s_given= _s_wanted;
   if (_s_given) 
      {
          if (_s_aim) 
            {
               _s_aim_val = lower_of(_s_wanted_val, ceiling);
            }
         else
            {
               _s_aim_val = zero_celsius;
            }
         }
  _v_given= !thermostat_node[4];
  _s_default= !thermostat_node[4];
   if (_s_default) 
      {
          if (_s_aim) 
            {
               _s_aim_val = factory_setting();
            }
         else
            {
               _s_aim_val = zero_celsius;
            }
         }
  _v_default= _s_wanted;
  _s_cold = _s_measured_val < _s_aim_val +  -margin;
  _v_cold = _s_measured_val < _s_aim_val +  -margin;
  _s_hot = _s_measured_val > _s_aim_val + margin;
  _v_hot = _s_measured_val > _s_aim_val + margin;
  _s_showmeasured= _s_measured;
  thermostat_node[2]= _s_measured;
  _v_showmeasured= !thermostat_node[2];
  thermostat_node[38]= _s_measured && thermostat_node[1] || !_s_measured && !thermostat_node[4];
  _s_showaim= !thermostat_node[38];
  _v_showaim= thermostat_node[38];
  thermostat_node[20]= _s_on;
  thermostat_node[35]= _s_hot && thermostat_node[1] || !_s_hot && !thermostat_node[20];
  thermostat_node[37]= _s_cold && thermostat_node[1] || !_s_cold && !thermostat_node[35];
  *_s_heat= thermostat_node[37];
  _v_heat= !thermostat_node[37];
  _s_on.next= thermostat_node[37];
  _v_on.next= !thermostat_node[37];
    if (*_s_display)
      {
        if (_s_showaim) {*_s_display_val = to_fahrenheit(_s_aim_val);}
        else  if (_s_showmeasured) {*_s_display_val = to_fahrenheit(_s_measured_val);}
        else { *_s_display_val = zero_fahrenheit;}
      }
  /* refresh registers */
  _s_on= _s_on.next;
}
