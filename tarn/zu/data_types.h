#pragma once

#include <functional>
#include <string>
#include <unordered_map>

#include "tarn/model/data.h"

namespace kiva {

/// What kind of value an expression gives.
struct DataKind {
  std::string type;        ///< a declared type; "" for a condition, and where nothing is known
  bool condition = false;  ///< true or false, by a comparison or a logical operator
  bool known = true;       ///< false where a fault has been told already
};

/// Checks data expressions of one module as their reader means them: operands of one type, logical
/// operators over conditions, arguments as declared. The library itself gives an operator the type
/// of its operands, by which the evaluation server works; logical operators get the user's boolean
/// type here, if there is one.
class DataTypes {
 public:
  /// Takes a fault about a part of the expression.
  using Tell = std::function<void(const DataExpr* part, const std::string& sentence)>;
  /// Gives the text of a part, for a person.
  using Text = std::function<std::string(const DataExpr* part)>;

  DataTypes(Module* module, Text text, Tell tell)
      : module_(module), text_(std::move(text)), tell_(std::move(tell)) {}

  DataKind kind(DataExpr* e);
  /// Tells of a value that does not fit the type; `whose` says what takes it.
  void require(DataExpr* e, const std::string& type, const std::string& whose);
  /// Tells of what is neither true nor false.
  void require_condition(DataExpr* e, const std::string& whose);

 private:
  DataKind compute(DataExpr* e);
  DataKind of_signal(DataExpr* e);
  DataKind of_binary(DataExpr* e);
  DataKind of_call(DataExpr* e);
  DataKind logical(DataExpr* e, DataExpr* left);
  DataKind unknown(const DataExpr* part, const std::string& sentence);
  std::string described(const DataExpr* e, const DataKind& kind) const;

  Module* module_;
  Text text_;
  Tell tell_;
  std::unordered_map<const DataExpr*, DataKind> kinds_;
};

}  // namespace kiva
