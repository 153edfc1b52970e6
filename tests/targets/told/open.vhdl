-- VHDL generation by ORVEL from open Zulang compiled code

entity open is
  port( s_SETopen, s_RESETopen,_s_I, _v_I, reset, clk: in bit;
       _s_O, _v_O: out bit);
end open;

architecture open_a of open is

TYPE array_open IS ARRAY (22 downto 0) OF bit ;
signal _s_R : bit;
signal _s_RN : bit;
signal _v_RN : bit;
signal _s_SETopen : bit;
signal _s_RTLopen : bit;
signal _v_RTLopen : bit;
signal open_node : array_open;

begin
-- state and output computation
process (reset,clk)
begin
  if (reset = '0') then 
    _s_O <= '0';
    _v_O <= '0';
    _s_R <= '1';
      open_node(2) <= '0';
      open_node(3) <= '0';
  elsif ( clk'event and clk='1') then 
      open_node(2) <= _s_I;
      open_node(3) <= _v_I;
  elsif ( clk'event and clk='0') then 
      _s_O <= open_node(16);
      _v_O <= not open_node(16);
    _s_R <= _s_RN;
   end if;
end process;

-- actualisation
      open_node(6) <= _s_R;
      open_node(1) <= '1';
      open_node(16) <= _s_I and open_node(6) or (not _s_I and not open_node(1));
      -- final output evaluation of _s_O in process
      -- final output evaluation of _v_O in process
      open_node(10) <= _s_SETopen;
      open_node(18) <= _s_R and open_node(1) or (not _s_R and open_node(10));
      open_node(21) <= _s_I and open_node(10) or (not _s_I and open_node(18));
      _s_RN <= open_node(21);
      _v_RN <= not open_node(21);
      _s_RTLopen <= _s_O;
      open_node(4) <= _s_O;
      _v_RTLopen <= not open_node(4);
end open_a;

