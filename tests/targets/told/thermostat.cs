 using System; 
 using Vanto.Beans; 
 using System.Collections.Generic; 
 using System.Threading; 
using Vanto.Util;

 namespace GenEntree
 {
    [Bean(Category="thermostat")]

     public class thermostat
     {
        private byte zero_byte = 0 ;
        private int zero_int = 0 ;
        private float zero_float = 0;
        private long zero_long = 0;
        private short zero_short = 0;
        private string zero_string ="";
        private bool zero_bool = false;
        // private constants:
private const celsius margin = 0.5;
        /* global state variables */
        bool  _s_on = false;
        private void thermostat_reset_automaton()
        {
            _s_on= false;
        }
        public void thermostat_automaton(string s)
        {
            bool _s_measured  =  false;
            bool _v_measured  =  false;
            bool _s_wanted  =  false;
            bool _s_heat  =  false;
            bool _v_heat  =  false;
            bool _s_display  =  false;
            bool _v_display  =  false;
            bool _s_aim  =  false;
            bool _v_aim  =  false;
            bool _s_given  =  false;
            bool _v_given  =  false;
            bool _s_default  =  false;
            bool _v_default  =  false;
            bool _s_cold  =  false;
            bool _v_cold  =  false;
            bool _s_hot  =  false;
            bool _v_hot  =  false;
            bool _s_on  =  false;
            bool _s_on.next  =  false;
            bool _v_on.next  =  false;
            bool _s_showmeasured  =  false;
            bool _v_showmeasured  =  false;
            bool _s_showaim  =  false;
            bool _v_showaim  =  false;
            celsius  _s_aim_val = zero_celsius;
            celsius _s_measured_val  = zero_celsius;
            celsius _s_wanted_val  = zero_celsius;
            fahrenheit _s_display_val  = zero_fahrenheit;
            bool[]  thermostat_node  =  new bool[40];
/*-----------------------partie evt/input_signals-----------------------------------------*/
            GrammaireA GA = new GrammaireA();
             List<MyEvent> evts =  new List<MyEvent>(255);
            evts= GA.deserialize(s);
            foreach (MyEvent e in evts)
            {
                Logger.Info(e.nameEvt);
            }
            for(int i = 0; i<evts.Count;i++)
           {
                if(evts[i].nameEvt == "measured")
                {
                     _s_measured= true;
                     _s_measured_val = celsius.To(evts[i].evtValeur);
                }
                else
                {
                   _s_measured= false;
                }
                if(evts[i].nameEvt == "wanted")
                {
                     _s_wanted= true;
                     _s_wanted_val = celsius.To(evts[i].evtValeur);
                }
                else
                {
                   _s_wanted= false;
                }
            }
   /* outputs computing */
    thermostat_node[1]= !false;
   _s_aim= thermostat_node[1];
   _v_aim= !thermostat_node[1];
   thermostat_node[4]= _s_wanted;
   thermostat_node[39]= _s_measured && thermostat_node[1] || !_s_measured && thermostat_node[4];
   _s_display= thermostat_node[39];
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
   _s_heat= thermostat_node[37];
   _v_heat= !thermostat_node[37];
   _s_on.next= thermostat_node[37];
   _v_on.next= !thermostat_node[37];
           if (*_s_display)
              {
                   if (_s_showaim) {*_s_display_val = to_fahrenheit(_s_aim_val);}
                  else if (_s_showmeasured) {*_s_display_val = to_fahrenheit(_s_measured_val);}
                else { *_s_display_val = zero_fahrenheit;}
              }
         /* refresh registers */
           _s_on= _s_on.next;
            /*-----------------------partie evt/outputs_signals-----------------------------------------*/
           List<MyEvent> outputEvts = new List<MyEvent>(255);   
            MyEvent evtheat = new MyEvent( "heat", Convert.ToString(_s_heat));
            outputEvts.Add(evtheat);
           MyEvent evtdisplay= new MyEvent( "display","fahrenheit", Convert.ToString(_s_display_val),Convert.ToString(_s_display));
            outputEvts.Add(evtdisplay);
            string format ="";
            format = GA.serialize(outputEvts);
            FiresendEvent(format);
        }
        /*-----------Delegate Methods & Events-------------------*/
        public delegate void StringValueEventHandler(string evt );
        public event StringValueEventHandler SendEventList;
        public void FiresendEvent(string evtFormat)
        {
            if (SendEventList != null)
            {
                SendEventList(evtFormat);
            }
        }
    }
}
