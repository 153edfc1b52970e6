#pragma once

// What the names of a source text stand for. They are found by tokens alone, in faulty texts, too.

#include <string>
#include <string_view>
#include <vector>

#include "tarn/zu/source_tokens.h"

namespace kiva::language {

enum class SignalKind { input, output, local, reg };
/// "input", "output", "local", "register".
const char* word_of(SignalKind kind);
/// An input or an output?
bool is_outside(SignalKind kind);

enum class Role {
  declaration,  ///< of a signal
  writing,
  reading,
  formal,  ///< a signal of the called module, in a renaming
  module,  ///< its head
  called,  ///< by a run
  placed,  ///< in the section Run:
  state_declaration,
  state,
  type,
  method,
  constant
};

struct Occurrence {
  size_t token;
  Role role;
  size_t module;       ///< number of the module around; `outside` for none
  std::string called;  ///< the module whose signal a formal is

  static constexpr size_t outside = static_cast<size_t>(-1);
};

struct Declared {
  std::string name;
  SignalKind kind;
  size_t token;
  std::string type;  ///< "" for none
};

struct Call {
  std::string module;
  size_t token;                      ///< its name
  size_t open = 0;                   ///< "[" of its renamings; 0 for none
  size_t close = 0;                  ///< "]"
  std::vector<std::string> formals;  ///< those that it renames
};

struct Outline {
  std::string name;
  size_t head = 0;          ///< the token "module"
  size_t last = 0;          ///< its last token
  size_t section_end[4]{};  ///< the ";" of Input:, Output:, Local:, Run:; 0 for none
  size_t head_end = 0;      ///< the ":" behind its name, or the "{" behind that
  std::vector<Declared> declared;
  std::vector<std::pair<std::string, std::string>> places;  ///< module, and where it is looked for
  std::vector<Call> calls;

  const Declared* find(std::string_view name) const;
};

/// A text's tokens, comments left out, and what its names are.
struct Names {
  std::vector<SourceToken> tokens;
  std::vector<SourceToken> comments;
  std::vector<Outline> modules;
  std::vector<Occurrence> occurrences;  ///< in the order of the text

  /// The occurrence at a byte offset, or that ends there; null for none.
  const Occurrence* at(size_t offset) const;
  /// The last token that begins before the offset; tokens.size() for none.
  size_t token_before(size_t offset) const;
  std::string name_of(const Occurrence& occurrence) const;
  /// The number of the module around a token; Occurrence::outside for none.
  size_t module_around(size_t token) const;
  const Outline* find_module(std::string_view name) const;
};

/// The views are of the text, which must outlive them.
Names names_of(const std::string& text);

}  // namespace kiva::language
