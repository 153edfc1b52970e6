#include "programs/tarn/options.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <iomanip>

#include "base/text_stream.h"
#include "base/translation.h"
#include "programs/command_pages.h"
#include "programs/report.h"
#include "programs/run_options.h"
#include "programs/tarn/manual.h"
#include "programs/tarn/windows.h"
#include "tarn/readers/readers.h"
#include "tarn/zu/warnings.h"

namespace kiva::tarn_program {

bool is_source(const std::string& file) {
  return file.ends_with(".zu");
}

namespace {

/// What a word behind -W may be; "" for a good one.
std::string wrong_word(const std::string& word) {
  if (word == "error") return "";
  for (const WarningRow& row : warning_table())
    if (word == std::string("no-") + row.name) return "";
  std::string names;
  for (const WarningRow& row : warning_table()) names += std::string(" no-") + row.name;
  return "\"" + word + "\" is none of: error" + names;
}

/// The options of the target languages, two a line.
std::string target_list() {
  TextStream list;
  list << translated("Target texts of MODULE, beside each other as wanted:") << '\n' << std::left;
  bool second = false;
  for (const Target& target : targets()) {
    const std::string help = translated(target.help);
    // A character beyond ASCII has bytes that take no place.
    const auto more = std::ranges::count_if(help, [](char c) { return (c & 0xC0) == 0x80; });
    list << "  --" << std::setw(14) << target.option
         << std::setw(second ? 0 : 27 + static_cast<int>(more)) << help << (second ? "\n" : "");
    second = !second;
  }
  return list.str() + (second ? "\n" : "");
}

/// The row whose bench is wanted. A target without is a fault of the usage.
const Target* bench_target(const std::string& option) {
  std::string names;
  for (const Target& target : targets()) {
    if (target.bench == nullptr) continue;
    if (option == target.option || option == std::string("--") + target.option) return &target;
    names += std::string(" ") + target.option;
  }
  throw CLI::ValidationError("--bench", "\"" + option + "\" is none of:" + names);
}

void check_comparison(Options& options) {
  const bool by_rules = !options.rules.first.empty();
  if (by_rules && !options.equiv) throw CLI::ValidationError("--rules", "goes with --equiv");
  if (by_rules && !std::ranges::all_of(options.files, is_source))
    throw CLI::ValidationError("--rules", "is for source text");
  if (by_rules && options.files.size() == 1) options.files.push_back(options.files.front());
  if (options.equiv && options.files.size() != 2)
    throw CLI::ValidationError("--equiv", "compares two modules");
}

}  // namespace

bool read_options(int argc, char** argv, Options& options,
                  int& status) {  // house: a line an option
  CLI::App app{"Compiles ZU source text to modules, and writes compiled modules as other text.",
               "tarn"};
  CLI::Option* const files = app.add_option(
      "FILE", options.files,
      "source text (.zu), compiled modules (.zuc) or netlists (.blif, .bench, .aag, .aig); "
      "beside source text, what its runs call");
  app.add_flag("--zuc", options.zuc, "write the compiled module, MODULE.zuc (the default)");
  app.add_flag("--kiva", options.kiva, "write the evaluation server, kiva_MODULE.cc");
  for (const Target& target : targets())
    app.add_flag_callback(
           std::string("--") + target.option,
           [&options, &target] { options.targets.push_back(&target); }, target.help)
        ->group("");  // the footer lists them closer
  app.add_flag("--async-reset", options.asynchronous_reset,
               "let circuits in VHDL and SystemVerilog reset at once, not at the clock's edge");
  app.add_flag("--no-comments", options.no_comments,
               "write target texts without comments that tell their source");
  app.add_flag("--dot", options.dot, "write the automata of MODULE for Graphviz, MODULE.dot");
  app.add_flag("--svg", options.svg, "draw the automata of MODULE, MODULE.svg");
  app.add_flag("--states", options.states, "with these, the states that the module can reach");
  std::pair<std::string, std::string> bench;
  app.add_option(
      "--bench", bench,
      "TARGET STIMULI: write that target's text and a bench that gives it the stimuli and "
      "holds it to what they await; says how to run it");
  app.add_flag(
      "--check-targets", options.check_targets,
      "run each target's bench with random stimuli, where its tool is installed, and print "
      "which agree; exit with 1 if one does not");
  app.add_flag("--equiv", options.equiv,
               "do two modules give the same outputs, whatever their inputs? If not, print "
               "stimuli that tell them apart, and exit with 1");
  app.add_option("--rules", options.rules,
                 "FIRST SECOND: with --equiv, compile the first module by the rules sound or "
                 "classic, the second by the others; of one source file, tells which statement "
                 "does something else")
      ->check(CLI::IsMember({"sound", "classic"}));
  app.add_option("--eval", options.eval,
                 "print an expression over the signals of a compiled module as a sum of products "
                 "over inputs and registers")
      ->type_name("EXPR");
  programs::PropertyOptions properties;
  properties.add(
      app, "--never", proof::Property::never,
      "prove that an expression over the signals never holds, or print stimuli that end where "
      "it does; repeatable, as are the next three");
  properties.add(app, "--always", proof::Property::always, "prove that an expression always holds");
  properties.add(app, "--reach", proof::Property::reach,
                 "print the shortest stimuli that end where an expression holds");
  properties.add(app, "--assume", proof::Property::assume,
                 "look only at runs in which an expression holds");
  app.add_flag(
      "--prove", options.prove,
      "prove what comments of the source ask for: ;; @never EXPR, @always, @reach, @assume; warn "
      "of what never happens, and count the states");
  app.add_flag(
      "--cover", options.cover,
      "write stimuli that reach every statement, state and transition that can be reached");
  app.add_flag("--fmt", options.layout,
               "lay source texts out, each in its place; \"-\" for from standard input to output");
  app.add_flag(
      "--check", options.check_layout,
      "with --fmt: write nothing, name what would change and exit with 1 if something would");
  app.add_flag("--with-reset", options.with_reset, "in proofs, reset may be raised at any time");
  app.add_option("--certificate", options.certificate,
                 "folder for what lets others check a proof: DIR/check [SOLVER]")
      ->type_name("DIR");
  app.add_option("--limit", options.limit, "seconds for each proof (default: 60)")
      ->type_name("SECONDS")
      ->check(CLI::PositiveNumber);
  app.add_option("--module", options.modules, "compile this module only; repeatable")
      ->type_name("MODULE")
      ->take_all()
      ->allow_extra_args(false);
  app.add_option("-d", options.folder, "folder for what is written (default: this one)")
      ->check(CLI::ExistingDirectory);
  app.add_option("-o", options.output, "name of the file that is written")->type_name("FILE");
  app.add_flag("--in-place", options.in_place, "write onto a file that is read here, if need be");
  app.add_option("--log", options.log, "file for what the reader did with compiled modules")
      ->type_name("FILE");
  app.add_option("--sarif", options.sarif, "file for errors and warnings in SARIF 2.1.0")
      ->type_name("FILE");
  app.add_flag("--classic", options.classic,
               "compile by the classic rules, write classic target texts");
  app.add_flag("--no-finalize", options.no_finalize, "leave the module as compiled");
  app.add_flag("--keep-wires", options.keep_wires, "keep equations that copy another");
  app.add_flag("--map", options.map,
               "write MODULE.zuc.map, by which the scope lights the source text; keeps wires");
  app.add_flag("--keep-rtl", options.keep_rtl, "keep the wire that tells the end of the module");
  app.add_flag("--forget-locals", options.forget_locals, "write numbers for the names of locals");
  app.add_flag("--strip", options.strip, "leave out locals that nothing needs");
  app.add_flag("--check-over-knowledge", options.check_over_knowledge,
               "add an output that tells of outputs in Top");
  app.add_flag("--comments", options.comments, "write comments beside the equations");
  app.add_flag("--windows", options.windows, "show messages in windows as well");
  app.add_flag("--stats", options.stats, "tell the size of each module and the time of each stage");
  app.add_flag("-q", options.quiet, "do not name what has been written");
  app.add_flag("--verbose", options.verbose, "show all that the library has to tell");
  app.add_option("-W", options.warnings,
                 "-Wno-NAME leaves warnings of that name out, -Werror makes errors of them")
      ->type_name("WORD")
      ->take_all()
      ->allow_extra_args(false)
      ->check(CLI::Validator(wrong_word, "", ""));
  app.add_flag("--lsp", options.language_server,
               "serve an editor over standard input and output (Language Server Protocol)");
  app.add_flag("--print-names", options.print_names)->group("");  // for completion
  programs::add_pages(app, manual_notes());
  app.footer(target_list() + "\n" + programs::example_lines(manual_notes()));
  try {
    app.parse(argc, argv);
    if (options.files.empty() && !options.language_server)
      throw CLI::RequiredError(files->get_name());
    if (!options.files.empty() && options.language_server)
      throw CLI::ValidationError("--lsp", "takes no files");
    for (int i = 1; i < argc; ++i)
      if (std::string_view(argv[i]).starts_with("--")) options.words += ' ' + std::string(argv[i]);
    options.properties = properties.read(app);
    for (const std::string& file : options.files)
      if (!file.ends_with(".zuc") && !is_source(file) && !is_netlist(file) &&
          !(options.layout && file == "-"))
        throw CLI::ValidationError(
            "FILE", "\"" + file + "\" ends neither in .zu nor in .zuc, nor is it a netlist");
    const bool compiled = std::none_of(options.files.begin(), options.files.end(), is_source);
    if (options.check_layout && !options.layout)
      throw CLI::ValidationError("--check", "goes with --fmt");
    if (options.layout &&
        std::any_of(options.files.begin(), options.files.end(),
                    [](const auto& file) { return file != "-" && !is_source(file); }))
      throw CLI::ValidationError("--fmt", "lays source text (.zu) out");
    if (options.check_targets && options.files.size() != 1)
      throw CLI::ValidationError("--check-targets", "wants one file");
    check_comparison(options);
    if (app.count("--eval") > 0 && (!compiled || options.files.size() != 1 || options.equiv))
      throw CLI::ValidationError("--eval", "wants one compiled module (.zuc)");
    if (app.count("--eval") > 0 && options.eval.empty())
      throw CLI::ValidationError("--eval", "wants an expression");
    if (options.wants_proofs() && (options.equiv || app.count("--eval") > 0))
      throw CLI::ValidationError("--prove", "stands beside neither --equiv nor --eval");
    if (options.cover && (options.files.size() != 1 || options.equiv || options.wants_proofs()))
      throw CLI::ValidationError("--cover", "wants one file, and no other proofs");
    if (options.cover || options.prove) options.map = true;  // what there is to reach
    if (options.files.size() > 1 && !options.output.empty())
      throw CLI::ValidationError("-o", "names one file, and there are several modules");
    if (const std::filesystem::path output = options.output; output.is_absolute()) {
      options.folder = output.parent_path();
      options.output = output.filename();
    }
    if (options.states && !options.dot && !options.svg)
      throw CLI::ValidationError("--states", "goes with --dot or --svg");
    if (!bench.first.empty()) options.bench = bench_target(bench.first);
    options.bench_stimuli = bench.second;
    if (options.windows) options.presenter = open_windows();
    if (options.windows && options.presenter == nullptr)
      throw CLI::ValidationError("--windows", "no display can be opened");
  } catch (const CLI::ParseError& error) {
    status = app.exit(error) == 0 ? 0 : programs::wrong_usage;
    return false;
  }
  return true;
}

}  // namespace kiva::tarn_program
