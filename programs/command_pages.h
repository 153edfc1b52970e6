#pragma once

// What a command's own table of options gives beyond its help: the manual page, and completion for
// three shells. One table, so that none of them can tell of an option that is not there.

#include <CLI/CLI.hpp>
#include <string>
#include <utility>
#include <vector>

namespace kiva::programs {

/// What the options do not say of a command.
struct CommandNotes {
  using Rows = std::vector<std::pair<std::string, std::string>>;  ///< term and text
  std::string summary;   ///< one line, without a capital and without a full stop
  std::string synopsis;  ///< what follows the command's name
  Rows examples;         ///< a command line, and what it does
  Rows statuses;         ///< an exit status, and what it means
  Rows files;
  std::vector<std::string> see_also;  ///< other commands
};

/// Of all programs: "0.1.0".
std::string version();
/// The exit statuses that every program has.
CommandNotes::Rows common_statuses();
/// Examples as the foot of a help text.
std::string example_lines(const CommandNotes& notes);

/// The page in man(7) form.
std::string man_page(const CLI::App& app, const CommandNotes& notes);
/// `shell` is "bash", "zsh" or "fish". Signals and modules are asked of `tarn --print-names`.
std::string completion(const CLI::App& app, const std::string& shell);

/// Adds --version, and options that print the page and the completions for whoever installs them;
/// the help does not list those. `notes` must live as long as the app.
void add_pages(CLI::App& app, const CommandNotes& notes);

}  // namespace kiva::programs
