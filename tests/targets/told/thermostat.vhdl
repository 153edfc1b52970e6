-- VHDL generation by ORVEL from thermostat Zulang compiled code

entity thermostat is
  port(_s_measured, _s_wanted, reset, clk: in bit;
       _s_heat, _s_display: out bit);
end thermostat;

architecture thermostat_a of thermostat is

TYPE array_thermostat IS ARRAY (40 downto 0) OF bit ;
signal _v_measured : bit;
signal _v_heat : bit;
signal _v_display : bit;
signal _s_aim : bit;
signal _v_aim : bit;
signal _s_given : bit;
signal _v_given : bit;
signal _s_default : bit;
signal _v_default : bit;
signal _s_cold : bit;
signal _v_cold : bit;
signal _s_hot : bit;
signal _v_hot : bit;
signal _s_on : bit;
signal _s_on.next : bit;
signal _v_on.next : bit;
signal _s_showmeasured : bit;
signal _v_showmeasured : bit;
signal _s_showaim : bit;
signal _v_showaim : bit;
signal thermostat_node : array_thermostat;

begin
-- state and output computation
process (reset,clk)
begin
  if (reset = '0') then 
    _s_heat <= '0';
    _s_display <= '0';
    _s_on <= '0';
      thermostat_node(2) <= '0';
      thermostat_node(4) <= '0';
  elsif ( clk'event and clk='1') then 
      thermostat_node(2) <= _s_measured;
      thermostat_node(4) <= _s_wanted;
  elsif ( clk'event and clk='0') then 
      _s_heat <= thermostat_node(37);
      _s_display <= thermostat_node(39);
    _s_on <= _s_on.next;
   end if;
end process;

-- actualisation
      thermostat_node(1) <= '1';
      _s_aim <= thermostat_node(1);
      _v_aim <= not thermostat_node(1);
      thermostat_node(39) <= _s_measured and thermostat_node(1) or (not _s_measured and thermostat_node(4));
      -- final output evaluation of _s_display in process
      _v_display <= not thermostat_node(39);
      _s_given <= _s_wanted;
      _v_given <= not thermostat_node(4);
      _s_default <= not thermostat_node(4);
      _v_default <= _s_wanted;
      _s_showmeasured <= _s_measured;
      _v_showmeasured <= not thermostat_node(2);
      thermostat_node(38) <= _s_measured and thermostat_node(1) or (not _s_measured and not thermostat_node(4));
      _s_showaim <= not thermostat_node(38);
      _v_showaim <= thermostat_node(38);
      thermostat_node(20) <= _s_on;
      thermostat_node(35) <= _s_hot and thermostat_node(1) or (not _s_hot and not thermostat_node(20));
      thermostat_node(37) <= _s_cold and thermostat_node(1) or (not _s_cold and not thermostat_node(35));
      -- final output evaluation of _s_heat in process
      _v_heat <= not thermostat_node(37);
      _s_on.next <= thermostat_node(37);
      _v_on.next <= not thermostat_node(37);
end thermostat_a;

