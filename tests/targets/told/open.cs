 using System; 
 using Vanto.Beans; 
 using System.Collections.Generic; 
 using System.Threading; 
using Vanto.Util;

 namespace GenEntree
 {
    [Bean(Category="open")]

     public class open
     {
        private byte zero_byte = 0 ;
        private int zero_int = 0 ;
        private float zero_float = 0;
        private long zero_long = 0;
        private short zero_short = 0;
        private string zero_string ="";
        private bool zero_bool = false;
        // private constants:
        /* global state variables */
        bool  _s_R = true;
        private void open_reset_automaton( bool _s_SETopen, bool _s_RESETopen)
        {
            _s_R= true;
        }
        public void open_automaton(string s)
        {
            bool _s_I  =  false;
            bool _v_I  =  false;
            bool _s_O  =  false;
            bool _v_O  =  false;
            bool _s_R  =  false;
            bool _s_RN  =  false;
            bool _v_RN  =  false;
            bool v_s_SETopen  =  false;
            bool v_s_RTLopen  =  false;
            bool v_v_RTLopen  =  false;
            bool[]  open_node  =  new bool[22];
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
                if(evts[i].nameEvt == "I")
                {
                     _s_I= true;
                }
                else
                {
                   _s_I= false;
                }
            }
   /* outputs computing */
   open_node[6]= _s_R;
    open_node[1]= !false;
   open_node[16]= _s_I && open_node[6] || !_s_I && !open_node[1];
   _s_O= open_node[16];
   _v_O= !open_node[16];
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
            /*-----------------------partie evt/outputs_signals-----------------------------------------*/
           List<MyEvent> outputEvts = new List<MyEvent>(255);   
            MyEvent evtO = new MyEvent( "O", Convert.ToString(_s_O));
            outputEvts.Add(evtO);
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
