%code requires {
#include "tarn/zu/parse_supl.h"
}

%{
// The grammar of source text. The order of the productions is fixed: others know them by number.
// An action hands what it has read to the reader object, or to the statement that it makes.

#include "tarn/model/expression.h"
#include "tarn/zu/parse_supl.h"
#include "tarn/zu/statements/abort.h"
#include "tarn/zu/statements/emit.h"
#include "tarn/zu/statements/halt.h"
#include "tarn/zu/statements/loop.h"
#include "tarn/zu/statements/nothing.h"
#include "tarn/zu/statements/parallel.h"
#include "tarn/zu/statements/pause.h"
#include "tarn/zu/statements/present.h"
#include "tarn/zu/statements/repeat.h"
#include "tarn/zu/statements/run.h"
#include "tarn/zu/statements/sequence.h"
#include "tarn/zu/statements/sustain.h"
#include "tarn/zu/statements/wait.h"

using kiva::AndExpression;
using kiva::BottomExpression;
using kiva::DataExpr;
using kiva::FalseExpression;
using kiva::NotExpression;
using kiva::NpExpression;
using kiva::OrExpression;
using kiva::Transition;
using kiva::TrueExpression;

// The stack has its full depth from the start: it never moves to the heap, and goes with whatever
// ends the parse.
#define YYINITDEPTH 10000
#define YYMAXDEPTH 10000

// The reader closes what is open before it lets a faulty module end.
#undef yylex
#define yylex(value, span, reader) ((reader).recovering(yyerrstatus != 0), zulex(value, span, reader))

#define YYLLOC_DEFAULT(Current, Rhs, N) \
  (Current) = reader.reduce((Rhs) + ((N) > 0 ? 1 : 0), (Rhs) + (N))
%}

%define api.prefix {zu}
%define api.location.type {kiva::SourceSpan}
%define api.pure full
%define parse.error custom
// What is expected is what really can follow.
%define parse.lac full
%param {kiva::class_zu_parser& reader}
%locations

%union {
  int integer;
  double real;
  std::string* text;
  kiva::Statement* statement;
  kiva::Expression* expression;
  kiva::Signal* signal;
  kiva::DataExpr* data;
  kiva::trigger_class* trigger;
  kiva::Transition* transition;
  kiva::DataExprList* data_list;
  kiva::NameList* names;
  kiva::SignalActions* actions;
  kiva::TransitionList* transitions;
  kiva::EquationList* equations;
  kiva::RenamingEntry* renaming;
  kiva::RenamingList* renamings;
  kiva::GeometryPair* pair;
  kiva::GeometryTriple* triple;
}

%code provides {
int zulex(ZUSTYPE* value, kiva::SourceSpan* span, kiva::class_zu_parser& reader);
}

%code {
namespace {

/// Only of a full stack: what is wrong with a token comes with its context.
void zuerror(kiva::SourceSpan*, kiva::class_zu_parser& reader, const char*) {
  reader.too_deep();
}

}  // namespace
}

// A brace right behind a module's head opens the module, not its first statement: the one conflict
// that no level decides, and that is shifted.
%expect 1

%token END_OF_INPUT 0 "end of input"
%token MODULE END DATA ENDDATA METHOD TYPE CONSTANT INPUT OUTPUT LOCAL RUN_DECL REG_DECL
%token NOTHING HALT PAUSE LOOP REPEAT WHEN WAIT EMIT NOEMIT SUSTAIN UNTIL WEAK STRONG ABORT RUN
%token BACKSLASH
%token AUTOMATON MEALY_MACHINE STATE TRANSITION GEOMETRY INIT FINAL OTHER ARROW STRONGARROW
%token WEAKARROW NORMALTERMARROW VALUE
%token FF TT ASSIGN IDPLUS
%token <integer> INT
%token <real> REAL
%token <text> STRING ID

// An empty list of a head goes behind a list that stands, at its place or not, and behind a fault.
%nonassoc EMPTY
%nonassoc error INPUT OUTPUT LOCAL RUN_DECL
// Statements: ">>" binds tighter than "||", both weaker than every operator; an else goes to the
// nearest present or if.
%left PARALLEL
%left SEQUENCE
%left PRESENT IF
%left ELSE
// Data expressions, and right parts of equations for the last three levels.
%left '+' '-'
%left '*' '/'
%left UNARY_MINUS
%left EQ_EG EQ_NEG EQ_INF EQ_INFE EQ_SUP EQ_SUPE
%left OR NOR XOR
%left AND NAND
%left NOT ABS

%type <text> basic_value type_name constant_name file_name module_name signal_name ident
%type <text> method_name opt_type_decl opt_final state_name
%type <names> ident_list
%type <data> constant_value data_exp data_exp_not_basic const_expr method_call binary_func_call
%type <data> unary_func_call signal_value
%type <data_list> data_exp_list
%type <statement> module_body instruction operator present if_inst loop sustain_until wait emit
%type <statement> noemit abort strongabort nothing pause halt run repeat parallel sequence automaton
%type <statement> mealy_machine opt_run
%type <renamings> opt_renaming renaming_list
%type <renaming> renaming
%type <pair> aut_geometry pair_geometry real_pair trans_geometry
%type <triple> opt_geometry
%type <transitions> transition_def transition_list
%type <transition> transition
%type <integer> tpe
%type <trigger> trigger
%type <actions> action valued_signal_list
%type <expression> quadrival_exp quadrival_term quadrival_factor quadrival_signal right_part
%type <equations> equation_decl_list equation
%type <signal> variable

%%

entry:
    data_part module_list
  | module_list
  ;

data_part:
    DATA type_decl method_decl constant_decl ENDDATA
  ;

type_decl:
    %empty
  | TYPE { reader.make_type_table(); } type_name_list ';'
  ;

type_name_list:
    type_name { reader.add_type(*$1); }
  | type_name_list ',' type_name { reader.add_type(*$3); }
  ;

method_decl:
    %empty
  | METHOD { reader.make_method_table(); } method_decl_list
  ;

method_decl_list:
    method
  | method_decl_list method
  ;

method:
    type_name method_name '(' ident_list ')' ';' { reader.add_method(*$1, *$2, $4); }
  | type_name method_name '(' ')' ';' { reader.add_method(*$1, *$2, nullptr); }
  ;

ident_list:
    ident { $$ = reader.made<kiva::NameList>(); $$->push_back(*$1); }
  | ident_list ',' ident { $$ = $1; $$->push_back(*$3); }
  ;

constant_decl:
    %empty
  | CONSTANT { reader.make_constant_table(); } ne_constant_decl_list
  ;

ne_constant_decl_list:
    constant
  | ne_constant_decl_list constant
  ;

constant:
    type_name constant_name ASSIGN constant_value ';' { reader.add_constant(*$1, *$2, $4); }
  | type_name constant_name ';' { reader.add_constant(*$1, *$2, nullptr); }
  | type_name basic_value ';' { reader.add_literal(*$1, *$2); }
  ;

constant_value:
    %empty { $$ = nullptr; }
  | data_exp_not_basic
  | basic_value { $$ = reader.literal_value(*$1); }
  ;

basic_value:
    INT { $$ = reader.token_text(); }
  | REAL { $$ = reader.token_text(); }
  | STRING
  ;

type_name: ident ;

constant_name: ident ;

module_list:
    program
  | module_list program
  ;

program:
    MODULE module_name ':' { reader.look_at(@2); reader.begin_module(*$2); } corps
  ;

corps:
    module_interface module_body END { reader.finish_module($2); }
  | '{' module_interface module_body '}' { reader.finish_module($3); }
  ;

module_interface:
    input_signal_list output_signal_list local_signal_list run_decl_list
  ;

input_signal_list:
    %empty %prec EMPTY
  | INPUT ne_input_signal_list ';'
  ;

ne_input_signal_list:
    input_signal
  | ne_input_signal_list ',' input_signal
  ;

input_signal: signal_name opt_type_decl { reader.declare_input(*$1, *$2); } ;

output_signal_list:
    %empty %prec EMPTY
  | OUTPUT ne_output_signal_list ';'
  ;

ne_output_signal_list:
    output_signal
  | ne_output_signal_list ',' output_signal
  ;

output_signal: signal_name opt_type_decl { reader.declare_output(*$1, *$2); } ;

local_signal_list:
    %empty %prec EMPTY
  | LOCAL ne_local_signal_list ';'
  ;

ne_local_signal_list:
    local_signal
  | ne_local_signal_list ',' local_signal
  ;

local_signal: signal_name opt_type_decl { reader.declare_local(*$1, *$2); } ;

opt_type_decl:
    %empty { $$ = reader.made<std::string>(); }
  | ':' ident { $$ = $2; }
  ;

run_decl_list:
    %empty %prec EMPTY
  | RUN_DECL ne_run_decl_list ';'
  ;

ne_run_decl_list:
    run_decl
  | ne_run_decl_list ';' run_decl
  ;

run_decl:
    STRING ':' module_name { reader.declare_run(*$1, *$3); }
  | STRING ':' file_name ':' module_name { reader.declare_run(*$1, *$3, *$5); }
  ;

file_name: ident ;

module_name: ident ;

module_body:
    instruction
  | automaton
  | mealy_machine
  | %empty { $$ = kiva::Nothing::read(reader); }
  ;

instruction:
    operator
  | parallel
  | sequence
  | '{' instruction '}' { $$ = $2; }
  ;

operator:
    present
  | if_inst
  | loop
  | sustain_until
  | wait
  | emit
  | noemit
  | abort
  | strongabort
  | nothing
  | pause
  | halt
  | run
  | repeat
  ;

parallel: instruction PARALLEL instruction { $$ = kiva::Pn::read(reader, $1, $3); } ;

sequence: instruction SEQUENCE instruction { $$ = kiva::Sn::read(reader, $1, $3); } ;

pause: PAUSE { $$ = kiva::Pause::read(reader); } ;

nothing: NOTHING { $$ = kiva::Nothing::read(reader); } ;

halt: HALT { $$ = kiva::Halt::read(reader); } ;

present:
    PRESENT quadrival_exp instruction ELSE instruction { $$ = reader.looking(kiva::Present::read(reader, $2, $3, $5), @2); }
  | PRESENT quadrival_exp instruction { $$ = reader.looking(kiva::Present::read(reader, $2, $3, nullptr), @2); }
  ;

if_inst:
    IF data_exp instruction ELSE instruction { $$ = reader.looking(kiva::Present::read(reader, $2, $3, $5), @2); }
  | IF data_exp instruction { $$ = reader.looking(kiva::Present::read(reader, $2, $3, nullptr), @2); }
  ;

loop: LOOP '{' instruction '}' { $$ = kiva::Loop::read(reader, $3); } ;

repeat: REPEAT INT '{' instruction '}' { $$ = kiva::read_repeat(reader, $2, $4); } ;

wait:
    WAIT quadrival_exp { $$ = reader.looking(kiva::Wait::read(reader, $2), @2); }
  | WAIT INT quadrival_exp { $$ = reader.looking(kiva::Wait::read(reader, $2, $3), @3); }
  ;

abort:
    WEAK ABORT '{' instruction '}' WHEN quadrival_exp { $$ = reader.looking(kiva::Abort::read(reader, $4, $7), @7); }
  ;

strongabort:
    STRONG ABORT '{' instruction '}' WHEN quadrival_exp { $$ = reader.looking(kiva::StrongAbort::read(reader, $4, $7), @7); }
  ;

emit: EMIT signal_name { $$ = kiva::Emit::read(reader, *$2, nullptr); } ;

noemit: NOEMIT signal_name { $$ = kiva::NoEmit::read(reader, *$2); } ;

emit: EMIT signal_name '(' data_exp ')' { $$ = kiva::Emit::read(reader, *$2, $4); } ;

sustain_until:
    SUSTAIN signal_name UNTIL quadrival_exp { $$ = reader.looking(kiva::SustainUntil::read(reader, *$2, nullptr, $4), @4); }
  | SUSTAIN signal_name '(' data_exp ')' UNTIL quadrival_exp
      { $$ = reader.looking(kiva::SustainUntil::read(reader, *$2, $4, $7), @7); }
  ;

run: RUN ID opt_renaming { $$ = kiva::Run::read(reader, *$2, $3); } ;

opt_renaming:
    %empty { $$ = nullptr; }
  | '[' renaming_list ']' { $$ = $2; }
  ;

renaming_list:
    renaming { $$ = reader.made<kiva::RenamingList>(); $$->push_back(*$1); }
  | renaming_list ',' renaming { $$ = $1; $$->push_back(*$3); }
  ;

renaming: signal_name BACKSLASH signal_name { $$ = reader.renaming(*$1, *$3); } ;

automaton:
    AUTOMATON { reader.begin_automaton(); } aut_geometry state_list transition_def
      { $$ = kiva::Automaton::read(reader, $3, *$5); }
  ;

aut_geometry: pair_geometry ;

pair_geometry:
    %empty { $$ = nullptr; }
  | GEOMETRY real_pair { $$ = $2; }
  ;

real_pair:
    EQ_INF REAL ',' REAL EQ_SUP { $$ = reader.made<kiva::GeometryPair>($2, $4); }
  | EQ_INF REAL ',' INT EQ_SUP { $$ = reader.made<kiva::GeometryPair>($2, $4); }
  | EQ_INF INT ',' REAL EQ_SUP { $$ = reader.made<kiva::GeometryPair>($2, $4); }
  | EQ_INF INT ',' INT EQ_SUP { $$ = reader.made<kiva::GeometryPair>($2, $4); }
  ;

state_list:
    state
  | state_list state
  ;

state:
    STATE ID opt_final opt_run action opt_geometry ';'
      { reader.state(*$2, $3 != nullptr, $4, $5, $6); }
  ;

opt_geometry:
    %empty { $$ = nullptr; }
  | GEOMETRY real_pair REAL
      { $$ = reader.made<kiva::GeometryTriple>(kiva::GeometryTriple{$2->first, $2->second, $3}); }
  ;

opt_run:
    %empty { $$ = nullptr; }
  | run
  ;

transition_def: TRANSITION transition_list { $$ = $2; } ;

transition_list:
    transition { $$ = reader.made<kiva::TransitionList>(); $$->push_back($1); }
  | transition_list transition { $$ = $1; $$->push_back($2); }
  ;

transition:
    state_name trigger action tpe state_name trans_geometry ';'
      { $$ = reader.transition(*$1, *$2, $3, $4, *$5, $6); }
  ;

state_name:
    INIT { $$ = reader.made<std::string>(kiva::class_zu_parser::initial_name); }
  | ID
  ;

opt_final:
    %empty { $$ = nullptr; }
  | FINAL { $$ = reader.made<std::string>(); }
  ;

tpe:
    %empty { $$ = Transition::strong; }
  | ARROW { $$ = Transition::strong; }
  | STRONGARROW { $$ = Transition::strong; }
  | WEAKARROW { $$ = Transition::weak; }
  | NORMALTERMARROW { $$ = Transition::normal_termination; }
  ;

trigger:
    %empty { $$ = reader.trigger(0); }
  | '[' ']' { $$ = reader.trigger(0); }
  | INT '[' ']' { $$ = reader.trigger($1); }
  | OTHER '[' ']' { $$ = reader.trigger(-1); }
  | '[' quadrival_exp ']' { $$ = reader.trigger(0, $2); }
  | INT '[' quadrival_exp ']' { $$ = reader.trigger($1, $3); }
  | OTHER '[' quadrival_exp ']' { $$ = reader.trigger(-1, $3); }
  | '[' VALUE data_exp ']' { $$ = reader.value_trigger(0, $3); }
  | INT '[' VALUE data_exp ']' { $$ = reader.value_trigger($1, $4); }
  | OTHER '[' VALUE data_exp ']' { $$ = reader.value_trigger(-1, $4); }
  ;

action:
    %empty { $$ = nullptr; }
  | '/' valued_signal_list { $$ = $2; }
  ;

quadrival_exp:
    quadrival_exp OR quadrival_term { $$ = reader.expression<OrExpression>($1, $3); }
  | quadrival_term
  ;

quadrival_term:
    quadrival_term AND quadrival_factor { $$ = reader.expression<AndExpression>($1, $3); }
  | quadrival_factor
  ;

quadrival_factor:
    '(' quadrival_exp ')' { $$ = $2; }
  | NOT quadrival_factor { $$ = reader.expression<NpExpression>($2); }
  | ABS quadrival_factor { $$ = reader.expression<NotExpression>($2); }
  | quadrival_signal
  | '~' { $$ = reader.expression<BottomExpression>(); }
  | FF { $$ = reader.expression<FalseExpression>(); }
  | TT { $$ = reader.expression<TrueExpression>(); }
  ;

quadrival_signal: signal_name { $$ = reader.signal(*$1); } ;

trans_geometry: pair_geometry ;

valued_signal_list:
    signal_name
      { $$ = reader.made<kiva::SignalActions>(); reader.add_action(*$$, *$1, nullptr); }
  | signal_name '(' data_exp ')'
      { $$ = reader.made<kiva::SignalActions>(); reader.add_action(*$$, *$1, $3); }
  | valued_signal_list ',' signal_name
      { $$ = $1; reader.look_at(@3); reader.add_action(*$$, *$3, nullptr); }
  | valued_signal_list ',' signal_name '(' data_exp ')'
      { $$ = $1; reader.look_at(@3); reader.add_action(*$$, *$3, $5); }
  ;

signal_name: ident ;

mealy_machine:
    MEALY_MACHINE register_decl_list equation_decl_list { $$ = kiva::MealyMachine::read(reader, *$3); }
  ;

register_decl_list:
    %empty
  | REG_DECL ne_register_list ';'
  ;

ne_register_list:
    reg
  | ne_register_list ',' reg
  ;

reg: ident ':' INT ':' ident { reader.declare_register(*$1, $3, *$5); } ;

equation_decl_list:
    equation ';'
  | equation_decl_list equation ';' { $$ = $1; $$->splice($$->end(), *$2); }
  ;

equation:
    variable '=' right_part { $$ = reader.equation($1, nullptr, $3); }
  | variable '(' data_exp ')' '=' right_part { $$ = reader.equation($1, $3, $6); }
  ;

variable: ident { $$ = reader.statement_signal(*$1); } ;

right_part:
    ident { $$ = reader.equation_signal(*$1); }
  | right_part AND right_part { $$ = reader.expression<AndExpression>($1, $3); }
  | right_part OR right_part { $$ = reader.expression<OrExpression>($1, $3); }
  | right_part NOR right_part { $$ = reader.equation_nor($1, $3); }
  | right_part XOR right_part { $$ = reader.equation_xor($1, $3); }
  | right_part NAND right_part { $$ = reader.equation_nand($1, $3); }
  | NOT right_part { $$ = reader.expression<NpExpression>($2); }
  | ABS right_part { $$ = reader.expression<NotExpression>($2); }
  | INT { $$ = reader.equation_constant($1); }
  | '(' right_part ')' { $$ = $2; }
  ;

ident: ID ;

data_exp:
    data_exp_not_basic
  | basic_value { $$ = reader.literal(*$1); }
  | '(' data_exp ')' { $$ = $2; }
  ;

data_exp_not_basic:
    const_expr
  | method_call
  | binary_func_call
  | unary_func_call
  | signal_value
  ;

const_expr: ident { $$ = reader.constant(*$1); } ;

method_call:
    method_name '(' data_exp_list ')' { $$ = reader.method_call(*$1, $3); }
  | method_name '(' ')' { $$ = reader.method_call(*$1, nullptr); }
  ;

method_name:
    ident
  | method_name '.' ident { $$ = $1; *$$ += '.' + *$3; }
  ;

data_exp_list:
    data_exp { $$ = reader.made<kiva::DataExprList>(); $$->push_back($1); }
  | data_exp_list ',' data_exp { $$ = $1; $$->push_back($3); }
  ;

binary_func_call:
    data_exp '+' data_exp { $$ = reader.binary(DataExpr::Plus, $1, $3); }
  | data_exp '-' data_exp { $$ = reader.binary(DataExpr::Minus, $1, $3); }
  | data_exp '*' data_exp { $$ = reader.binary(DataExpr::Mult, $1, $3); }
  | data_exp '/' data_exp { $$ = reader.binary(DataExpr::Div, $1, $3); }
  | data_exp AND data_exp { $$ = reader.binary(DataExpr::And, $1, $3); }
  | data_exp OR data_exp { $$ = reader.binary(DataExpr::Or, $1, $3); }
  | data_exp EQ_EG data_exp { $$ = reader.binary(DataExpr::Eq, $1, $3); }
  | data_exp EQ_NEG data_exp { $$ = reader.binary(DataExpr::Neq, $1, $3); }
  | data_exp EQ_INF data_exp { $$ = reader.binary(DataExpr::Inf, $1, $3); }
  | data_exp EQ_INFE data_exp { $$ = reader.binary(DataExpr::Infe, $1, $3); }
  | data_exp EQ_SUP data_exp { $$ = reader.binary(DataExpr::Sup, $1, $3); }
  | data_exp EQ_SUPE data_exp { $$ = reader.binary(DataExpr::Supe, $1, $3); }
  ;

unary_func_call:
    '-' data_exp %prec UNARY_MINUS { $$ = reader.unary(DataExpr::Uminus, $2); }
  | NOT data_exp { $$ = reader.unary(DataExpr::Not, $2); }
  ;

signal_value: '#' signal_name { $$ = reader.signal_value(*$2); } ;

// Where reading goes on behind a fault.

type_decl: TYPE error ';' { yyerrok; } ;

method: error ';' { yyerrok; } ;

constant: error ';' { yyerrok; } ;

program: error { reader.leave_module(); } ;

program: MODULE error END { yyerrok; reader.leave_module(); } ;

input_signal_list: INPUT error ';' { yyerrok; } ;

output_signal_list: OUTPUT error ';' { yyerrok; } ;

local_signal_list: LOCAL error ';' { yyerrok; } ;

run_decl_list: RUN_DECL error ';' { yyerrok; } ;

module_interface:
    error
  | input_signal_list error
  | input_signal_list output_signal_list error
  | input_signal_list output_signal_list local_signal_list error
  ;

run_decl_list: run_decl_list misplaced ;

misplaced:
    INPUT { reader.misplaced("Input:"); } ne_input_signal_list ';'
  | OUTPUT { reader.misplaced("Output:"); } ne_output_signal_list ';'
  | LOCAL { reader.misplaced("Local:"); } ne_local_signal_list ';'
  | RUN_DECL { reader.misplaced("Run:"); } ne_run_decl_list ';'
  ;

operator: error { $$ = kiva::Nothing::read(reader); } ;

abort: WEAK ABORT '{' instruction '}' error { $$ = $4; } ;

strongabort: STRONG ABORT '{' instruction '}' error { $$ = $4; } ;

state: error ';' { yyerrok; } ;

transition: error ';' { yyerrok; $$ = nullptr; } ;

register_decl_list: REG_DECL error ';' { yyerrok; } ;

equation: error { $$ = reader.made<kiva::EquationList>(); } ;

%%

static int yyreport_syntax_error(const yypcontext_t* context, kiva::class_zu_parser& reader) {
  yysymbol_kind_t kinds[YYNTOKENS];
  const int count = yypcontext_expected_tokens(context, kinds, YYNTOKENS);
  std::vector<std::string> expected;
  for (int i = 0; i < count; ++i) expected.push_back(yysymbol_name(kinds[i]));
  reader.syntax_error(expected);
  return 0;
}
