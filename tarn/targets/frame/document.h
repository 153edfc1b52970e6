#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "tarn/targets/frame/source_notes.h"
#include "tarn/targets/frame/straight_code.h"
#include "tarn/targets/frame/target.h"

namespace kiva {

/// How a form of documents is marked up.
struct DocumentForm {
  ExpressionTexts expressions;  ///< without `read` and `part`
  std::function<std::string(const std::string& plain)> text;
  std::function<std::string(const std::string& plain)> name;  ///< of a signal, as one
};

/// A module as people read it: what stands in its document, marked up by a form, in whatever
/// layout.
struct Document {
  struct Table {
    std::string title;
    std::vector<std::string> headings;
    std::vector<std::vector<std::string>> rows;  ///< as many cells as headings
  };
  struct Equation {
    std::string place;  ///< of the source, where that is another than that of the one before
    std::string left, right;
  };
  std::string title;
  std::vector<std::string> summary;  ///< paragraphs
  std::vector<Table> tables;         ///< interface, data, registers, properties
  std::vector<Equation> equations, values;
  std::vector<DocumentNotes::Picture> pictures;
  std::string made;  ///< of what and by what; may be empty
};

/// Reads the module. Columns that would be empty are left out, and so are tables without rows.
Document document_of(const TargetJob& job, const TargetText::Language& language,
                     const DocumentForm& form);

}  // namespace kiva
