// A module for people, as one page of HTML that needs no other file. There is no told form.

#include <ostream>

#include "base/markup.h"
#include "tarn/targets/frame/document.h"

namespace kiva {

namespace {

const TargetText::Language language{
    .shape = {.target = "HTML", .more_characters = ".@", .may_begin_with_digit = true},
    .has_data = true,
    .names_module = false};

/// Text whose long words may be broken.
std::string words(const std::string& plain) {
  std::string all;
  for (const std::string& piece : breakable_pieces(plain))
    all += (all.empty() ? "" : "<wbr>") + xml_text(piece);
  return all;
}

const DocumentForm form{
    .expressions = {.and_text = " \u2227 ",
                    .or_text = " \u2228 ",
                    .not_text = "\u00ac",
                    .differ_text = " \u2295 ",
                    .same_text = " \u2194 ",
                    .zero = "0",
                    .one = "1"},
    .text = words,
    .name = [](const std::string& plain) { return "<b>" + words(plain) + "</b>"; }};

constexpr const char* style =
    "body { font: 15px/1.45 'DejaVu Sans', sans-serif; color: #1c2330; background: #fff;\n"
    "  max-width: 60em; margin: 2em auto; padding: 0 1em; }\n"
    "h1 { font-size: 1.6em; }\nh2 { font-size: 1.2em; margin-top: 1.8em; }\n"
    "b { font-weight: 600; }\ntable { border-collapse: collapse; }\n"
    "th, td { text-align: left; vertical-align: top; padding: .2em 1em .2em 0; }\n"
    "th { border-bottom: 1px solid #5a6372; }\n"
    "svg { max-width: 100%; height: auto; }\n"
    ".is { margin: .1em 0 .1em 2em; text-indent: -2em; overflow-wrap: anywhere; }\n"
    ".place { margin: .7em 0 0; color: #5a6372; font: .85em 'DejaVu Sans Mono', monospace; }\n"
    ".small { font-size: .85em; color: #5a6372; }\n";

class HtmlText {
 public:
  explicit HtmlText(const TargetJob& job)
      : document_(document_of(job, language, form)), out_(job.out) {}

  void put() const {
    out_ << "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
            "<meta name=\"viewport\" content=\"width=device-width\">\n<title>"
         << document_.title << "</title>\n<style>\n"
         << style << "</style>\n</head>\n<body>\n<h1>Module " << document_.title << "</h1>\n";
    for (const std::string& paragraph : document_.summary) put_paragraph("", paragraph);
    for (const Document::Table& table : document_.tables) {
      put_table(table);
      if (&table != &document_.tables.front()) continue;  // behind the interface
      for (const DocumentNotes::Picture& picture : document_.pictures)
        out_ << "<h2>" << picture.title << "</h2>\n" << picture.svg;
    }
    put_equations(
        "Equations", document_.equations,
        "\u00ac: not, \u2227: and, \u2228: or, \u2295: one of them, \u2194: both or none.");
    put_equations("Values", document_.values, "");
    if (!document_.made.empty()) put_paragraph(" class=\"small\"", document_.made);
    out_ << "</body>\n</html>\n";
  }

 private:
  void put_paragraph(const char* attributes, const std::string& text) const {
    out_ << "<p" << attributes << '>' << broken(text) << "</p>\n";
  }

  void put_row(const char* tag, const std::vector<std::string>& cells) const {
    out_ << "<tr>";
    for (const std::string& cell : cells) out_ << '<' << tag << '>' << cell << "</" << tag << '>';
    out_ << "</tr>\n";
  }

  void put_table(const Document::Table& table) const {
    out_ << "<h2>" << table.title << "</h2>\n<table>\n";
    put_row("th", table.headings);
    for (const auto& row : table.rows) put_row("td", row);
    out_ << "</table>\n";
  }

  void put_equations(const char* title, const std::vector<Document::Equation>& equations,
                     const char* signs) const {
    if (equations.empty()) return;
    out_ << "<h2>" << title << "</h2>\n";
    if (*signs != 0) put_paragraph(" class=\"small\"", signs);
    for (const Document::Equation& equation : equations) {
      if (!equation.place.empty()) put_paragraph(" class=\"place\"", equation.place);
      put_paragraph(" class=\"is\"", equation.left + " = " + equation.right);
    }
  }

  Document document_;
  std::ostream& out_;
};

}  // namespace

extern const Target html_target{
    .option = "html",
    .help = "document, .html",
    .file = {.extension = ".html"},
    .put = [](const TargetJob& job) {
      const TargetRules rules = job.rules.without_told();
      HtmlText({job.target, job.module, rules, job.out, job.beside, job.beside_name}).put();
    }};

}  // namespace kiva
