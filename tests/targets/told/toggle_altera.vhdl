-- VHDL generation by ORVEL from toggle Zulang compiled code

LIBRARY ieee;
USE ieee.std_logic_1164.all;
entity toggle is
  port(_s_T, reset, clk: in std_logic;
       _s_Q: out std_logic);
end toggle;

architecture toggle_a of toggle is

TYPE array_toggle IS ARRAY (19 downto 0) OF std_logic ;
signal _v_Q : std_logic;
signal _s_R : std_logic;
signal _s_RN : std_logic;
signal _v_RN : std_logic;
signal toggle_node : array_toggle;

begin
-- state and output computation
process (reset,clk)
begin
  if (reset = '0') then 
    _s_Q <= '0';
    _s_R <= '0';
      toggle_node(2) <= '0';
  elsif ( clk'event and clk='1') then 
      toggle_node(2) <= _s_T;
  elsif ( clk'event and clk='0') then 
      _s_Q <= not toggle_node(18);
    _s_R <= _s_RN;
   end if;
end process;

-- actualisation
      toggle_node(6) <= _s_R;
      toggle_node(18) <= _s_T and toggle_node(6) or (not _s_T and not toggle_node(6));
      -- final output evaluation of _s_Q in process
      _v_Q <= toggle_node(18);
      _s_RN <= not toggle_node(18);
      _v_RN <= toggle_node(18);
end toggle_a;

