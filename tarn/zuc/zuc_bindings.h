#pragma once

#include <list>
#include <string>
#include <unordered_map>
#include <vector>

#include "tarn/model/module.h"

namespace kiva {

struct couplelong {
  long premier;
  long second;
};

/// One line of a file's evaluation table.
struct evalnodeparse {
  static constexpr int constant = 0;
  static constexpr int reference = 1;
  static constexpr int operation = 2;
  static constexpr int method = 3;

  int nodetype;
  long tableident;   ///< number of a constant of the file, or of another line
  long methodident;  ///< operator with its type, or number of a method of the file; -1 for none
  std::vector<long> arguments;
  long nodeident = -1;  ///< the line's number in the table
  int line = 0;         ///< where it stands in the file
};

/// One line of a file's bindings. Ids as numbers of the file; -1 for no clock.
struct bindingparse {
  long instance_status_ident;
  long instance_value_ident;
  long eval_ident;
  long signal_status_ident = -1;
  long signal_value_ident = -1;
  int line = 0;
};

/// Why a read stops, where no other words are told.
struct ZucProblem {
  int line;
  std::string reason;
};

/// The bindings of a file with its evaluation table. The three tables give the global index of each
/// constant and method of the file; they are complete only once the file has been read.
class binding_declaration_parse {
 public:
  binding_declaration_parse(std::vector<bindingparse> bindings, std::vector<evalnodeparse> lines,
                            const std::vector<int>& corres_method,
                            const std::vector<int>& corres_constant);

  /// Binds all lines in file order. A signal that is not there ends the process; what the file gets
  /// wrong otherwise throws ZucProblem, an unknown evaluation line or operator
  /// IllegalOperationException.
  void createbinding(Module* module);

 private:
  const evalnodeparse& get_evalnode(long id) const;
  DataExpr* dataexpr(long id, Module* module);
  DataExpr* make(const evalnodeparse& node, Module* module);
  /// Lines that must be built before this one.
  static std::vector<long> needed_lines(const evalnodeparse& node);

  std::vector<bindingparse> bindings_;
  std::vector<evalnodeparse> lines_;
  const std::vector<int>& corres_method_;
  const std::vector<int>& corres_constant_;
  std::unordered_map<long, size_t> by_number_;  ///< first line of each number
  std::unordered_map<long, DataExpr*> built_;   ///< null while a line is under way
};

}  // namespace kiva
