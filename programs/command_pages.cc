#include "programs/command_pages.h"

#include <algorithm>

#include "base/text_stream.h"
#include "base/translation.h"

namespace kiva::programs {

namespace {

/// What an option wants, as far as a shell can help with it.
enum class Wanted { nothing, text, word, file, folder, name };

struct Row {
  std::vector<std::string> options;  ///< "-o", "--output"; empty for what stands alone
  std::string value;                 ///< "FILE"; empty for a flag
  std::string help;
  std::string group;
  Wanted wanted = Wanted::nothing;
  std::vector<std::string> words;  ///< where one of these is wanted
};

bool is_page_option(const std::string& option) {
  return option.starts_with("--print-");
}

/// The words of a type such as "TEXT:{a,b}".
std::vector<std::string> words_of(const std::string& type) {
  std::vector<std::string> words;
  const size_t open = type.find('{');
  if (open == std::string::npos) return words;
  std::istringstream list(type.substr(open + 1, type.find('}') - open - 1));
  for (std::string word; std::getline(list, word, ',');) words.push_back(word);
  return words;
}

Wanted wanted_by(const std::string& type) {
  if (type.find('{') != std::string::npos) return Wanted::word;
  if (type.find("DIR") != std::string::npos) return Wanted::folder;
  for (const char* named : {"NAME", "EXPR", "MODULE"})
    if (type.starts_with(named)) return Wanted::name;
  return type.starts_with("FILE") ? Wanted::file : Wanted::text;
}

Row row_of(const CLI::Option& option) {
  Row row;
  for (const std::string& name : option.get_snames()) row.options.push_back("-" + name);
  for (const std::string& name : option.get_lnames()) row.options.push_back("--" + name);
  const std::string type = option.get_type_name();
  if (row.options.empty()) {
    row.value = option.get_name(true);
    row.wanted = Wanted::file;
  } else if (option.get_items_expected_max() > 0) {
    row.value = type.substr(0, type.find(':'));
    row.wanted = wanted_by(type);
    row.words = words_of(type);
  }
  row.help = option.get_description();
  row.group = option.get_group();
  return row;
}

/// The options as they were added, then what stands alone; pages of our own left out.
std::vector<Row> rows_of(const CLI::App& app) {
  std::vector<Row> rows;
  for (const CLI::Option* option : app.get_options()) {
    Row row = row_of(*option);
    if (row.options.empty() || !is_page_option(row.options.back())) rows.push_back(std::move(row));
  }
  std::stable_partition(rows.begin(), rows.end(),
                        [](const Row& row) { return !row.options.empty(); });
  return rows;
}

/// Each of the characters gets the mark in front.
std::string marked(const std::string& text, const std::string& characters,
                   const std::string& mark) {
  std::string safe;
  for (char c : text) {
    if (characters.find(c) != std::string::npos) safe += mark;
    safe += c;
  }
  return safe;
}

// Manual pages ---------------------------------------------------------------------------------

/// Text of a page: no escapes, no requests, hyphens that can be copied.
std::string roff(const std::string& text) {
  std::string safe;
  bool at_start = true;
  for (char c : text) {
    if (at_start && (c == '.' || c == '\'')) safe += "\\&";
    if (c == '\\')
      safe += "\\e";
    else if (c == '-')
      safe += "\\-";
    else
      safe += c;
    at_start = c == '\n';
  }
  return safe;
}

void put_rows(std::ostream& out, const char* title, const CommandNotes::Rows& rows) {
  if (rows.empty()) return;
  out << ".SH " << title << '\n';
  for (const auto& [term, text] : rows)
    out << ".TP\n.B " << roff(term) << '\n' << roff(text) << '\n';
}

void put_option(std::ostream& out, const Row& row) {
  out << ".TP\n";
  std::string names;
  for (const std::string& option : row.options)
    names += (names.empty() ? "\\fB" : ", \\fB") + roff(option) + "\\fR";
  if (!row.value.empty()) names += (names.empty() ? "\\fI" : " \\fI") + roff(row.value) + "\\fR";
  out << names << '\n' << roff(row.help) << '\n';
}

// Completion -----------------------------------------------------------------------------------

std::string joined(const std::vector<std::string>& words, const char* between) {
  std::string text;
  for (const std::string& word : words) text += (text.empty() ? "" : between) + word;
  return text;
}

constexpr const char* bash_names = R"(  local files=() word
  for word in "${COMP_WORDS[@]}"; do
    case $word in *.zu | *.zuc) files+=("$word") ;; esac
  done
)";

void put_bash_case(std::ostream& out, const Row& row) {
  out << "    " << joined(row.options, " | ") << ")\n      ";
  switch (row.wanted) {
    case Wanted::word:
      out << "mapfile -t COMPREPLY < <(compgen -W '" << joined(row.words, " ") << "' -- \"$cur\")";
      break;
    case Wanted::file:
      out << "compopt -o filenames; mapfile -t COMPREPLY < <(compgen -f -- \"$cur\")";
      break;
    case Wanted::folder:
      out << "compopt -o filenames; mapfile -t COMPREPLY < <(compgen -d -- \"$cur\")";
      break;
    case Wanted::name:
      out << "mapfile -t COMPREPLY < <(compgen -W \"$(tarn --print-names \"${files[@]}\" "
             "2>/dev/null)\" -- \"$cur\")";
      break;
    default:
      out << "COMPREPLY=()";
  }
  out << "\n      return\n      ;;\n";
}

std::string bash_completion(const std::string& command, const std::vector<Row>& rows) {
  TextStream out;
  std::string function = "_" + command;
  std::replace(function.begin(), function.end(), '-', '_');
  std::string options;
  out << "# Completion of " << command << " for bash.\n"
      << function << "() {\n"
      << "  local cur=${COMP_WORDS[COMP_CWORD]} prev=${COMP_WORDS[COMP_CWORD - 1]}\n"
      << bash_names << "  case $prev in\n";
  for (const Row& row : rows) {
    if (!row.options.empty()) options += (options.empty() ? "" : " ") + joined(row.options, " ");
    if (!row.options.empty() && row.wanted != Wanted::nothing) put_bash_case(out, row);
  }
  out << "  esac\n  if [[ $cur == -* ]]; then\n    mapfile -t COMPREPLY < <(compgen -W '" << options
      << "' -- \"$cur\")\n    return\n  fi\n  compopt -o filenames\n"
      << "  mapfile -t COMPREPLY < <(compgen -f -X '!*.@(zu|zuc|stimuli|kivasession)' -- \"$cur\"; "
         "compgen -d -- \"$cur\")\n"
      << "}\nshopt -s extglob\ncomplete -F " << function << ' ' << command << '\n';
  return out.str();
}

std::string zsh_action(const Row& row) {
  switch (row.wanted) {
    case Wanted::nothing:
      return "";
    case Wanted::word:
      return ":" + row.value + ":(" + joined(row.words, " ") + ")";
    case Wanted::file:
      return ":" + row.value + ":_files";
    case Wanted::folder:
      return ":" + row.value + ":_files -/";
    case Wanted::name:
      return ":" + row.value + ":_kiva_names";
    case Wanted::text:
      break;
  }
  return ":" + row.value + ": ";
}

std::string zsh_completion(const std::string& command, const std::vector<Row>& rows) {
  TextStream out;
  out << "#compdef " << command << "\n# Completion of " << command << " for zsh.\n"
      << "_kiva_names() {\n  local -a found\n"
      << "  found=(${(f)\"$(tarn --print-names ${(M)words:#*.(zu|zuc)} 2>/dev/null)\"})\n"
      << "  compadd -a found\n}\n_arguments -s";
  for (const Row& row : rows)
    for (const std::string& option : row.options)
      out << " \\\n  '*" << option << '[' << marked(marked(row.help, "[]:\\", "\\"), "'", "'\\'")
          << ']' << zsh_action(row) << '\'';
  out << " \\\n  '*:file:_files -g \"*.(zu|zuc|stimuli|kivasession)(-.)\"'\n";
  return out.str();
}

std::string fish_completion(const std::string& command, const std::vector<Row>& rows) {
  TextStream out;
  out << "# Completion of " << command << " for fish.\nfunction __kiva_names_of_";
  std::string function = command;
  std::replace(function.begin(), function.end(), '-', '_');
  out << function << "\n  tarn --print-names (string match -r '.*\\.zuc?$' -- (commandline -opc)) "
      << "2>/dev/null\nend\n";
  for (const Row& row : rows) {
    if (row.options.empty()) continue;
    out << "complete -c " << command;
    for (const std::string& option : row.options)
      out << (option.starts_with("--") ? " -l " : " -s ")
          << option.substr(option.starts_with("--") ? 2 : 1);
    if (row.wanted == Wanted::word) out << " -x -a '" << joined(row.words, " ") << '\'';
    if (row.wanted == Wanted::name) out << " -x -a '(__kiva_names_of_" << function << ")'";
    if (row.wanted == Wanted::folder) out << " -x -a '(__fish_complete_directories)'";
    if (row.wanted == Wanted::file) out << " -r";
    if (row.wanted == Wanted::text) out << " -x";
    out << " -d '" << marked(row.help, "'\\", "\\") << "'\n";
  }
  return out.str();
}

}  // namespace

std::string version() {
  return KIVA_VERSION;
}

CommandNotes::Rows common_statuses() {
  return {{"0", "All was done."},
          {"1", "A file or module cannot be used, or something cannot be written."},
          {"2", "The command line is wrong."}};
}

std::string example_lines(const CommandNotes& notes) {
  size_t width = 0;
  for (const auto& [line, text] : notes.examples) width = std::max(width, line.size() + 2);
  std::string lines;
  for (const auto& [line, text] : notes.examples)
    lines += (lines.empty() ? "" : "\n") + line + std::string(width - line.size(), ' ') +
             translated(text);
  return lines;
}

std::string man_page(const CLI::App& app, const CommandNotes& notes) {
  TextStream out;
  const std::string& name = app.get_name();
  std::string title = name;
  std::transform(title.begin(), title.end(), title.begin(),
                 [](unsigned char c) { return std::toupper(c); });
  out << ".TH " << roff(title)
      << " 1 " KIVA_RELEASED " \"KIVA " KIVA_VERSION "\" \"User commands\"\n"
      << ".SH NAME\n"
      << roff(name) << " \\- " << roff(notes.summary) << '\n'
      << ".SH SYNOPSIS\n.B " << roff(name) << '\n'
      << roff(notes.synopsis) << '\n'
      << ".SH DESCRIPTION\n"
      << roff(app.get_description()) << "\n.SH OPTIONS\n";
  std::string group = "Options";
  for (const Row& row : rows_of(app)) {
    // Options that the help lists closer have no group there.
    if (!row.group.empty() && row.group != group && row.group != "Positionals")
      out << ".SS " << roff(row.group) << '\n';
    if (!row.group.empty()) group = row.group;
    put_option(out, row);
  }
  put_rows(out, "EXIT STATUS", notes.statuses);
  put_rows(out, "FILES", notes.files);
  put_rows(out, "EXAMPLES", notes.examples);
  if (!notes.see_also.empty()) out << ".SH SEE ALSO\n";
  for (size_t i = 0; i < notes.see_also.size(); ++i)
    out << ".BR " << roff(notes.see_also[i]) << " (1)" << (i + 1 < notes.see_also.size() ? "," : "")
        << '\n';
  return out.str();
}

std::string completion(const CLI::App& app, const std::string& shell) {
  const std::vector<Row> rows = rows_of(app);
  if (shell == "bash") return bash_completion(app.get_name(), rows);
  if (shell == "zsh") return zsh_completion(app.get_name(), rows);
  return fish_completion(app.get_name(), rows);
}

namespace {

/// Help in the language of whoever asks for it. Pages are files, and stay English.
class HelpInLanguage : public CLI::Formatter {
 public:
  HelpInLanguage() {
    for (const char* word : {"Usage", "OPTIONS", "Positionals", "Needs", "Excludes", "REQUIRED"})
      label(word, translated(word));
  }
  std::string make_option_desc(const CLI::Option* option) const override {
    return translated(CLI::Formatter::make_option_desc(option));
  }
  std::string make_description(const CLI::App* app) const override {
    return translated_lines(CLI::Formatter::make_description(app));
  }
  std::string make_group(std::string group, bool is_positional,
                         std::vector<const CLI::Option*> options) const override {
    return CLI::Formatter::make_group(translated(group), is_positional, std::move(options));
  }
};

}  // namespace

void add_pages(CLI::App& app, const CommandNotes& notes) {
  app.formatter(std::make_shared<HelpInLanguage>());
  app.failure_message([](const CLI::App* of, const CLI::Error& error) {
    return translated_lines(CLI::FailureMessage::simple(of, error));
  });
  app.set_version_flag("--version", app.get_name() + " " KIVA_VERSION, "print the version");
  app.set_help_flag("-h,--help", "print this text");
  // What an app prints and ends with 0 goes the way of its version.
  app.add_flag_callback("--print-man", [&] { throw CLI::CallForVersion(man_page(app, notes), 0); })
      ->group("");
  app.add_option_function<std::string>(
         "--print-completion",
         [&](const std::string& shell) { throw CLI::CallForVersion(completion(app, shell), 0); })
      ->check(CLI::IsMember({"bash", "zsh", "fish"}))
      ->group("");
}

}  // namespace kiva::programs
