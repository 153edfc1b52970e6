#pragma once

#include <initializer_list>
#include <string>
#include <unordered_set>
#include <vector>

namespace kiva {

/// What a target's names look like. A name is letters, digits, "_" and `more_characters`.
struct NameShape {
  const char* target;  ///< for messages
  std::initializer_list<const char*> keywords = {};
  bool case_matters = true;
  const char* more_characters = "";
  bool may_begin_with_digit = false;
  bool may_begin_with_underscore = true;
  bool may_end_with_underscore = true;
  bool may_double_underscore = true;
};

/// The names of one text. What asks first is served first; no two names are the same.
class TargetNames {
 public:
  /// Without `check` every name is given as it is wanted; without `tells` no change is told.
  TargetNames(const NameShape& shape, bool check, bool tells = true)
      : shape_(&shape), check_(check), tells_(tells) {}

  /// Takes a name of the text's own.
  void reserve(const std::string& name) { taken_.insert(folded(name)); }
  /// Takes `prefix` with any number behind it.
  void reserve_numbered(const std::string& prefix) { numbered_.push_back(folded(prefix)); }
  /// The name closest to the wanted one that is free. A change is told on the error stream where
  /// `what` (as "signal", "module") is not empty; `original` is the name that its user knows.
  std::string give(const std::string& wanted, const std::string& what, const std::string& original);
  std::string give(const std::string& wanted) { return give(wanted, "", wanted); }
  /// Tells that a name has changed.
  void tell(const std::string& what, const std::string& original, const std::string& name,
            const char* reason) const;
  /// The name with what the target does not take replaced.
  std::string legal(const std::string& name) const;
  bool is_keyword(const std::string& name) const;

 private:
  std::string folded(const std::string& name) const;
  bool may_stand(char c) const;
  bool may_begin(char c) const;

  const NameShape* shape_;
  bool check_;
  bool tells_;
  bool is_taken(const std::string& name) const;

  std::unordered_set<std::string> taken_;
  std::vector<std::string> numbered_;
};

}  // namespace kiva
