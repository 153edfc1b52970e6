#include "programs/campaign/result.h"

#include <algorithm>
#include <ostream>

namespace kiva::campaign {

using Json = nlohmann::ordered_json;

std::string Result::text() const {
  Json json;
  json["campaign"] = asked;
  if (shard.of > 1) json["shard"] = {{"number", shard.number + 1}, {"of", shard.of}};
  json["checks"] = Json::array();
  for (const Check& check : checks) {
    Json& entry = json["checks"].emplace_back(
        Json{{"name", check.name}, {"text", check.text}, {"failed", check.failed.runs}});
    if (check.failed.runs == 0) continue;
    entry["run"] = check.failed.first + 1;
    if (!check.file.empty()) entry["file"] = check.file;
    entry["instant"] = check.failed.instant;
    entry["stimuli"] = check.stimuli;
  }
  Json& coverage = json["coverage"] = Json::object();
  coverage["signals"] = Json::object();
  for (const auto& [name, seen] : signals)
    coverage["signals"][name] = {seen.present, seen.not_present};
  if (has_map)
    for (const char* kind :
         {CoverageGoal::statements, CoverageGoal::states, CoverageGoal::transitions}) {
      coverage[kind] = Json::object();
      if (const auto at = reached.find(kind); at != reached.end())
        for (const auto& [name, runs] : at->second) coverage[kind][name] = runs;
    }
  return json.dump(1, ' ', false, Json::error_handler_t::replace) + '\n';
}

std::optional<Result> Result::read(const std::string& text) {
  try {
    const Json json = Json::parse(text);
    Result result;
    result.asked = json.at("campaign");
    if (!result.asked.at("module").is_string() || !result.asked.at("runs").is_number())
      return std::nullopt;
    if (json.contains("shard"))
      result.shard = {json["shard"].at("number").get<std::uint64_t>() - 1, json["shard"].at("of")};
    if (result.shard.number >= result.shard.of) return std::nullopt;
    for (const Json& entry : json.at("checks")) {
      Check& check = result.checks.emplace_back();
      check.name = entry.at("name");
      check.text = entry.at("text");
      check.failed.runs = entry.at("failed");
      if (check.failed.runs == 0) continue;
      check.failed.first = entry.at("run").get<std::uint64_t>() - 1;
      check.file = entry.value("file", "");
      check.failed.instant = entry.at("instant");
      check.stimuli = entry.at("stimuli");
    }
    for (const auto& [name, runs] : json.at("coverage").at("signals").items())
      result.signals[name] = {runs.at(0), runs.at(1)};
    for (const auto& [kind, goals] : json["coverage"].items()) {
      if (kind == "signals") continue;
      result.has_map = true;
      for (const auto& [name, runs] : goals.items()) result.reached[kind][name] = runs;
    }
    return result;
  } catch (const nlohmann::json::exception&) {
    return std::nullopt;
  }
}

bool Result::failed() const {
  return std::ranges::any_of(checks, [](const Check& check) { return check.failed.runs > 0; });
}

void Result::print(std::ostream& out, bool coverage) const {
  const std::string runs = asked.at("runs").dump();
  for (const Check& check : checks)
    if (check.failed.runs > 0)
      out << check.name << ": " << check.text << ": fails in " << check.failed.runs << " of "
          << runs << " runs, first in "
          << (check.file.empty() ? "run " + std::to_string(check.failed.first + 1) : check.file)
          << ", instant " << check.failed.instant << '\n';
  if (!coverage) return;
  out << "coverage of " << asked.at("module").get<std::string>() << " in " << runs << " runs\n";
  print_seen(out, signals);
  print_reached(out, reached, has_map);
}

namespace {

/// "2, 3 and 7".
std::string listed(const std::vector<std::uint64_t>& numbers) {
  std::string text;
  for (size_t k = 0; k < numbers.size(); ++k)
    text += (k == 0 ? "" : k + 1 == numbers.size() ? " and " : ", ") + std::to_string(numbers[k]);
  return text;
}

/// All shards of one campaign, each once.
void require_whole(const std::vector<Result>& shards) {
  std::map<std::uint64_t, size_t> at;
  for (size_t k = 0; k < shards.size(); ++k) {
    if (shards[k].asked != shards[0].asked) {
      for (const auto& [key, value] : shards[0].asked.items())
        if (!shards[k].asked.contains(key) || shards[k].asked[key] != value)
          throw MergeError{k, "is of another campaign: \"" + key + "\" differs"};
      throw MergeError{k, "is of another campaign"};
    }
    if (shards[k].shard.of != shards[0].shard.of)
      throw MergeError{k, "is a shard of " + std::to_string(shards[k].shard.of) +
                              ", and the first is one of " + std::to_string(shards[0].shard.of)};
    if (!at.emplace(shards[k].shard.number, k).second)
      throw MergeError{k, "is shard " + std::to_string(shards[k].shard.number + 1) +
                              ", which stands here twice"};
  }
  std::vector<std::uint64_t> missing;
  for (std::uint64_t number = 0; number < shards[0].shard.of && missing.size() < 20; ++number)
    if (!at.contains(number)) missing.push_back(number + 1);
  if (!missing.empty())
    throw MergeError{shards.size(), "of " + std::to_string(shards[0].shard.of) + " shards, " +
                                        listed(missing) +
                                        (missing.size() == 1 ? " is missing" : " are missing")};
}

}  // namespace

Result merged(const std::vector<Result>& shards) {
  require_whole(shards);
  Result sum = shards[0];
  sum.shard = {};
  for (size_t k = 1; k < shards.size(); ++k) {
    const Result& shard = shards[k];
    if (shard.checks.size() != sum.checks.size() || shard.signals.size() != sum.signals.size())
      throw MergeError{k, "does not count what the first does"};
    for (size_t c = 0; c < sum.checks.size(); ++c) {
      Result::Check& mine = sum.checks[c];
      const Result::Check& other = shard.checks[c];
      if (!mine.failed.add(other.failed)) continue;
      mine.stimuli = other.stimuli;
      mine.file = other.file;
    }
    for (const auto& [name, seen] : shard.signals) {
      sum.signals[name].present += seen.present;
      sum.signals[name].not_present += seen.not_present;
    }
    for (const auto& [kind, goals] : shard.reached)
      for (const auto& [name, runs] : goals) sum.reached[kind][name] += runs;
  }
  return sum;
}

}  // namespace kiva::campaign
