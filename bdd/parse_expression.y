%code requires {
#include "bdd/expression_parser.h"
}

%{
// The grammar of expressions. A rule builds its function at once; a name is looked up, and never
// made.

#include "base/number_text.h"
#include "bdd/expression_parser.h"

using kiva::bdd;
using kiva::bddpp_manager;
using kiva::pexp_bdd_parser;

#define YYINITDEPTH 200
#define YYMAXDEPTH 10000
#define YYSTACK_USE_ALLOCA 1  // gone, too, where an action throws
%}

%define api.prefix {exp_bdd}
%define api.pure full
%define parse.error verbose

%union {
  kiva::bdd* function;
  long priority;
}

%code provides {
/// The next token; it has no value of its own.
int exp_bddlex(EXP_BDDSTYPE* value);
void exp_bdderror(const char* message);
}

%code {
static bddpp_manager& diagrams() { return *pexp_bdd_parser->manager(); }

/// A function of two operands, which are consumed.
static bdd* combined(bdd (bddpp_manager::*operation)(const bdd&, const bdd&), bdd* left,
                     bdd* right) {
  kiva::ParseValues& values = pexp_bdd_parser->values;
  return values.make<bdd>((diagrams().*operation)(*values.take(left), *values.take(right)));
}

static void complain(kiva::ExpressionFault fault, const char* before, const char* after) {
  pexp_bdd_parser->set_fault(fault);
  exp_bdderror(
      ("parsing error in expression: " + std::string(before) + '"' +
       pexp_bdd_parser->current_piece() + '"' + after).c_str());
}
}

%token END_OF_INPUT 0 "$end"
%token TOKEN_OR TOKEN_AND TOKEN_XOR TOKEN_XNOR TOKEN_IMPL TOKEN_FNOT TOKEN_NOT
%token TOKEN_PAR_OUVRANTE TOKEN_PAR_FERMANTE TOKEN_INF TOKEN_SUP
%token TOKEN_STRING TOKEN_ZERO TOKEN_ONE

%type <function> bdd_expression_gen bdd_expression bdd_terme bdd_facteur bdd_variable
%type <priority> priorite valeur

%%

bdd_final: bdd_expression_gen { pexp_bdd_parser->set_result(*$1); }
  ;
bdd_expression_gen: priorite bdd_expression { pexp_bdd_parser->set_priority($1); $$ = $2; }
  ;
priorite: %empty { $$ = 0; }
  | TOKEN_INF valeur TOKEN_SUP { $$ = $2; }
  ;
valeur: TOKEN_ZERO { complain(kiva::ExpressionFault::bad_priority, "", " is not a correct priority value ..."); YYERROR; }
  | TOKEN_ONE { $$ = 1; }
  | TOKEN_STRING {
      const std::string& piece = pexp_bdd_parser->current_piece();
      if (piece == "other" || piece == "default") {
        $$ = -1;
      } else if (kiva::checkuint(piece)) {
        $$ = kiva::Stol(piece);
      } else {
        complain(kiva::ExpressionFault::bad_priority, "name ", " is not a correct priority value ...");
        YYERROR;
      }
    }
  ;
bdd_expression: bdd_expression TOKEN_OR bdd_terme { $$ = combined(&bddpp_manager::Bdd_or, $1, $3); }
  | bdd_expression TOKEN_XOR bdd_terme { $$ = combined(&bddpp_manager::Bdd_xor, $1, $3); }
  | bdd_expression TOKEN_XNOR bdd_terme { $$ = combined(&bddpp_manager::Bdd_xnor, $1, $3); }
  | bdd_terme { $$ = $1; }
  ;
bdd_terme: bdd_terme TOKEN_AND bdd_facteur { $$ = combined(&bddpp_manager::Bdd_and, $1, $3); }
  | bdd_facteur TOKEN_IMPL bdd_facteur { $$ = combined(&bddpp_manager::Bdd_reduce, $1, $3); }
  | bdd_facteur { $$ = $1; }
  ;
bdd_facteur: TOKEN_PAR_OUVRANTE bdd_expression TOKEN_PAR_FERMANTE { $$ = $2; }
  | TOKEN_NOT bdd_facteur { *$2 = diagrams().Bdd_not(*$2); $$ = $2; }
  | bdd_variable { $$ = $1; }
  | TOKEN_ZERO { $$ = pexp_bdd_parser->values.make<bdd>(diagrams().Bdd_zero()); }
  | TOKEN_ONE { $$ = pexp_bdd_parser->values.make<bdd>(diagrams().Bdd_one()); }
  ;
bdd_variable: TOKEN_STRING {
      if (diagrams().Id_var_by_name(pexp_bdd_parser->current_piece()) < 0) {
        complain(kiva::ExpressionFault::unknown_name, "name ", " not identificated ...");
        YYERROR;
      }
      $$ = pexp_bdd_parser->values.make<bdd>(diagrams().Bdd_var_by_name(pexp_bdd_parser->current_piece()));
    }
  ;

%%
