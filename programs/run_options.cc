#include "programs/run_options.h"

#include <cstdlib>

namespace kiva::programs {

void PropertyOptions::add(CLI::App& app, const char* name, proof::Property::Kind kind,
                          const char* help) {
  CLI::Option* option = app.add_option(name)->description(help)->type_name("EXPR");
  option->expected(1)->take_all()->allow_extra_args(false);
  kinds_[option] = kind;
}

std::vector<proof::Property> PropertyOptions::read(const CLI::App& app) const {
  std::vector<proof::Property> properties;
  std::map<const CLI::Option*, size_t> taken;
  for (const CLI::Option* option : app.parse_order())
    if (const auto kind = kinds_.find(option); kind != kinds_.end())
      properties.push_back({kind->second, option->results().at(taken[option]++)});
  return properties;
}

void add_random_options(CLI::App& app, CLI::Option* needs, const char* group,
                        RandomOptions& options) {
  for (CLI::Option* option :
       {app.add_option("--seed", options.seed, "of the random inputs (1)")->type_name("N"),
        app.add_option("--bias", options.biases, "NAME=P: the input is One with probability P")
            ->type_name("NAME=P")
            ->take_all()
            ->allow_extra_args(false)}) {
    option->group(group);
    if (needs != nullptr) option->needs(needs);
  }
}

std::string no_input(const std::string& option, const std::string& text) {
  return option + ": \"" + text + "\" does not begin with an input's name and \"=\"";
}

Bias read_bias(const std::string& text, std::string& problem) {
  const size_t equals = text.find('=');
  char* end = nullptr;
  const std::string number = equals == std::string::npos ? "" : text.substr(equals + 1);
  const double probability = std::strtod(number.c_str(), &end);
  if (number.empty())
    problem = no_input("--bias", text);
  else if (*end != '\0' || !(probability >= 0 && probability <= 1))
    problem = "--bias: \"" + number + "\" is no probability from 0 to 1";
  return {text.substr(0, equals), probability};
}

}  // namespace kiva::programs
