%code requires {
#include <string>
#include <utility>
#include <vector>

#include "tarn/zuc/zuc_parser.h"
}

%{
// The grammar of compiled modules. An action hands what it has read to the reader object and traces
// the reduction: step, alternative, text.

#include <memory>

#include "tarn/zuc/zuc_parser.h"

using kiva::couplelong;
using kiva::evalnodeparse;
using kiva::Signal;
using kiva::signal_list;

#define YYINITDEPTH 200
#define YYMAXDEPTH 10000
#define YYSTACK_USE_ALLOCA 1  // gone, too, where an action throws
%}

%define api.prefix {zuc}
%define api.pure full
%parse-param {kiva::class_zuc_parser& reader}
%define parse.error verbose

%union {
  long number;
  std::string* text;
  std::vector<long>* numbers;
  std::list<std::string>* names;
  kiva::Signal* signal;
  kiva::signal_list* signals;
  kiva::couplelong couple;
  kiva::evalnodeparse* evaluation;
}

%code provides {
int zuclex(ZUCSTYPE* value);
}

%code {
static void zucerror(kiva::class_zuc_parser& reader, const char* message) {
  reader.syntax_error(message);
}
}

%token END_OF_INPUT 0 "$end"
%token TOKEN_MODULE
%token TOKEN_INPUTS TOKEN_OUTPUTS TOKEN_DATA_SIGNAL TOKEN_LOCALS TOKEN_REGISTERS TOKEN_CONNEXION
%token TOKEN_EQUATION_DEF TOKEN_EXPRESSION_DEF TOKEN_EGAL TOKEN_END TOKEN_BINDING TOKEN_EVALTABLE
%token TOKEN_VALUE TOKEN_CLOCK TOKEN_CONSTANT TOKEN_DATA TOKEN_TYPE TOKEN_METHOD TOKEN_IMMEDIAT
%token TOKEN_DEUX_POINTS TOKEN_VIRGULE TOKEN_POUVRANTE TOKEN_PFERMANTE TOKEN_IDENT TOKEN_NUMBER
%token TOKEN_REAL TOKEN_CHAINE_CARACTERES TOKEN_SEP TOKEN_DOUBLEPOURCENT TOKEN_POURCENT

%type <number> reincarnate finalised initial_value number evalconstante evalargument
%type <text> ident possibletype next_var actual_var argument constant_string
%type <signals> iol_list
%type <signal> iol
%type <numbers> number_list evalargument_list
%type <couple> clock_declaration doublenumber
%type <evaluation> evaluation
%type <names> argument_list

%%

module_compile:
    name_declaration reincarnate finalised
      { reader.begin_module(); }
    input_declarations output_declarations data_declarations local_declarations
    register_declarations connexion_declarations wood_declaration binding_declaration
    data_declaration
      {
        reader.trace(1, 1, "definition finale");
        if (!reader.finish($2 != 0, $3 != 0)) YYABORT;
      }
  ;

name_declaration:
    TOKEN_MODULE ident
      {
        reader.trace(2, 1, "definition nom declaration");
        reader.module_name = *reader.values.take($2);
      }
  ;

reincarnate: number { $$ = $1; reader.trace(3, 1, "reincarnate"); } ;

finalised: number { $$ = $1; reader.trace(4, 1, "finalised"); } ;

input_declarations:
    %empty
      { reader.trace(5, 1, "definition liste inputs vide"); }
  | TOKEN_INPUTS iol_list TOKEN_SEP
      {
        reader.trace(5, 2, "definition liste inputs");
        reader.inputs = std::move(*reader.values.take($2));
        reader.mark_inputs(reader.inputs);
        if (!reader.stand_once(reader.inputs)) YYABORT;
      }
  ;

output_declarations:
    %empty
      { reader.trace(6, 1, "definition liste output vide"); }
  | TOKEN_OUTPUTS iol_list TOKEN_SEP
      {
        reader.trace(6, 2, "definition liste output");
        reader.outputs = std::move(*reader.values.take($2));
        reader.mark_outputs(reader.outputs);
        if (!reader.stand_once(reader.outputs)) YYABORT;
      }
  ;

data_declarations:
    %empty
      { reader.trace(7, 1, "definition liste data vide"); }
  | TOKEN_DATA_SIGNAL iol_list TOKEN_SEP
      {
        reader.trace(7, 2, "definition liste data signals");
        reader.data = std::move(*reader.values.take($2));
        reader.mark_data(reader.data);
        if (!reader.stand_once(reader.data, true)) YYABORT;
      }
  ;

local_declarations:
    %empty
      { reader.trace(8, 1, "definition liste locaux vide"); }
  | TOKEN_LOCALS iol_list TOKEN_SEP
      {
        reader.trace(8, 2, "definition liste locaux");
        reader.locals = std::move(*reader.values.take($2));
        reader.mark_locals(reader.locals);
        if (!reader.stand_once(reader.locals)) YYABORT;
      }
  ;

iol_list:
    iol
      {
        reader.trace(9, 1, "creation liste iol");
        $$ = reader.values.make<signal_list>();
        $$->push_back($1);
      }
  | iol_list iol
      { reader.trace(9, 2, "ajout iol liste"); $$ = $1; $$->push_back($2); }
  ;

iol:
    ident possibletype
      {
        auto name = reader.values.take($1);
        auto type = reader.values.take($2);
        reader.trace(10, 1, *name);
        $$ = reader.declare(*name, type.get());
      }
  ;

possibletype:
    %empty { reader.trace(11, 1, "type vide"); $$ = nullptr; }
  | TOKEN_DEUX_POINTS ident { reader.trace(11, 2, *$2); $$ = $2; }
  ;

register_declarations:
    %empty { reader.trace(12, 1, "definition liste registres vide"); }
  | TOKEN_REGISTERS register_list { reader.trace(12, 2, "definition liste registres"); }
  ;

register_list:
    register { reader.trace(13, 1, "creation liste ident"); }
  | register_list register { reader.trace(13, 2, "ajout ident liste"); }
  ;

register:
    next_var actual_var initial_value TOKEN_SEP
      {
        auto next = reader.values.take($1);
        auto actual = reader.values.take($2);
        reader.trace(14, 1, *actual);
        if (auto* reg = reader.declare_register(*next, *actual, $3))
          reader.registers.push_back(reg);
      }
  ;

next_var: ident { reader.trace(15, 1, "def var suivante"); $$ = $1; } ;

actual_var: ident { reader.trace(16, 1, "def var actuelle"); $$ = $1; } ;

initial_value:
    TOKEN_NUMBER
      { reader.trace(17, 1, "valeur initiale "); $$ = reader.initial_value(); }
  ;

connexion_declarations:
    TOKEN_CONNEXION ident ident ident TOKEN_SEP
      {
        auto set = reader.values.take($2);
        auto reset = reader.values.take($3);
        auto rtl = reader.values.take($4);
        reader.trace(18, 1, "connexion");
        reader.declare_wires(*set, *reset, *rtl);
      }
  ;

ident:
    TOKEN_IDENT
      {
        reader.trace_token(19, 1);
        $$ = reader.values.make<std::string>(reader.token_text());
      }
  ;

number:
    TOKEN_NUMBER { reader.trace_token(20, 1); $$ = reader.token_number(); }
  ;

wood_declaration:
    TOKEN_EQUATION_DEF number { reader.parsed_nodes_number = $2; }
    equations_list TOKEN_EXPRESSION_DEF expressions_list TOKEN_END
      { reader.trace(21, 1, "wood declaration"); }
  ;

equations_list:
    %empty { reader.trace(22, 1, "equation seule"); }
  | equations_list equation { reader.trace(22, 2, "ajout equation gen liste"); }
  ;

equation:
    number TOKEN_DEUX_POINTS number TOKEN_DEUX_POINTS number TOKEN_DEUX_POINTS number
    TOKEN_VIRGULE number
      {
        reader.trace(23, 1, "equation");
        reader.node_line($1, $3, $5, $7, $9);
      }
  ;

expressions_list:
    %empty { reader.trace(24, 1, "expression booleenne gen seule"); }
  | expressions_list expression_bool { reader.trace(24, 2, "ajout expression gen liste"); }
  ;

expression_bool:
    number number number TOKEN_DEUX_POINTS number TOKEN_VIRGULE number TOKEN_VIRGULE
    TOKEN_POUVRANTE number_list TOKEN_PFERMANTE
      {
        auto deps = reader.values.take($10);
        reader.trace(25, 1, "def expression bool");
        if (!reader.expression_line($1, $2, $3, $5, $7, *deps)) YYABORT;
      }
  ;

number_list:
    %empty
      {
        reader.trace(26, 1, "liste nombres vide");
        $$ = reader.values.make<std::vector<long>>();
        constexpr size_t usual = 8;
        $$->reserve(usual);
      }
  | number_list number
      { reader.trace(26, 2, "ajout nombre liste"); $$ = $1; $$->push_back($2); }
  ;

binding_declaration:
    %empty { reader.trace(27, 1, "definition liste bindings vide"); }
  | TOKEN_BINDING binding_list TOKEN_END TOKEN_EVALTABLE evaltable_list TOKEN_END
      { reader.trace(27, 2, "definition liste bindings"); reader.has_bindings = true; }
  ;

binding_list:
    %empty { reader.trace(28, 1, "creation liste bindings"); }
  | binding_list binding { reader.trace(28, 2, "ajout binding liste"); }
  ;

binding:
    doublenumber TOKEN_DEUX_POINTS TOKEN_VALUE number clock_declaration TOKEN_SEP
      {
        reader.trace(29, 1, "binding");
        reader.binding_list.push_back(
            {$1.premier, $1.second, $4, $5.premier, $5.second, reader.line()});
      }
  ;

clock_declaration:
    %empty { reader.trace(30, 1, "clock declaration vide"); $$ = {-1, -1}; }
  | TOKEN_CLOCK doublenumber
      { reader.trace(30, 2, " clock declaration (nombre,nombre)"); $$ = $2; }
  ;

doublenumber:
    TOKEN_POUVRANTE number TOKEN_VIRGULE number TOKEN_PFERMANTE
      { reader.trace(31, 1, "(nombre,nombre)"); $$ = {$2, $4}; }
  ;

evaltable_list:
    %empty { reader.trace(32, 1, "creation liste evaluations"); }
  | evaltable_list evaltable { reader.trace(32, 2, "ajout evaluation liste"); }
  ;

evaltable:
    number TOKEN_DEUX_POINTS evaluation TOKEN_SEP
      {
        auto node = reader.values.take($3);
        reader.trace(33, 1, "ligne evaluation");
        node->nodeident = $1;
        node->line = reader.line();
        reader.evalnode_list.push_back(std::move(*node));
      }
  ;

evaluation:
    evalconstante
      {
        reader.trace(34, 1, "constante");
        $$ = reader.values.make<evalnodeparse>(evalnodeparse::constant, $1, -1, std::vector<long>());
      }
  | number
      {
        reader.trace(34, 2, "nombre");
        $$ = reader.values.make<evalnodeparse>(evalnodeparse::reference, $1, -1, std::vector<long>());
      }
  | TOKEN_POURCENT number TOKEN_POUVRANTE evalargument_list TOKEN_PFERMANTE
      {
        auto arguments = reader.values.take($4);
        reader.trace(34, 3, "methode");
        $$ = reader.values.make<evalnodeparse>(evalnodeparse::method, 0, $2, std::move(*arguments));
      }
  | TOKEN_DOUBLEPOURCENT number TOKEN_POUVRANTE evalargument_list TOKEN_PFERMANTE
      {
        auto arguments = reader.values.take($4);
        reader.trace(34, 4, "operateur predefini");
        // A signal is its status and its value number, whatever follows.
        if ($2 % kiva::DataExpr::NbPredefOp == kiva::DataExpr::SignalVal && arguments->size() > 2)
          arguments->resize(2);
        $$ = reader.values.make<evalnodeparse>(evalnodeparse::operation, 0, $2, std::move(*arguments));
      }
  ;

evalconstante:
    TOKEN_IMMEDIAT number { reader.trace(35, 1, "immediat"); $$ = $2; }
  ;

evalargument_list:
    %empty { reader.trace(36, 1, "liste arguments vide"); $$ = reader.values.make<std::vector<long>>(); }
  | evalargument
      { reader.trace(36, 2, "creation liste arguments"); $$ = reader.values.make<std::vector<long>>($1); }
  | evalargument_list TOKEN_VIRGULE evalargument
      { reader.trace(36, 3, "ajout argument liste"); $$ = $1; $$->push_back($3); }
  ;

evalargument:
    number { reader.trace(37, 1, "argument"); $$ = $1; }
  | evalconstante { reader.trace(37, 2, "argument constante"); $$ = $1; }
  ;

data_declaration:
    %empty { reader.trace(38, 1, "definition donnees vide"); }
  | TOKEN_DATA TOKEN_TYPE typedata_list TOKEN_METHOD method_list constant_declaration TOKEN_END
      { reader.trace(38, 2, "definition donnees"); }
  ;

typedata_list:
    %empty { reader.trace(39, 1, "creation liste types"); }
  | typedata_list typedata { reader.trace(39, 2, "ajout type liste"); }
  ;

typedata:
    ident TOKEN_SEP
      {
        auto name = reader.values.take($1);
        reader.trace(40, 1, *name);
        if (!reader.add_type(*name)) YYABORT;
      }
  ;

method_list:
    %empty { reader.trace(41, 1, "creation liste methodes"); }
  | method_list met { reader.trace(41, 2, "ajout methode liste"); }
  ;

met:
    ident ident TOKEN_POUVRANTE argument_list TOKEN_PFERMANTE TOKEN_SEP
      {
        auto type = reader.values.take($1);
        auto name = reader.values.take($2);
        auto arguments = reader.values.take($4);
        reader.trace(42, 1, *name);
        if (!reader.add_method(*type, *name, *arguments)) YYABORT;
      }
  ;

argument_list:
    %empty
      { reader.trace(43, 1, "liste types vide"); $$ = reader.values.make<std::list<std::string>>(); }
  | argument
      {
        reader.trace(43, 2, "creation liste types arguments");
        $$ = reader.values.make<std::list<std::string>>(*reader.values.take($1));
      }
  | argument_list TOKEN_VIRGULE argument
      {
        reader.trace(43, 3, "ajout type argument");
        $$ = $1;
        $$->push_back(*reader.values.take($3));
      }
  ;

argument: ident { reader.trace(44, 1, *$1); $$ = $1; } ;

constant_declaration:
    %empty { reader.trace(45, 1, "definition constantes vide"); }
  | TOKEN_CONSTANT constant_list { reader.trace(45, 2, "definition constantes"); }
  ;

constant_list:
    %empty { reader.trace(46, 1, "creation liste constantes"); }
  | constant_list constant { reader.trace(46, 2, "ajout constante liste"); }
  ;

constant:
    ident ident constant_string TOKEN_SEP
      {
        auto type = reader.values.take($1);
        auto name = reader.values.take($2);
        auto literal = reader.values.take($3);
        reader.trace(47, 1, *name);
        if (!reader.add_constant(*type, *name, literal.get())) YYABORT;
      }
  | ident ident TOKEN_SEP
      {
        auto type = reader.values.take($1);
        auto name = reader.values.take($2);
        reader.trace(47, 2, *name);
        if (!reader.add_constant(*type, *name, nullptr)) YYABORT;
      }
  ;

constant_string:
    TOKEN_CHAINE_CARACTERES
      {
        reader.trace_token(48, 1);
        $$ = reader.values.make<std::string>(reader.token_text());
      }
  ;

%%
