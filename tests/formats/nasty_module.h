#pragma once

#include <string>

namespace kiva::test {

/// A module whose names are keywords, no names, or meet each other in one target or another.
inline const std::string nasty_module = R"(module: Entity  0 1
input: and clk Reset a A new c__d_ linux ;
output: register Architecture Entity_node clk_1 ;
local: this O o.next ;
register:
o.next O 1;
connexion: SETx RESETx RTLx;

equation_def:
11
0: -1:-3:-3,1
1: 2:0:0,-1          // clk
2: 0:1:1,-1          // and, clk are equal
3: 8:0:0,-1          // A
4: 6:3:3,-1          // a, A are equal
5: 12:0:0,-1         // c__d_
6: 10:5:5,-1         // new, c__d_ are equal
7: 14:0:0,-1         // linux
8: 4:7:7,-1          // Reset, linux are equal
9: 26:0:0,-1         // O
10: 24:0:0,-1        // this
expressions:
1 0 16:2,-1,(0 2 )
1 0 17:2,1,(0 2 )
2 0 18:10,1,(24 )
2 0 19:10,-1,(24 )
1 0 20:6,-1,(10 12 )
1 0 21:6,1,(10 12 )
1 0 22:9,1,(26 )
1 0 23:9,-1,(26 )
1 0 24:4,-1,(6 8 )
1 0 25:4,1,(6 8 )
1 0 28:8,-1,(4 14 )
1 0 29:8,1,(4 14 )
end:
)";

/// Each input is present alone once.
inline const std::string nasty_stimuli =
    "and\nclk\nReset\na\nA\nnew\nc__d_\nlinux\na A new\n and clk linux Reset\n";

}  // namespace kiva::test
