// What a document tells is found here once; LaTeX and HTML only lay it out.

#include "tarn/targets/frame/document.h"

#include <algorithm>
#include <set>

#include "tarn/targets/frame/data_text.h"

namespace kiva {

namespace {

const char* const operators[] = {" + ",  " - ", " * ",  " / ", "-",    " and ", " or ",
                                 "not ", " = ", " <> ", " < ", " <= ", " > ",   " >= "};

void drop_empty_columns(Document::Table& table) {
  for (size_t column = table.headings.size(); column-- > 0;) {
    const auto is_empty = [column](const auto& row) { return row[column].empty(); };
    if (!std::ranges::all_of(table.rows, is_empty)) continue;
    const auto at = static_cast<std::ptrdiff_t>(column);
    table.headings.erase(table.headings.begin() + at);
    for (auto& row : table.rows) row.erase(row.begin() + at);
  }
}

class DocumentReader {
 public:
  DocumentReader(const TargetJob& job, const TargetText::Language& language,
                 const DocumentForm& form)
      : text_(job.module, language, job.rules), form_(form) {
    const SourceNotes* notes = job.rules.comments ? job.rules.notes : nullptr;
    if (job.rules.notes != nullptr && job.rules.notes->document) {
      SourceNotes::Names names;
      for (const StateRail& rail : text_.state())
        names[SourceNotes::key(text_.manager()->Name_var_by_index(rail.index))] =
            text_.name(rail.index);
      notes_ = job.rules.notes->document(names);
    }
    if (notes == nullptr) {
      notes_.meanings.clear();
      notes_.summary.clear();
    } else {
      document_.made = form.text("From " + notes->from + ", by " + notes->made + ".");
    }
    data_ = {operators, "a document", [this](const Signal* s) { return text_.name(s); }, true};
  }

  Document read() {
    document_.title = form_.text(text_.module()->getName());
    for (const std::string& paragraph : notes_.summary)
      document_.summary.push_back(form_.text(paragraph));
    document_.pictures = notes_.pictures;
    for (auto& picture : document_.pictures) picture.title = form_.text(picture.title);
    read_interface();
    read_data();
    read_registers();
    read_properties();
    read_equations();
    read_values();
    return std::move(document_);
  }

 private:
  std::string name(long index) const { return form_.name(text_.name(index)); }

  void add(Document::Table table) {
    drop_empty_columns(table);
    if (!table.rows.empty()) document_.tables.push_back(std::move(table));
  }

  void read_interface() {
    Document::Table table{"Interface", {"Signal", "Direction", "Value", "Meaning"}, {}};
    const auto add_rails = [&](const std::vector<long>& rails, const std::string& direction) {
      for (long index : rails) table.rows.push_back({name(index), direction, "", ""});
    };
    const auto add_signals = [&](const std::vector<Signal*>& signals, const char* direction) {
      for (const Signal* signal : signals) {
        const auto meaning = notes_.meanings.find(signal->getOriginalName());
        table.rows.push_back({name(text_.status(signal)), direction,
                              text_.is_valued(signal) ? form_.text(text_.type(signal)) : "",
                              meaning == notes_.meanings.end() ? "" : form_.text(meaning->second)});
        if (!text_.finalised())
          table.rows.push_back({name(text_.value(signal)), direction, "", "the value rail"});
      }
    };
    add_rails(text_.set_reset_rails(), "input");
    add_signals(text_.inputs(), "input");
    add_rails(text_.further_inputs(), "free");
    add_rails(text_.rtl_rails(), "output");
    add_signals(text_.outputs(), "output");
    add(std::move(table));
  }

  void read_data() {
    if (text_.module()->getDataTable() == nullptr || text_.module()->getDataTable()->empty())
      return;
    Document::Table table{"Data", {"Name", "Kind", "Is"}, {}};
    for (const ConstantDecl* constant : constants_read(*text_.module()))
      table.rows.push_back({form_.name(constant->getName()), "constant",
                            form_.text(constant->getType()) +
                                (constant->getValue() == nullptr
                                     ? ""
                                     : " " + form_.text(data_text(data_, *constant->getValue())))});
    std::ranges::sort(table.rows);
    for (const MethodDecl* method : data_methods()) {
      std::string from;
      for (const std::string& type : method->getArgTypeList())
        from += (from.empty() ? "" : ", ") + type;
      table.rows.push_back({form_.name(method->getName()), "function",
                            form_.text("(" + from + ") gives " + method->getReturnType())});
    }
    add(std::move(table));
  }

  void read_registers() {
    Document::Table table{"Registers", {"Register", "First", "Then", "Source"}, {}};
    for (const StateRail& rail : text_.state())
      table.rows.push_back({name(rail.index), rail.initial ? "1" : "0", name(rail.next),
                            form_.text(text_.place(rail.index))});
    add(std::move(table));
  }

  void read_properties() {
    Document::Table table{"Properties", {"Kind", "Of every instant", "Source"}, {}};
    for (const DocumentNotes::Property& property : notes_.properties)
      table.rows.push_back(
          {form_.text(property.word), form_.text(property.text), form_.text(property.place)});
    add(std::move(table));
  }

  void read_equations() {
    ExpressionTexts texts = form_.expressions;
    texts.read = [this](long index) { return name(index); };
    texts.part = [this](long number) { return form_.name("part_" + std::to_string(number)); };
    std::string last;
    for (const StraightLine& line : straight_code(text_, texts)) {
      Document::Equation equation{
          "", line.index < 0 ? texts.part(line.number) : name(line.index),
          line.equation == nullptr ? line.right : test(texts, *line.equation)};
      const std::string place = line.index < 0 ? "" : text_.place(line.index);
      if (!place.empty() && place != last) equation.place = form_.text(last = place);
      document_.equations.push_back(std::move(equation));
    }
  }

  /// A test on data holds while all that it reads is present.
  std::string test(const ExpressionTexts& texts, const TargetEquation& equation) const {
    std::string all;
    if (const auto signals = equation.binding->getValue()->computeDependencySet()) {
      std::set<std::string> present;  // in an order of its own
      for (const Signal* signal : *signals) present.insert(name(text_.status(signal)));
      for (const std::string& signal : present) all += signal + texts.and_text;
    }
    return all + (equation.kind == TargetEquation::data_complement ? texts.not_text : "") + '(' +
           form_.text(data_text(data_, *equation.binding->getValue())) + ')';
  }

  void read_values() {
    std::vector<Signal*> valued;
    for (Signal* output : text_.outputs())
      if (text_.is_valued(output)) valued.push_back(output);
    valued.insert(valued.end(), text_.valued_locals().begin(), text_.valued_locals().end());
    for (const Signal* signal : valued)
      for (const DataBinding* binding : text_.value_bindings(signal))
        document_.values.push_back({"", name(text_.status(signal)),
                                    form_.text(data_text(data_, *binding->getValue())) +
                                        form_.text(", where ") +
                                        name(text_.status(binding->getSignal()))});
  }

  TargetText text_;
  const DocumentForm& form_;
  DocumentNotes notes_;
  DataTexts data_;
  Document document_;
};

}  // namespace

Document document_of(const TargetJob& job, const TargetText::Language& language,
                     const DocumentForm& form) {
  return DocumentReader(job, language, form).read();
}

}  // namespace kiva
