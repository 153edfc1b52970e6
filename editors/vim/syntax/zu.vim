" Vim syntax of ZU source text.
if exists("b:current_syntax")
  finish
endif
syntax case match
syntax match zuComment ";;.*$" contains=@Spell
syntax keyword zuStatement nothing halt pause emit noemit wait sustain until present else if loop
syntax keyword zuStatement repeat weak strong abort when run automaton final other
syntax keyword zuOperator and or not xor nor nand abs
syntax keyword zuConstant TT FF
syntax match zuStructure "\<\(module\|end data\|end\)\>"
syntax match zuStructure "\<\(Input\|Output\|Local\|Register\|Run\|Type\|Method\|Constant\|data\):"
syntax match zuStructure "\<\(state\|transition\|geometry\|value\):"
syntax match zuStructure "\<Mealy Machine\>"
syntax match zuArrow "\(\<\(initial\|strong\|weak\|normalterm\)\)\?->"
syntax match zuOperator "||\|>>\|:=\|==\|!=\|[&|~]"
syntax match zuNumber "\<[0-9]\+\(\.[0-9]*\)\?\>"
syntax region zuString start=+"+ end=+"+
highlight default link zuComment Comment
highlight default link zuStatement Statement
highlight default link zuOperator Operator
highlight default link zuConstant Constant
highlight default link zuStructure Structure
highlight default link zuArrow Special
highlight default link zuNumber Number
highlight default link zuString String
let b:current_syntax = "zu"
